#pragma once

#include "tqplatform/streams/FileStream.h"
#include "tqplatform/streams/istream.h"

namespace classic {

/// Reads a file, in text mode unless the mode says ios::binary. Creates no file unless the mode
/// says ios::out.
class TQPLATFORM_API ifstream : public FileStream<istream, ios::in, ios::in> {
  public:
    using FileStream::FileStream;
};

}  // namespace classic
