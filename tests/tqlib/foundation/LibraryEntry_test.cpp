#include "tqlib/foundation/LibraryEntry.h"

#include <gtest/gtest.h>

#include <new>

#include "tqlib/foundation/Resources.h"
#include "tqlib/foundation/TQString.h"
#include "tqplatform/framework/ModuleState.h"

namespace {

bool memoryIsShort = false;

}  // namespace

void *operator new(std::size_t size, std::nothrow_t const &) noexcept {
    return memoryIsShort ? nullptr : ::operator new(size);
}

namespace {

using tqlib::detail::libraryEntry;
using tqlib::detail::libraryModule;

// Each test begins with the library as the loader leaves it, attached, and ends so.
class LibraryEntry : public testing::Test {
  protected:
    void TearDown() override {
        memoryIsShort = false;
        detach();
        attach();
        EXPECT_EQ(TQString(961u), "Nein");
    }
    static int attach() { return libraryEntry(&libraryModule, DLL_PROCESS_ATTACH, nullptr); }
    static int detach() { return libraryEntry(&libraryModule, DLL_PROCESS_DETACH, nullptr); }
};

TEST_F(LibraryEntry, LoadingBringsTheResourcesAndUnloadingTakesThemAway) {
    EXPECT_EQ(TQString(960u), "Ja");
    EXPECT_EQ(detach(), 1);
    EXPECT_EQ(TQString(960u), "");
    EXPECT_EQ(attach(), 1);
    EXPECT_EQ(TQString(960u), "Ja");
}

TEST_F(LibraryEntry, ThreadsChangeNothing) {
    detach();
    for (unsigned int const reason : {DLL_THREAD_ATTACH, DLL_THREAD_DETACH, 7u})
        EXPECT_EQ(libraryEntry(&libraryModule, reason, nullptr), 1);
    EXPECT_EQ(TQString(960u), "");
}

TEST_F(LibraryEntry, ARefusedModuleFailsTheLoad) {
    detach();
    EXPECT_EQ(libraryEntry(nullptr, DLL_PROCESS_ATTACH, nullptr), 0);
    EXPECT_EQ(TQString(960u), "");
}

TEST_F(LibraryEntry, LoadsWithoutMemoryForItsLink) {
    detach();
    memoryIsShort = true;
    EXPECT_EQ(attach(), 1);
    EXPECT_EQ(TQString(960u), "");
}

TEST_F(LibraryEntry, CarriesTheGermanTexts) {
    struct Row {
        unsigned int id;
        char const *text;
    } const rows[] = {
        {911, "Der eingegebene Wert ist zu klein!"},
        {912, "Der eingegebene Wert ist zu gro\xDF!"},
        {913,
         "Der eingegebene Wert ist kleiner als im allgemeinen \xFC\x62lich!\n"
         "Soll der eingegebene Wert beibehalten werden?"},
        {914,
         "Der eingegebene Wert ist gr\xF6\xDF\x65r als im allgemeinen \xFC\x62lich!\n"
         "Soll der eingegebene Wert beibehalten werden?"},
        {915, "Bitte geben Sie eine Zahl ein!"},
    };
    for (auto const &row : rows)
        EXPECT_EQ(TQString(row.id), row.text);
}

}  // namespace
