#include "tqplatform/streams/iostream.h"

#include <utility>

namespace classic {

iostream::iostream(std::shared_ptr<streambuf> buffer) {
    init(std::move(buffer));
}

}  // namespace classic
