#pragma once

#include "tqplatform/framework/CFile.h"

/// A way to store objects in a file and to load them again. An object begins with the name of its
/// class, which must be registered to be loaded.
///
///     CFile file("a.dat", CFile::modeWrite | CFile::modeCreate);
///     CArchive archive(&file, CArchive::store);
///     archive.WriteObject(&bitmap);
///
/// Stored as: 0xFFFF, the schema and the length of the name in 16 bits each, lowest byte first, and
/// the name; for null two bytes 0. Objects store the rest themselves. Each is stored in full:
/// nothing is remembered of earlier ones.
class TQPLATFORM_API CArchive {
  public:
    enum Mode : unsigned int { store = 0, load = 1 };

    /// An archive on `file`, which outlives it.
    CArchive(CFile *file, unsigned int mode) : file_(file), mode_(mode) {}
    CArchive(CArchive const &) = delete;
    CArchive &operator=(CArchive const &) = delete;

    bool IsStoring() const { return mode_ == store; }
    bool IsLoading() const { return mode_ == load; }

    /// The file, not owned.
    CFile *GetFile() const { return file_; }

    /// Hands what is buffered to the file: nothing ever is.
    void Flush() {}

    /// Stores `object`, which may be null. Throws the exceptions of CFile.
    void WriteObject(CObject *object);

    /// Makes the next object, which the caller deletes, and lets it load itself; null if that is
    /// what was stored. Throws a new CException if it isn't of the class `expected`, or of one
    /// derived from it, or not of its version; and those of CFile.
    CObject *ReadObject(CRuntimeClass const *expected);

  private:
    void writeWord(unsigned int value);
    unsigned int readWord();
    void read(void *target, unsigned int count);

    CFile *file_;
    unsigned int mode_;
};
