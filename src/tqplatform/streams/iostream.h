#pragma once

#include "tqplatform/streams/istream.h"
#include "tqplatform/streams/ostream.h"

namespace classic {

/// A stream to read from and write to.
class TQPLATFORM_API iostream : public istream, public ostream {
  public:
    /// Works on `buffer`, which is shared with the caller.
    explicit iostream(std::shared_ptr<streambuf> buffer);

  protected:
    iostream() = default;
};

}  // namespace classic
