#include <fcntl.h>

#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "tqlib/config/SettingsDraft.h"
#include "tqlib/config/SettingsFile.h"
#include "tqlib/config/SettingsReader.h"
#include "tqlib/config/TQConfiguration.h"
#include "tqlib/files/TQFilename.h"
#include "tqplatform/runtime/Descriptor.h"
#include "tqplatform/runtime/FileReplacement.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using tqlib::detail::headerOf;
using tqlib::detail::headerRoom;
using tqlib::detail::longestLine;
using tqlib::detail::programCategory;
using tqlib::detail::SettingsDraft;
using tqlib::detail::SettingsFile;
using tqlib::detail::SettingsReader;
using tqlib::detail::versionNameOf;
using tqplatform::Descriptor;
using tqplatform::FileReplacement;
using tqplatform::Safety;
using tqplatform::systemCalls;

/// The name of a new temporary file, which is gone in the end.
struct TemporaryName {
    TQFilename name;
    bool isHeld;  ///< the file is there, and this object's

    TemporaryName() : isHeld(name.makeTemp() == 0) {}
    TemporaryName(TemporaryName const &) = delete;
    TemporaryName &operator=(TemporaryName const &) = delete;
    ~TemporaryName() {
        try {
            if (isHeld) name.remove();
        } catch (std::bad_alloc const &) {
            // Without memory for its path the file stays.
        }
    }
};

/// A temporary file that nobody can read who can't read another file.
class TemporaryFile {
  public:
    /// Makes a file for content of the file `like`.
    explicit TemporaryFile(int like) {
        if (!name_.isHeld) return;
        file_ = Descriptor(tqplatform::openFile(hostPath().c_str(), O_RDWR, 0));
        if (isOpen() && !hide(like)) file_.close();
    }

    /// Leaves the file where it is.
    void keep() { name_.isHeld = false; }

    bool isOpen() const { return file_.isOpen(); }
    int descriptor() const { return file_.number(); }

    /// Puts the file in the place of `other` if they are in one folder.
    bool replace(SettingsFile const &other) {
        bool const replaced = tqplatform::replaceFile(other.hostName(), other.descriptor(),
                                                      hostPath(), descriptor(), Safety::power);
        if (replaced) keep();
        return replaced;
    }

  private:
    static constexpr mode_t ownerOnly = 0600, permissions = 0777;

    std::string hostPath() const { return tqplatform::toHostPath(name_.name.text()); }

    bool hide(int like) const {
        struct stat own {
        }, its{};
        if (systemCalls.status(like, &its) != 0 || systemCalls.status(descriptor(), &own) != 0)
            return false;
        bool const hidden = (own.st_mode & permissions & ~its.st_mode) == 0 &&
                            own.st_uid == its.st_uid && own.st_gid == its.st_gid;
        return hidden || systemCalls.setMode(descriptor(), ownerOnly) == 0;
    }

    TemporaryName name_;
    Descriptor file_;
};

/// A change of a file of settings, made of steps of which each begins with what the one before has
/// left. The result is written to a temporary file, and from there to the place of the file.
class Change {
  public:
    explicit Change(SettingsFile &file)
        : file_(file), draft_(file.descriptor(), SettingsDraft::Reading::again) {}

    /// A reader of what the steps so far have made of the file.
    SettingsReader reader();

    /// Puts `text` in the place of the range from `begin` to `end`, if `reader`, which found them,
    /// could read the file.
    void replace(SettingsReader const &reader, std::int64_t begin, std::int64_t end,
                 std::string text);

    /// Takes note of whether `reader` could read what it looked for.
    void check(SettingsReader const &reader) { failed_ = failed_ || reader.failed(); }

    /// Puts the result in place. False if a step failed or that can't be: the file is as it was.
    bool commit();

  private:
    void settle();
    bool commitBeside();

    SettingsFile &file_;
    std::unique_ptr<TemporaryFile> temporary_;  ///< holds the draft, if there is one
    SettingsDraft draft_;
    std::int64_t size_ = 0;  ///< of what was written there
    bool failed_ = false;
};

// A step leaves out NUL characters, so lines may look different to the next one.
SettingsReader Change::reader() {
    if (draft_.isChanged() && draft_.hasNul() != 0) settle();
    return SettingsReader(draft_);
}

void Change::replace(SettingsReader const &reader, std::int64_t begin, std::int64_t end,
                     std::string text) {
    check(reader);
    if (!failed_) draft_.replace(begin, end, std::move(text));
}

// Writes the draft to a new temporary file and goes on from that.
void Change::settle() {
    auto next = std::make_unique<TemporaryFile>(file_.descriptor());
    size_ = next->isOpen() ? draft_.writeTo(next->descriptor()) : -1;
    failed_ = failed_ || size_ < 0;
    if (failed_) return;
    draft_ = SettingsDraft(next->descriptor());
    temporary_ = std::move(next);
}

bool Change::commit() {
    if (failed_ || (!draft_.isChanged() && !temporary_)) return !failed_;
    if (draft_.isChanged()) settle();
    if (failed_) return false;
    bool const committed = temporary_->replace(file_) || commitBeside();
    if (committed) file_.settle();
    return committed;
}

// Where the temporary file itself can't take the place. It stays if the old content is lost and the
// new one couldn't be written.
bool Change::commitBeside() {
    FileReplacement replacement(file_.hostName(), file_.descriptor());
    if (!replacement.isOpen() || draft_.writeTo(replacement.descriptor()) != size_) return false;
    bool const committed = replacement.commit(Safety::power);
    if (replacement.isDamaged()) temporary_->keep();
    return committed;
}

/// What a step says: as the operations on values do.
enum Answer { done = 0, refused = 1 };

Answer deleteValueStep(Change &change, std::string_view header, std::string_view name) {
    SettingsReader reader = change.reader();
    bool const found = !header.empty() && reader.findHeader(header);
    if (found && reader.findValue(name)) change.replace(reader, reader.begin(), reader.end(), "");
    change.check(reader);
    return found ? done : refused;
}

Answer addValueStep(Change &change, std::string_view header, std::string_view name,
                    std::string const &line) {
    SettingsReader reader = change.reader();
    bool const found = !header.empty() && reader.findHeader(header);
    std::int64_t const behindHeader = reader.end();
    bool const fresh = found && !reader.findValue(name);
    if (fresh) change.replace(reader, behindHeader, behindHeader, line);
    change.check(reader);
    return fresh ? done : refused;
}

/// The line of a value, or an empty text if there is none of that length.
std::string lineOf(std::string_view name, char const *value) {
    if (value == nullptr) return {};
    std::string line = std::string(name) + '=' + value + '\n';
    return line.size() <= longestLine ? line : std::string();
}

Answer setValueStep(Change &change, std::string_view header, std::string_view name,
                    char const *value) {
    std::string const line = lineOf(name, value);
    if (line.empty() || deleteValueStep(change, header, name) == refused) return refused;
    return addValueStep(change, header, name, line);
}

/// Where the values of a program stand.
struct ProgramPlace {
    std::string_view header;
    std::string versionName;
};

/// Carries out `steps` on the values of `program`; the result is theirs, or refused.
template <typename Steps>
int changeProgram(SettingsFile &file, char const *program, Steps steps) {
    char room[headerRoom];
    ProgramPlace const place{headerOf(programCategory, room), versionNameOf(program)};
    if (place.versionName.size() > longestLine) return refused;
    Change change(file);
    Answer const answer = steps(change, place);
    return change.commit() ? answer : refused;
}

}  // namespace

int TQConfiguration::newCategorie(char const *category) {
    char room[headerRoom];
    std::string_view const header = headerOf(category, room);
    if (header.empty() || header.size() + 2 >= headerRoom || !isReady()) return 0;
    Change change(*file_);
    SettingsReader reader = change.reader();
    if (reader.findHeader(header)) return 0;
    change.replace(reader, reader.end(), reader.end(), '\n' + std::string(header) + '\n');
    return change.commit() ? 1 : 0;
}

int TQConfiguration::deleteCategorie(char const *category) {
    char room[headerRoom];
    std::string_view const header = headerOf(category, room);
    if (header.empty() || !isReady()) return 0;
    Change change(*file_);
    SettingsReader reader = change.reader();
    if (!reader.findHeader(header)) return 0;
    std::int64_t const begin = reader.begin();
    std::int64_t const end = reader.nextHeader() ? reader.begin() : reader.end() - 1;
    change.replace(reader, begin, end, "");
    return change.commit() ? 1 : 0;
}

int TQConfiguration::addValue(char const *category, char const *name, char const *value) {
    char room[headerRoom];
    if (name == nullptr || !isReady()) return refused;
    std::string const line = lineOf(name, value);
    Change change(*file_);
    if (line.empty()) return refused;
    Answer const answer = addValueStep(change, headerOf(category, room), name, line);
    return change.commit() ? answer : refused;
}

int TQConfiguration::setValue(char const *category, char const *name, char const *value) {
    char room[headerRoom];
    if (name == nullptr || !isReady()) return refused;
    Change change(*file_);
    Answer const answer = setValueStep(change, headerOf(category, room), name, value);
    return change.commit() ? answer : refused;
}

int TQConfiguration::deleteValue(char const *category, char const *name) {
    char room[headerRoom];
    if (name == nullptr || !isReady()) return refused;
    Change change(*file_);
    Answer const answer = deleteValueStep(change, headerOf(category, room), name);
    return change.commit() ? answer : refused;
}

int TQConfiguration::addProgram(char const *program, char const *version, char const *path) {
    if (program == nullptr || !isReady()) return refused;
    return changeProgram(*file_, program, [&](Change &change, ProgramPlace const &place) {
        setValueStep(change, place.header, program, path);
        setValueStep(change, place.header, place.versionName, version);
        return done;
    });
}

int TQConfiguration::deleteProgramm(char const *program) {
    if (program == nullptr || !isReady()) return refused;
    return changeProgram(*file_, program, [&](Change &change, ProgramPlace const &place) {
        Answer const answer = deleteValueStep(change, place.header, program);
        if (answer == done) deleteValueStep(change, place.header, place.versionName);
        return answer;
    });
}
