#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tqplatform/framework/ModuleState.h"

namespace {

std::string outputOf(std::string const &command) {
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    for (int c = 0; (c = std::fgetc(pipe.get())) != EOF;)
        output += static_cast<char>(c);
    return output;
}

std::set<std::string> linesOf(std::istream &text) {
    std::set<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.insert(line);
    return lines;
}

// What a library shows, by its names in C++.
std::set<std::string> symbolsOf(std::string const &library) {
    std::istringstream symbols(
        outputOf("nm -D -C --defined-only '" + library + "' | cut -d ' ' -f 3-"));
    return linesOf(symbols);
}

bool isSanitized() {
#if defined(__SANITIZE_ADDRESS__)
    return true;
#else
    return false;
#endif
}

TEST(Exports, AreThoseThatAreWrittenDown) {
    if (isSanitized()) GTEST_SKIP() << "sanitizers add symbols of their own";
    if (sizeof(void *) == 4) GTEST_SKIP() << "the list is that of 64 bits";
    for (auto const &[library, list] : {std::pair(TQLIB_FILE, "tqlib.symbols"),
                                        std::pair(TQPLATFORM_FILE, "tqplatform.symbols")}) {
        std::ifstream file(std::string(SYMBOLS_FOLDER "/") + list);
        std::set<std::string> const listed = linesOf(file), shown = symbolsOf(library);
        std::vector<std::string> lost, added;
        std::ranges::set_difference(listed, shown, std::back_inserter(lost));
        std::ranges::set_difference(shown, listed, std::back_inserter(added));
        EXPECT_EQ(lost, std::vector<std::string>()) << list;
        EXPECT_EQ(added, std::vector<std::string>()) << list << ": scripts/symbols takes them up";
    }
}

// The framework stays, as it does in a host that uses it itself.
TEST(Exports, UnloadingLeavesNothingBehind) {
    void *const framework = dlopen(TQPLATFORM_FILE, RTLD_NOW);
    ASSERT_NE(framework, nullptr) << dlerror();
    auto const stateOf =
        reinterpret_cast<AFX_MODULE_STATE *(*)()>(dlsym(framework, "_Z17AfxGetModuleStatev"));
    ASSERT_NE(stateOf, nullptr);
    AFX_MODULE_STATE const &state = *stateOf();
    for (int round = 0; round < 2; ++round) {
        void *const library = dlopen(TQLIB_FILE, RTLD_NOW);
        ASSERT_NE(library, nullptr) << dlerror();
        ASSERT_NE(state.libraries, nullptr);
        ASSERT_NE(state.classes, nullptr);
        EXPECT_STREQ(state.classes->className, "CDib");
        dlclose(library);
        ASSERT_EQ(dlopen(TQLIB_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr);
        EXPECT_EQ(state.libraries, nullptr);
        EXPECT_EQ(state.classes, nullptr);
    }
    dlclose(framework);
}

TEST(Exports, LoadingRunsTheEntryAndNoOtherInitialiser) {
    if (isSanitized()) GTEST_SKIP() << "sanitizers add initialisers of their own";
    // One entry is that of the compiler's frame. At load the class of bitmaps is registered, too;
    // at unload it is forgotten, and shared results of two classes are released.
    struct Row {
        char const *section;
        std::size_t entries;
    } const rows[] = {{"INIT_ARRAYSZ", 3}, {"FINI_ARRAYSZ", 5}};
    for (auto const &[section, entries] : rows) {
        std::string const bytes = std::to_string(entries * sizeof(void *));
        std::string const size =
            outputOf(std::string("readelf -dW '") + TQLIB_FILE + "' | grep " + section);
        EXPECT_NE(size.find(" " + bytes + " (bytes)"), std::string::npos) << size;
    }
    std::string const size =
        outputOf(std::string("readelf -dW '") + TQPLATFORM_FILE + "' | grep INIT_ARRAYSZ");
    std::string const one = sizeof(void *) == 8 ? " 8 (bytes)" : " 4 (bytes)";
    EXPECT_NE(size.find(one), std::string::npos) << size;
}

}  // namespace
