#pragma once

#include "tqplatform/streams/FileStream.h"
#include "tqplatform/streams/ostream.h"

namespace classic {

/// Writes a file, which is created, or emptied if it exists, unless the mode says otherwise.
class TQPLATFORM_API ofstream : public FileStream<ostream, ios::out, ios::out> {
  public:
    using FileStream::FileStream;
};

}  // namespace classic
