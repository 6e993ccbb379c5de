#include "tqlib/dialogs/TQPickList.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <string>
#include <vector>

namespace {

struct Choice : TQPickListObject {
    explicit Choice(char const *name) { text = name; }
    void prepare() override { ++prepared; }
    void rename(char const *name) { text = name; }
    int prepared = 0;
};

std::vector<std::string> textsOf(char **choices) {
    std::vector<std::string> texts;
    for (; *choices != nullptr; ++choices)
        texts.emplace_back(*choices);
    return texts;
}

TEST(PickList, AgreesWithAVectorAndAnIndex) {
    std::mt19937 random(3);
    std::deque<Choice> choices;
    TQPickList list;
    EXPECT_EQ(list.getPickList(), nullptr);
    EXPECT_EQ(*list.makePickList(), nullptr);
    std::vector<Choice *> model;
    std::size_t cursor = 0;
    for (int step = 0; step < 4000; ++step) {
        bool const again = random() % 4 == 0 && !model.empty();
        if (!again) choices.emplace_back(std::to_string(step).c_str());
        Choice *const choice = again ? model[random() % model.size()] : &choices.back();
        int const before = choice->prepared;
        bool const inFront = random() % 2 == 0;
        ASSERT_EQ(inFront ? list.insert(choice) : list.append(choice), again ? 0 : 1);
        EXPECT_EQ(choice->prepared, before + 1);
        if (!again) {
            if (!inFront && !model.empty()) ++cursor;
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(cursor), choice);
        }
        ASSERT_EQ(list.position(), static_cast<int>(cursor));
        if (step > 2000) {
            ASSERT_EQ(list.current(), model[cursor]);
        }
        ASSERT_EQ(list.count(), static_cast<int>(model.size()));
        if (step % 500 != 99) continue;
        char **const made = list.makePickList();
        ASSERT_EQ(made, list.getPickList());
        ASSERT_EQ(textsOf(made).size(), model.size());
        cursor = model.size() - 1;
        EXPECT_EQ(list.position(), static_cast<int>(cursor));
    }
    std::vector<std::string> const texts = textsOf(list.makePickList());
    for (std::size_t index = 0; index < model.size(); ++index) {
        model[index]->rename("other");
        ASSERT_EQ(texts[index], list.getPickList()[index]);
    }
    EXPECT_STREQ(list.makePickList()[0], "other");
    EXPECT_EQ(list.append(nullptr), 0);
}

// What is done to the list that it is made of, and to an element of it, counts as well.
TEST(PickList, AgreesWithAWalk) {
    std::deque<Choice> choices(30, Choice("choice"));
    std::mt19937 random(4);
    for (int round = 0; round < 400; ++round) {
        TQPickList list;
        TQHpList<TQPickListObject *> &base = list;
        TQPickListObject **handedOut = nullptr;
        for (int step = 0; step < 40; ++step) {
            Choice *const choice = &choices[random() % choices.size()];
            auto const what = random() % 16;
            if (what == 0 && base.count() != 0 && handedOut == nullptr) base.remove();
            if (what == 1) base.add(choice);
            if (what == 2) base.empty(), handedOut = nullptr;
            if (what == 3 && round % 2 == 1) handedOut = list.cursor();
            if (what == 4 && handedOut != nullptr) *handedOut = choice;
            bool isThere = false;
            base.find([&](auto *object) { return isThere |= object == choice, false; });
            ASSERT_EQ(list.append(choice), isThere ? 0 : 1) << round << ' ' << step;
        }
    }
}

}  // namespace
