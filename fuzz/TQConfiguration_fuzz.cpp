// A file of settings, changed by two objects in turn, against a text in memory. An input is the
// content up to a backquote, then steps, each a letter and its arguments, a line each.

#include "tqlib/config/TQConfiguration.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "support/Check.h"
#include "support/Input.h"
#include "support/SettingsModel.h"

namespace {

// A folder in memory if there is one; removed at the end of the program.
class Folder {
  public:
    Folder() {
        std::string name =
            std::filesystem::exists("/dev/shm") ? "/dev/shm/tqlib.XXXXXX" : "/tmp/tqlib.XXXXXX";
        if (mkdtemp(name.data()) == nullptr) std::abort();
        path_ = name;
        setenv("TQPATH", (name + "/t").c_str(), 1);
    }
    Folder(Folder const &) = delete;
    Folder &operator=(Folder const &) = delete;
    ~Folder() { std::filesystem::remove_all(path_); }

    std::filesystem::path file() const { return path_ / "a.ini"; }

    void expectOneFile() const {
        auto const files = std::filesystem::directory_iterator(path_);
        expectSame("files", std::distance(begin(files), end(files)), 1);
    }

  private:
    std::filesystem::path path_;
};

std::string read(std::filesystem::path const &path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

class Machine {
  public:
    Machine(std::filesystem::path const &path, std::string const &content)
        : path_(path), model_{content}, settings_(path.c_str()), other_(path.c_str()) {}

    void check() const { expectSame("content", read(path_), model_.content); }

    void changeObjects(Input &) { std::swap(settings_, other_); }
    void search(Input &script) {
        std::string const category = line(script);
        long const expected = static_cast<long>(model_.find(category).value_or(-1UL));
        expectSame("searchCategorie", settings_.searchCategorie(category.c_str()), expected);
    }
    void get(Input &script) {
        std::string const category = line(script), name = line(script);
        std::unique_ptr<char, decltype(&std::free)> const value(
            settings_.getValue(category.c_str(), name.c_str()), &std::free);
        expectSame("getValue", value == nullptr ? "" : value.get(),
                   model_.value(category, name).value_or(""));
    }
    void newCategory(Input &script) {
        std::string const category = line(script);
        bool const added = settings_.newCategorie(category.c_str()) == 1;
        expectSame("newCategorie", added, model_.addCategory(category));
    }
    void deleteCategory(Input &script) {
        std::string const category = line(script);
        bool const gone = settings_.deleteCategorie(category.c_str()) == 1;
        expectSame("deleteCategorie", gone, model_.deleteCategory(category));
    }
    void add(Input &script) {
        std::string const category = line(script), name = line(script), value = line(script);
        bool const added = settings_.addValue(category.c_str(), name.c_str(), value.c_str()) == 0;
        expectSame("addValue", added, model_.addValue(category, name, value));
    }
    void set(Input &script) {
        std::string const category = line(script), name = line(script), value = line(script);
        bool const set = settings_.setValue(category.c_str(), name.c_str(), value.c_str()) == 0;
        expectSame("setValue", set, model_.setValue(category, name, value));
    }
    void erase(Input &script) {
        std::string const category = line(script), name = line(script);
        bool const gone = settings_.deleteValue(category.c_str(), name.c_str()) == 0;
        expectSame("deleteValue", gone, model_.deleteValue(category, name));
    }
    void addProgram(Input &script) {
        std::string const program = line(script), version = line(script), path = line(script);
        bool const fits = program.size() <= longestProgram;
        bool const added =
            settings_.addProgram(program.c_str(), version.c_str(), path.c_str()) == 0;
        expectSame("addProgram", added, fits);
        if (fits) model_.addProgram(program, version, path);
    }
    void deleteProgram(Input &script) {
        std::string const program = line(script);
        bool const gone = settings_.deleteProgramm(program.c_str()) == 0;
        expectSame("deleteProgramm", gone,
                   program.size() <= longestProgram && model_.deleteProgram(program));
    }

  private:
    static constexpr std::size_t longestProgram = 1023 - sizeof "_Version" + 1;

    // A line of the script up to its first NUL.
    static std::string line(Input &script) { return expanded(script.text('\n')).c_str(); }

    std::filesystem::path path_;
    SettingsModel model_;
    TQConfiguration settings_, other_;
};

constexpr Step<Machine> steps[] = {
    {'o', &Machine::changeObjects}, {'?', &Machine::search},         {'g', &Machine::get},
    {'n', &Machine::newCategory},   {'d', &Machine::deleteCategory}, {'a', &Machine::add},
    {'s', &Machine::set},           {'e', &Machine::erase},          {'p', &Machine::addProgram},
    {'r', &Machine::deleteProgram},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    static Folder const folder;
    Input input(data, size);
    std::string const content = expanded(input.text('`'));
    // Long lines make files of more than one block; that many of them would only take time.
    if (std::ranges::count(content, '\n') > 1000) return 0;
    std::ofstream(folder.file(), std::ios::binary) << content;
    Machine machine(folder.file(), content);
    runScript(machine, input, steps);
    machine.check();
    folder.expectOneFile();
    return 0;
}
