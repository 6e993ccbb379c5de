#pragma once

#include "tqplatform/framework/CObject.h"

/// A file opened for unbuffered binary transfer. Failures are thrown as new CFileException, which
/// belongs to the handler.
class TQPLATFORM_API CFile : public CObject {
  public:
    /// Values of an opening mode: one of the first three, and modeCreate to create the file or
    /// empty the one that exists.
    enum OpenFlags : unsigned int {
        modeRead = 0,
        modeWrite = 1,
        modeReadWrite = 2,
        modeCreate = 0x1000
    };

    /// A file object without a file.
    CFile() = default;

    /// Opens the file `name`; throws if it can't be opened.
    CFile(char const *name, unsigned int openFlags);

    /// Closes the file; a failure is not reported.
    ~CFile() override;

    /// Opens the file `name` after closing the one at hand. The result is 1, or 0 if it can't be
    /// opened.
    int Open(char const *name, unsigned int openFlags);

    /// Reads at most `count` bytes; the result is how many there were, 0 at the end of the file.
    unsigned int Read(void *target, unsigned int count);

    /// Writes `count` bytes; throws if not all of them are taken.
    void Write(void const *source, unsigned int count);

    /// Closes the file; throws if the system reports a failure.
    void Close();

    CRuntimeClass const *GetRuntimeClass() const override;

    /// The record of this class.
    static CRuntimeClass const classCFile;

  private:
    int descriptor_ = -1;
};
