#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>

#include "support/FailingAllocations.h"
#include "support/Files.h"
#include "support/TestDialog.h"
#include "tqlib/tqlib.h"
#include "tqplatform/desktop/ScriptedUser.h"

namespace {

std::string const longText(300, 'x');

std::string tokens() {
    TQString text = (longText + ";" + longText + ";c").c_str(), token, all;
    for (int at = 0; at != -1;) {
        at = text.GetToken(token, at, ";", 1);
        all += token;
    }
    all.Format("%s|%d", static_cast<char const *>(all.Left(40)), all.GetLength());
    return std::string(all);
}

std::string records(std::string const &folder) {
    std::string const path = folder + "/a.csv";
    {
        TQCSVOutput out(path.c_str());
        out << TQString(longText.c_str()) << 2.5 << 7;
        out.nextline();
        out.close();
    }
    TQCSVInput in(path.c_str());
    TQString text;
    double value = 0;
    int number = 0;
    in >> text >> &value >> &number;
    return std::to_string(text.GetLength()) + ' ' + std::to_string(value * number);
}

std::string calculation() {
    TQHpCalculator calculator;
    double value = 3;
    calculator.addVariable("VALUE", &value);
    std::string terms = "value";
    for (int i = 0; i < 20; ++i)
        terms += " value " + std::to_string(i) + " * +";
    return std::to_string(calculator.calculate(terms.c_str()));
}

std::string dates() {
    TQDateTime moment("5.3.2004 07:05");
    moment = moment + TQTime(20, 0, 0, 0);
    TQString const text = moment;
    return std::string(text);
}

std::string settings(std::string const &folder) {
    TQConfiguration file((folder + "/a.ini").c_str());
    file.newCategorie("Messung");
    file.setValue("Messung", "Kanal", longText.c_str());
    std::unique_ptr<char, decltype(&std::free)> const value(file.getValue("Messung", "Kanal"),
                                                            &std::free);
    return value == nullptr ? "none" : value.get();
}

std::string paths(std::string const &folder) {
    TQFilename file((folder + "/" + longText.substr(0, 50) + ".txt").c_str());
    file.newExtension("csv");
    file.newName("b");
    return std::string(file.GetFilename());
}

std::string picture() {
    CDib bitmap(CSize(64, 48), 8);
    bitmap.CreateSection(nullptr);
    if (bitmap.header == nullptr || bitmap.image == nullptr) return "none";
    bitmap.Compress(nullptr, 1);
    return std::to_string(bitmap.GetDimensions().cx);
}

std::string pickList() {
    struct Choice : TQPickListObject {
        explicit Choice(char const *name) { text = name; }
        void prepare() override {}
    } first(longText.c_str()), second("b");
    TQPickList list;
    list.append(&first);
    list.insert(&second);
    char **const all = list.makePickList();
    return std::string(all[0]) + all[1];
}

std::string dialog() {
    tqplatform::ScriptedUser user;
    TestDialog dialog;
    TQString text = longText.c_str();
    double value = 1;
    dialog.exchange = [&](CDataExchange *dx) {
        DDX_Text(dx, TestDialog::field, value, "%.3f");
        DDX_CBString(dx, TestDialog::combo, value, "%.3f");
    };
    user.type("2.5").press(VK_TAB).type("2.5").press(VK_RETURN);
    int const result = dialog.DoModal();
    return std::to_string(result) + ' ' + std::to_string(value);
}

struct Scenario {
    char const *name;
    std::function<std::string(std::string const &folder)> run;
};

// Every allocation of each scenario fails once. Nothing of it is left then, and it works again.
TEST(Allocations, MayFailAnywhere) {
    Scenario const scenarios[] = {
        {"tokens", [](auto const &) { return tokens(); }},
        {"records", records},
        {"calculation", [](auto const &) { return calculation(); }},
        {"dates", [](auto const &) { return dates(); }},
        {"settings", settings},
        {"paths", paths},
        {"picture", [](auto const &) { return picture(); }},
        {"pick list", [](auto const &) { return pickList(); }},
        {"dialog", [](auto const &) { return dialog(); }},
    };
    TemporaryFolder const folder;
    std::string const place = folder.file("");
    std::filesystem::path const home = std::filesystem::current_path();
    std::filesystem::current_path(place);  // where temporary files go
    for (auto const &[name, run] : scenarios) {
        SCOPED_TRACE(name);
        std::string const expected = run(place);  // what is made once is made now
        long failures = 0;
        for (bool failed = true; failed; ++failures) {
            ASSERT_LT(failures, 5000);
            long const before = FailingAllocations::held();
            FailingAllocations::failAt(failures + 1);
            try {
                run(place);
            } catch (std::bad_alloc const &) {
            } catch (TQCSVInput::Failure const &) {
            } catch (TQCSVOutput::Failure const &) {
            }
            failed = FailingAllocations::stop();
            EXPECT_EQ(FailingAllocations::held(), before) << "allocation " << failures + 1;
            EXPECT_EQ(run(place), expected) << "after allocation " << failures + 1;
            if (testing::Test::HasFailure()) return;
        }
        EXPECT_GT(failures, 1);
        std::printf("%s: %ld allocations\n", name, failures - 1);
    }
    std::filesystem::current_path(home);
    std::filesystem::directory_iterator const entries(place);
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "a file is left over";
}

}  // namespace
