#pragma once

#include "tqplatform/framework/CObject.h"

/// Base of the framework's exceptions. They are made with new, thrown by pointer, and belong to the
/// handler that catches them, which gives them back with Delete().
class TQPLATFORM_API CException : public CObject {
  public:
    CException() = default;

    /// Ends the exception's life; the pointer is not to be used afterwards.
    void Delete() { delete this; }

    CRuntimeClass const *GetRuntimeClass() const override;

    /// The record of this class.
    static CRuntimeClass const classCException;
};
