// Paths against a plain model of the split and of the parts put together again. An input is a line
// with the path, then steps, each a letter and a line with the new part.

#include "tqlib/files/TQFilename.h"

#include <string>

#include "support/Check.h"
#include "support/Input.h"

namespace {

struct Parts {
    std::string drive, directory, name, extension;

    std::string whole() const { return drive + directory + name + extension; }
};

std::string trimmed(std::string const &text) {
    constexpr char blanks[] = " \t\n\v\f\r";
    std::size_t const first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

Parts split(std::string const &path) {
    Parts parts;
    std::string rest = path;
    if (path.size() >= 2 && path[1] == ':') {
        parts.drive = path.substr(0, 2);
        rest = path.substr(2);
    }
    std::size_t const slash = rest.rfind('\\');
    std::size_t const dot = rest.rfind('.');
    bool const hasSlash = slash != std::string::npos;
    if (dot != std::string::npos && (!hasSlash || dot > slash)) {
        parts.extension = rest.substr(dot);
        rest.erase(dot);
    }
    if (hasSlash) parts.directory = rest.substr(0, slash + 1);
    parts.name = hasSlash ? rest.substr(slash + 1) : rest;
    return parts;
}

class Path {
  public:
    explicit Path(std::string const &text)
        : library_(TQFilename(text.c_str())), model_(trimmed(text.c_str())) {}

    void newDrive(Input &script) {
        change(script, &TQFilename::newDrive, [](Parts const &p, std::string const &part) {
            return part + p.directory + p.name + p.extension;
        });
    }
    void newPath(Input &script) {
        change(script, &TQFilename::newPath,
               [](Parts const &p, std::string const &part) { return part + p.name + p.extension; });
    }
    void newName(Input &script) {
        change(script, &TQFilename::newName, [](Parts const &p, std::string const &part) {
            return p.drive + p.directory + part + p.extension;
        });
    }
    void newFilename(Input &script) {
        change(script, &TQFilename::newFilename, [](Parts const &p, std::string const &part) {
            return p.drive + p.directory + part;
        });
    }
    void newExtension(Input &script) {
        change(script, &TQFilename::newExtension, [](Parts const &p, std::string const &part) {
            return p.drive + p.directory + p.name + (part.starts_with('.') ? "" : ".") + part;
        });
    }
    void removeExtension(Input & /*script*/) {
        Parts const parts = split(model_);
        library_.removeExtension();
        expect(parts.drive + parts.directory + parts.name);
    }
    void removeFilename(Input & /*script*/) {
        Parts const parts = split(model_);
        library_.removeFilename();
        expect(parts.drive + parts.directory);
    }
    void set(Input &script) {
        std::string const drive = part(script), path = part(script), name = part(script),
                          extension = part(script);
        library_.set(TQString(drive.c_str()), TQString(path.c_str()), TQString(name.c_str()),
                     TQString(extension.c_str()));
        std::string whole = drive + path;
        if (!whole.empty() && !whole.ends_with('\\')) whole += '\\';
        whole += name;
        bool const hasDot = whole.ends_with('.') || extension.starts_with('.');
        if (!extension.empty() && !whole.empty() && !hasDot) whole += '.';
        expect(whole + extension);
    }
    void setParts(Input & /*script*/) {  // parts of the object itself count as empty
        library_.set(TQString("X:"), library_.GetDrive(), library_, library_.GetFilename());
        expect("X:\\");
    }

  private:
    static std::string part(Input &script) { return script.text('\n').c_str(); }

    template <typename Model>
    void change(Input &script, void (TQFilename::*operation)(TQString const &), Model model) {
        std::string const text = part(script);
        std::string const whole = model(split(model_), text);
        (library_.*operation)(TQString(text.c_str()));
        expect(whole);
    }

    void expect(std::string const &whole) {
        model_ = trimmed(whole);
        Parts const parts = split(model_);
        expectSame("whole", library_.text(), model_);
        expectSame("drive", library_.GetDrive().text(), parts.drive);
        expectSame("directory", library_.GetDirectory().text(), parts.directory);
        expectSame("name", library_.GetFilename().text(), parts.name);
        expectSame("extension", library_.GetExtension().text(), parts.extension);
        expectSame("path", library_.GetPath().text(), parts.drive + parts.directory);
        expectSame("file", library_.GetName().text(), parts.name + parts.extension);
        bool const wild = (parts.directory + parts.name + parts.extension).find_first_of("*?[]") !=
                          std::string::npos;
        expectSame("valid", library_.isValid(), !parts.name.empty() && !wild ? 1 : 0);
        expectSame("same", library_ == TQFilename(model_.c_str()), 1);
    }

    TQFilename library_;
    std::string model_;
};

constexpr Step<Path> steps[] = {
    {'d', &Path::newDrive},       {'p', &Path::newPath},      {'n', &Path::newName},
    {'f', &Path::newFilename},    {'e', &Path::newExtension}, {'E', &Path::removeExtension},
    {'F', &Path::removeFilename}, {'s', &Path::set},          {'o', &Path::setParts},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    Path path(input.text('\n'));
    runScript(path, input, steps);
    return 0;
}
