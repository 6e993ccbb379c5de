#include "tqplatform/framework/CFileException.h"

namespace {

CRuntimeClass const *baseOfCFileException() {
    return &CException::classCException;
}

}  // namespace

constinit CRuntimeClass const CFileException::classCFileException{
    "CFileException", sizeof(CFileException), 0xFFFF, nullptr, baseOfCFileException};

CRuntimeClass const *CFileException::GetRuntimeClass() const {
    return &classCFileException;
}
