#pragma once

#include "tqplatform/streams/FileStream.h"
#include "tqplatform/streams/iostream.h"

namespace classic {

/// Reads and writes a file, which is created if it doesn't exist and keeps its content if it does.
class TQPLATFORM_API fstream : public FileStream<iostream, 0, ios::in | ios::out> {
  public:
    using FileStream::FileStream;
};

}  // namespace classic
