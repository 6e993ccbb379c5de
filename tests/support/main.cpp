#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// Runs the tests in a zone that isn't UTC, and in the locale "C" or, with --comma, in one with a
// decimal comma. Programs that the tests start are to find the same.
int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    bool const comma = argc > 1 && std::strcmp(argv[1], "--comma") == 0;
    char const *const name = comma ? "de_DE.UTF-8" : "C";
    setenv("TZ", "XST-5:30XDT,M3.5.0,M10.5.0/3", 1);
    setenv("LOCPATH", LOCALE_FOLDER, 1);
    setenv("LC_ALL", name, 1);
    if (std::setlocale(LC_ALL, name) == nullptr ||
        (*std::localeconv()->decimal_point == ',') != comma) {
        std::fputs("there is no locale with a decimal comma in " LOCALE_FOLDER "\n", stderr);
        return EXIT_FAILURE;
    }
    return RUN_ALL_TESTS();
}
