#include "tqlib/config/TQConfiguration.h"

#include <ini.h>
#define SI_NO_CONVERSION  // bytes as they are, as here
#include <SimpleIni.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "Job.h"
#include "TemporaryFile.h"

namespace {

/// A file of `sections` sections with `values` values each.
std::string makeSettings(std::string const &name, int sections, int values) {
    std::string path = temporaryFile(name);
    std::ofstream file(path);
    for (int section = 0; section < sections; ++section) {
        file << "[Section" << section << "]\n";
        for (int value = 0; value < values; ++value)
            file << "Value" << value << "=C:\\Messungen\\2026\\Kanal " << section << "\\Reihe "
                 << value << ".csv\n";
    }
    return path;
}

// 20 sections and 200 lines; one copy for each contender that changes it.
char const *smallSettings() {
    static std::string const path = makeSettings("small.ini", 20, 9);
    return path.c_str();
}
char const *settingsOfSimpleIni() {
    static std::string const path = makeSettings("simpleini.ini", 20, 9);
    return path.c_str();
}
char const *settingsOfTqlib() {
    static std::string const path = makeSettings("tqlib.ini", 20, 9);
    return path.c_str();
}

// 10,000 lines.
char const *bigSettings() {
    static std::string const path = makeSettings("big.ini", 500, 19);
    return path.c_str();
}

constexpr char section[] = "Section14", lastSection[] = "Section499", value[] = "Value4";

std::string textOf(char *owned) {
    std::unique_ptr<char, decltype(&std::free)> const text(owned, &std::free);
    return owned == nullptr ? std::string() : owned;
}

int keepValue(void *target, char const *ownSection, char const *name, char const *text) {
    if (std::string_view(ownSection) == section && std::string_view(name) == value)
        *static_cast<std::string *>(target) = text;
    return 1;
}

constexpr auto readWithInih = [](auto take) {
    std::string text;
    ini_parse(smallSettings(), keepValue, &text);
    take(text);
};

constexpr auto readWithTqlib = [](auto take) {
    TQConfiguration settings(smallSettings());
    take(textOf(settings.getValue(section, value)));
};

constexpr auto readBigWithSimpleIni = [](auto take) {
    CSimpleIniCaseA settings;
    settings.LoadFile(bigSettings());
    take(std::string(settings.GetValue(lastSection, value)));
};

constexpr auto readBigWithTqlib = [](auto take) {
    static TQConfiguration settings(bigSettings());
    take(textOf(settings.getValue(lastSection, value)));
};

// Temporary files are to be in memory as well.
[[maybe_unused]] bool const memory = setenv("TQPATH", temporaryFile("").c_str(), 1) == 0;

/// Another value at every call.
std::string newValue() {
    static int count = 0;
    return std::to_string(++count % 10);
}

constexpr auto changeWithSimpleIni = [](auto take) {
    CSimpleIniCaseA settings;
    settings.LoadFile(settingsOfSimpleIni());
    settings.SetValue(section, value, newValue().c_str());
    take(settings.SaveFile(settingsOfSimpleIni()) == SI_OK);
};

constexpr auto changeWithTqlib = [](auto take) {
    TQConfiguration settings(settingsOfTqlib());
    take(settings.setValue(section, value, newValue().c_str()) == 0);
};

auto const reading = Job<std::string>("open and get value")
                         .peer("inih", readWithInih)
                         .contender("tqlib", readWithTqlib);
auto const readingBig = Job<std::string>("get value of an open file")
                            .peer("SimpleIni", readBigWithSimpleIni)
                            .contender("tqlib", readBigWithTqlib);
auto const changing = Job<bool>("set value")
                          .peer("SimpleIni", changeWithSimpleIni)
                          .contender("tqlib", changeWithTqlib);

}  // namespace
