#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>

// Runs the tests in the locale of the environment, and refuses to do so under a wrong impression of
// its decimal point.
int main(int argc, char **argv) {
    std::setlocale(LC_ALL, "");
    bool const comma = *std::localeconv()->decimal_point == ',';
    if (comma != (std::getenv("EXPECT_COMMA") != nullptr)) {
        std::fputs("the locale in force isn't the one the tests ask for\n", stderr);
        return EXIT_FAILURE;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
