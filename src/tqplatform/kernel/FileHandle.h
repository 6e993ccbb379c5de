#pragma once

#include <memory>
#include <utility>

#include "tqplatform/kernel/Handle.h"
#include "tqplatform/runtime/Descriptor.h"

namespace tqplatform {

/// The handle of an open file. Mappings of the file keep it open as well.
class FileHandle final : public Handle {
  public:
    explicit FileHandle(Descriptor &&file) : file_(std::make_shared<Descriptor>(std::move(file))) {}

    std::shared_ptr<Descriptor> const &file() const { return file_; }

    /// The descriptor of the file of a handle, or -1.
    static int descriptorOf(HANDLE handle) {
        auto const *const file = dynamic_cast<FileHandle const *>(handle);
        return file == nullptr ? -1 : file->file_->number();
    }

  private:
    std::shared_ptr<Descriptor> file_;
};

}  // namespace tqplatform
