#include "tqlib/dialogs/TQPickList.h"

#include <unordered_set>
#include <vector>

#include "Job.h"

namespace {

constexpr int count = 100000;

struct Choice : TQPickListObject {
    void prepare() override {}
};

std::vector<Choice> &choices() {
    static std::vector<Choice> objects(count);
    return objects;
}

constexpr auto gatherInSet = [](auto take) {
    std::unordered_set<Choice *> set;
    std::vector<Choice *> order;
    for (Choice &choice : choices())
        if (set.insert(&choice).second) order.push_back(&choice);
    take(order.size());
};

constexpr auto gatherInList = [](auto take) {
    TQPickList list;
    for (Choice &choice : choices())
        list.append(&choice);
    take(static_cast<std::size_t>(list.count()));
};

auto const gathering = Job<std::size_t>("pick list")
                           .peer("set and vector", gatherInSet)
                           .contender("tqlib", gatherInList);

}  // namespace
