#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace tqplatform {

/// The objects of one kind in this process, by their handles. Numbers aren't used again, so that a
/// handle of an object that is gone finds nothing.
template <typename Object, typename Tag>
class ObjectTable {
  public:
    Tag *add(std::shared_ptr<Object> object) {
        std::scoped_lock const lock(mutex_);
        auto *const handle = reinterpret_cast<Tag *>(++last_);
        objects_.emplace(handle, std::move(object));
        return handle;
    }

    /// The object, which lives at least as long as the result; null if there is none.
    std::shared_ptr<Object> find(Tag *handle) {
        std::scoped_lock const lock(mutex_);
        auto const found = objects_.find(handle);
        return found == objects_.end() ? nullptr : found->second;
    }

    bool remove(Tag *handle) {
        std::scoped_lock const lock(mutex_);
        return objects_.erase(handle) != 0;
    }

  private:
    std::mutex mutex_;
    std::unordered_map<Tag *, std::shared_ptr<Object>> objects_;
    std::uintptr_t last_ = 0;
};

}  // namespace tqplatform
