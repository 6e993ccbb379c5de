#include "tqlib/foundation/ScanNumber.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "support/Locale.h"

namespace {

template <typename Number>
void agreesWithTheRuntime(std::string const &text, char const *format) {
    Number ours{}, theirs{};
    int const result = tqlib::detail::scanNumber(text.c_str(), ours);
    ASSERT_EQ(result, std::sscanf(text.c_str(), format, &theirs)) << format << " '" << text << "'";
    ASSERT_EQ(std::memcmp(&ours, &theirs, sizeof ours), 0) << format << " '" << text << "'";
}

void allAgree(std::string const &text) {
    agreesWithTheRuntime<double>(text, "%lf");
    agreesWithTheRuntime<float>(text, "%f");
    agreesWithTheRuntime<long>(text, "%ld");
    agreesWithTheRuntime<int>(text, "%d");
    agreesWithTheRuntime<unsigned long>(text, "%lu");
    agreesWithTheRuntime<unsigned int>(text, "%u");
}

TEST(ScanNumber, AgreesWithTheRuntimeOnOddTexts) {
    for (auto const *text : {"",
                             " ",
                             "\t\n",
                             "-",
                             "+",
                             ".",
                             "-.",
                             "1",
                             "-1",
                             "+1",
                             " 1",
                             "1.",
                             ".5",
                             "-.5",
                             "1.5.7",
                             "1e5",
                             "1E-5",
                             "1e",
                             "1e+",
                             "1ex",
                             "1e400",
                             "1e-400",
                             "-1e-310",
                             "5e-324",
                             "2e-324",
                             "0x",
                             "0x1p3",
                             "0X1F",
                             "x1",
                             "inf",
                             "-INF",
                             "infinity",
                             "infinitx",
                             "nan",
                             "nan(1)",
                             "nanx",
                             "00012",
                             "0.1",
                             "123456789012345678901234567890",
                             "2147483647",
                             "2147483648",
                             "-2147483649",
                             "4294967295",
                             "4294967296",
                             "9223372036854775807",
                             "9223372036854775808",
                             "18446744073709551615",
                             "18446744073709551616",
                             "-9223372036854775809",
                             "--1",
                             "+-1",
                             "1 2",
                             "1,5",
                             "1.5",
                             "1'000",
                             "0.30000000000000004",
                             "9007199254740993",
                             "9007199254740992.5",
                             "1.7976931348623157e308",
                             "1.7976931348623159e308",
                             "1e22",
                             "1e23",
                             "16777217",
                             "8.5e-45",
                             "\xA0"
                             "1",
                             "12abc",
                             "0e0",
                             "-0",
                             "-0.0",
                             "1e99999999999"}) {
        allAgree(text);
        allAgree(localized(text));
    }
}

TEST(ScanNumber, AgreesWithTheRuntimeOnRandomTexts) {
    std::mt19937 random(2);
    std::string const characters = localized("0123456789012345678901234567890.....eE+- xinf");
    for (int round = 0; round < 100000; ++round) {
        std::string text;
        for (auto length = random() % 24; length > 0; --length)
            text += characters[random() % characters.size()];
        allAgree(text);
    }
}

TEST(ScanNumber, GivesBackEveryPrintedDouble) {
    std::mt19937_64 random(3);
    for (int round = 0; round < 100000; ++round) {
        std::uint64_t const bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        char text[64];
        std::snprintf(text, sizeof text, "%.*g", static_cast<int>(random() % 18), value);
        agreesWithTheRuntime<double>(text, "%lf");
        agreesWithTheRuntime<float>(text, "%f");
    }
}

}  // namespace
