#include "tqplatform/framework/CFile.h"

#include <fcntl.h>

#include <cerrno>
#include <string>
#include <utility>

#include "tqplatform/framework/CFileException.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

constexpr int hostModes[] = {O_RDONLY, O_WRONLY, O_RDWR, O_RDWR};
constexpr mode_t createdFileMode = 0666;  // less the process's mask

CRuntimeClass const *baseOfCFile() {
    return &CObject::classCObject;
}

}  // namespace

constinit CRuntimeClass const CFile::classCFile{"CFile", sizeof(CFile), 0xFFFF, nullptr,
                                                baseOfCFile};

CFile::CFile(char const *name, unsigned int openFlags) {
    if (Open(name, openFlags) == 0) throw new CFileException(errno);
}

CFile::~CFile() {
    if (descriptor_ >= 0) tqplatform::systemCalls.close(descriptor_);
}

int CFile::Open(char const *name, unsigned int openFlags) {
    if (descriptor_ >= 0) tqplatform::systemCalls.close(std::exchange(descriptor_, -1));
    int const flags = hostModes[openFlags & 3] | (openFlags & modeCreate ? O_CREAT | O_TRUNC : 0);
    std::string const path = tqplatform::toHostPath(name == nullptr ? "" : name);
    descriptor_ = tqplatform::openFile(path.c_str(), flags, createdFileMode);
    return descriptor_ >= 0 ? 1 : 0;
}

unsigned int CFile::Read(void *target, unsigned int count) {
    unsigned int done = 0;
    while (done < count) {
        ssize_t const got =
            tqplatform::readFile(descriptor_, static_cast<char *>(target) + done, count - done);
        if (got < 0) throw new CFileException(errno);
        if (got == 0) break;
        done += static_cast<unsigned int>(got);
    }
    return done;
}

void CFile::Write(void const *source, unsigned int count) {
    auto const *bytes = static_cast<char const *>(source);
    if (tqplatform::writeFile(descriptor_, bytes, count) != count) throw new CFileException(errno);
}

void CFile::Close() {
    if (descriptor_ < 0) return;
    if (tqplatform::systemCalls.close(std::exchange(descriptor_, -1)) != 0)
        throw new CFileException(errno);
}

CRuntimeClass const *CFile::GetRuntimeClass() const {
    return &classCFile;
}
