#include "tqplatform/framework/CArchive.h"

#include <cstring>
#include <memory>
#include <string>

#include "tqplatform/framework/CException.h"
#include "tqplatform/framework/ModuleState.h"

namespace {

constexpr unsigned int newClass = 0xFFFF;
constexpr unsigned int noObject = 0;

}  // namespace

void CArchive::WriteObject(CObject *object) {
    if (object == nullptr) return writeWord(noObject);
    CRuntimeClass const *const record = object->GetRuntimeClass();
    auto const length = static_cast<unsigned int>(std::strlen(record->className));
    writeWord(newClass);
    writeWord(record->schema);
    writeWord(length);
    file_->Write(record->className, length);
    object->Serialize(*this);
}

CObject *CArchive::ReadObject(CRuntimeClass const *expected) {
    unsigned int const tag = readWord();
    if (tag == noObject) return nullptr;
    if (tag != newClass) throw new CException;
    unsigned int const schema = readWord();
    std::string name(readWord(), '\0');
    read(name.data(), static_cast<unsigned int>(name.size()));
    CRuntimeClass const *const record = AfxGetModuleState()->findClass(name.c_str());
    bool const fits = record != nullptr && record->createObject != nullptr &&
                      record->schema == schema && record->IsDerivedFrom(expected);
    if (!fits) throw new CException;
    std::unique_ptr<CObject> object(record->createObject());
    if (object != nullptr) object->Serialize(*this);
    return object.release();
}

void CArchive::writeWord(unsigned int value) {
    unsigned char const bytes[] = {static_cast<unsigned char>(value),
                                   static_cast<unsigned char>(value >> 8)};
    file_->Write(bytes, sizeof bytes);
}

unsigned int CArchive::readWord() {
    unsigned char bytes[2];
    read(bytes, sizeof bytes);
    return bytes[0] | static_cast<unsigned int>(bytes[1]) << 8;
}

void CArchive::read(void *target, unsigned int count) {
    if (file_->Read(target, count) != count) throw new CException;
}
