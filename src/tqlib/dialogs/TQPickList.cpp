#include "tqlib/dialogs/TQPickList.h"

#include <string_view>
#include <utility>

TQPickList::TQPickList() = default;
TQPickList::~TQPickList() = default;

template <typename Add>
int TQPickList::take(TQPickListObject *object, Add add) {
    if (object == nullptr) return 0;
    object->prepare();
    if (isHandedOut()) {
        // Only a walk tells then.
        auto const isSame = [=](TQPickListObject const *other) { return other == object; };
        if (find(isSame) != nullptr) return 0;
        add();
        return 1;
    }
    if (gathered_ != changes()) gather();
    auto const [place, isNew] = objects_.insert(object);
    if (!isNew) return 0;
    try {
        add();
    } catch (...) {
        objects_.erase(place);
        throw;
    }
    gathered_ = changes();
    return 1;
}

// Looks at the list itself, which has changed behind this object.
void TQPickList::gather() {
    objects_.clear();
    find([this](TQPickListObject *const &object) {
        objects_.insert(object);
        return false;
    });
    gathered_ = changes();
}

int TQPickList::insert(TQPickListObject *object) {
    return take(object, [&] { addInFront(object); });
}

int TQPickList::append(TQPickListObject *object) {
    return take(object, [&] { add(object); });
}

char **TQPickList::makePickList() {
    std::vector<char> texts;
    std::vector<std::size_t> begins;
    find([&](TQPickListObject const *object) {
        std::string_view const text = object->text.text();
        begins.push_back(texts.size());
        texts.insert(texts.end(), text.begin(), text.end());
        texts.push_back('\0');
        return false;
    });
    std::vector<char *> entries;
    entries.reserve(begins.size() + 1);
    for (std::size_t const begin : begins)
        entries.push_back(texts.data() + begin);
    entries.push_back(nullptr);
    pickList_ = std::move(entries);
    texts_ = std::move(texts);  // keeps its memory, into which the entries point
    toLast();
    return pickList_.data();
}
