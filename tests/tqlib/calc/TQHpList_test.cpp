#include "tqlib/calc/TQHpList.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

namespace {

TEST(TQHpList, AgreesWithAVectorAndAnIndex) {
    std::mt19937 random(7);
    TQHpList<int> list;
    std::vector<int> model;
    std::size_t cursor = 0;
    for (int step = 0; step < 20000; ++step) {
        switch (random() % 6) {
            case 0:
            case 1:
                list.add(step);
                cursor = model.empty() ? 0 : cursor + 1;
                model.insert(model.begin() + static_cast<std::ptrdiff_t>(cursor), step);
                break;
            case 2:
            case 3:
                if (model.empty()) {
                    EXPECT_THROW(list.remove(), TQException::EMPTY_LIST);
                    break;
                }
                ASSERT_EQ(list.remove(), model[cursor]);
                model.erase(model.begin() + static_cast<std::ptrdiff_t>(cursor));
                if (cursor == model.size() && cursor > 0) --cursor;
                break;
            case 4:
                list.toFirst(), cursor = 0;
                break;
            default:
                list.toLast(), cursor = model.empty() ? 0 : model.size() - 1;
                break;
        }
        if (step % 5000 == 4999) list.empty(), model.clear(), cursor = 0;
        ASSERT_EQ(list.count(), static_cast<int>(model.size()));
        if (!model.empty()) {
            ASSERT_EQ(list.current(), model[cursor]);
        }
        if (step % 100 == 0) {
            std::vector<int> elements;
            list.find([&](int element) {
                elements.push_back(element);
                return false;
            });
            ASSERT_EQ(elements, model);
        }
    }
}

TEST(TQHpList, LetsGoOfWhatItNoLongerHolds) {
    auto const element = std::make_shared<int>(1);
    TQHpList<std::shared_ptr<int>> list;
    for (int i = 0; i < 50; ++i)
        list.add(element);
    list.remove();
    EXPECT_EQ(element.use_count(), 50);
    list.empty();
    EXPECT_EQ(element.use_count(), 1);
}

}  // namespace
