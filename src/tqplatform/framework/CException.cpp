#include "tqplatform/framework/CException.h"

namespace {

CRuntimeClass const *baseOfCException() {
    return &CObject::classCObject;
}

}  // namespace

constinit CRuntimeClass const CException::classCException{"CException", sizeof(CException), 0xFFFF,
                                                          nullptr, baseOfCException};

CRuntimeClass const *CException::GetRuntimeClass() const {
    return &classCException;
}
