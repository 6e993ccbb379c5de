#pragma once

#include "tqplatform/framework/CException.h"

/// What CFile throws when the system refuses an operation.
class TQPLATFORM_API CFileException : public CException {
  public:
    /// `osError` is the errno value of the refused call.
    explicit CFileException(int osError) : m_lOsError(osError) {}

    CRuntimeClass const *GetRuntimeClass() const override;

    /// The record of this class.
    static CRuntimeClass const classCFileException;

    int const m_lOsError;  ///< the errno value of the refused call
};
