#include "tqlib/foundation/TQException.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tqlib/calc/TQHpCalculator.h"
#include "tqlib/records/TQCSVInput.h"
#include "tqlib/records/TQCSVOutput.h"
#include "tqplatform/framework/CException.h"

namespace {

// The name of the first handler that the exception of `action` reaches.
template <typename Action>
char const *handlerOf(Action action) {
    try {
        action();
    } catch (CException *) {
        return "CException *";
    } catch (TQCSVOutput::Failure) {
        return "TQCSVOutput::Failure";
    } catch (TQCSVInput::Failure const &) {
        return "TQCSVInput::Failure";
    } catch (TQException::EMPTY_LIST &) {
        return "TQException::EMPTY_LIST";
    }
    return "none";
}

TEST(Failures, ReachTheirOwnHandlerAcrossTheLibrary) {
    int number = 0;
    EXPECT_STREQ(handlerOf([&] { TQCSVInput() >> &number; }), "TQCSVInput::Failure");
    EXPECT_STREQ(handlerOf([] { TQCSVOutput("/nowhere/a") << 1; }), "TQCSVOutput::Failure");
    EXPECT_STREQ(handlerOf([] { TQHpCalculator().calculate("+"); }), "TQException::EMPTY_LIST");
}

TEST(Failures, AreEmptyTypes) {
    EXPECT_TRUE(std::is_empty_v<TQCSVInput::Failure> && std::is_empty_v<TQCSVOutput::Failure>);
    EXPECT_TRUE(std::is_empty_v<TQException::EMPTY_LIST> && std::is_empty_v<TQException>);
}

}  // namespace
