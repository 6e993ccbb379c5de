#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tqlib/config/SettingsFile.h"
#include "tqlib/config/SettingsReader.h"
#include "tqlib/config/TQConfiguration.h"
#include "tqlib/files/TQFilename.h"
#include "tqplatform/runtime/FileReplacement.h"
#include "tqplatform/runtime/HostPath.h"
#include "tqplatform/runtime/SystemCalls.h"

namespace {

using classic::ios;
using tqlib::detail::headerOf;
using tqlib::detail::headerRoom;
using tqlib::detail::longestLine;
using tqlib::detail::programCategory;
using tqlib::detail::SettingsFile;
using tqlib::detail::SettingsReader;
using tqlib::detail::versionNameOf;
using tqplatform::systemCalls;

constexpr std::int64_t endOfFile = std::numeric_limits<std::int64_t>::max();

/// Puts `text` in the place of the range from `begin` to `end`.
struct Edit {
    std::int64_t begin, end;
    std::string text;
};

/// A temporary file that is gone in the end.
class TemporaryFile {
  public:
    /// Makes the file, with the mode of the file `like`.
    explicit TemporaryFile(int like) {
        if (name_.makeTemp() != 0) return;
        stream_.open(name_, ios::in | ios::out | ios::binary | ios::nocreate);
        struct stat status {};
        made_ = true;
        usable_ = stream_.is_open() && systemCalls.status(like, &status) == 0 &&
                  systemCalls.setMode(descriptor(), status.st_mode & permissionBits) == 0;
    }
    TemporaryFile(TemporaryFile const &) = delete;
    TemporaryFile &operator=(TemporaryFile const &) = delete;
    ~TemporaryFile() {
        if (!made_) return;
        stream_.close();
        name_.remove();
    }

    bool isUsable() const { return usable_; }
    int descriptor() const { return stream_.rdbuf()->fd(); }

  private:
    static constexpr mode_t permissionBits = 07777;

    TQFilename name_;
    classic::fstream stream_;
    bool made_ = false;
    bool usable_ = false;
};

/// Writes to a file and counts; NUL characters are left out.
class Writer {
  public:
    explicit Writer(int target) : target_(target) {}

    bool write(char *text, std::size_t count) {
        auto const kept = static_cast<std::size_t>(std::remove(text, text + count, '\0') - text);
        written_ += static_cast<off_t>(kept);
        return tqplatform::writeFile(target_, text, kept) == kept;
    }

    /// Copies the bytes of `source` from `begin` to `end` or the end of the file.
    bool copy(int source, std::int64_t begin, std::int64_t end) {
        while (begin < end) {
            auto const count = std::min(end - begin, static_cast<std::int64_t>(blockSize));
            ssize_t const got = tqplatform::readFileAt(
                source, block_.get(), static_cast<std::size_t>(count), static_cast<off_t>(begin));
            if (got <= 0) return got == 0;
            if (!write(block_.get(), static_cast<std::size_t>(got))) return false;
            begin += got;
        }
        return true;
    }

    off_t written() const { return written_; }

  private:
    static constexpr std::size_t blockSize = 64 * 1024;

    int target_;
    off_t written_ = 0;
    std::unique_ptr<char[]> block_ = std::make_unique_for_overwrite<char[]>(blockSize);
};

/// A change of a file of settings. Its steps are built one upon the other in temporary files; the
/// last of these then takes the place of the file.
class Change {
  public:
    explicit Change(SettingsFile &file) : file_(file) {}

    /// A reader of what the steps so far have made of the file.
    SettingsReader reader() const { return SettingsReader(source()); }

    /// Does a further step, or none if what `reader` looked for couldn't be read.
    void apply(SettingsReader const &reader, Edit edit);

    /// Takes note of whether `reader` could read what it looked for.
    void check(SettingsReader const &reader) { failed_ = failed_ || reader.failed(); }

    /// Puts the result in place. False if a step failed or that can't be: the file is as it was.
    bool commit();

  private:
    int source() const { return draft_ ? draft_->descriptor() : file_.descriptor(); }

    SettingsFile &file_;
    std::unique_ptr<TemporaryFile> draft_;
    off_t size_ = 0;
    bool failed_ = false;
};

void Change::apply(SettingsReader const &reader, Edit edit) {
    check(reader);
    if (failed_) return;
    auto next = std::make_unique<TemporaryFile>(file_.descriptor());
    failed_ = !next->isUsable();
    if (failed_) return;
    Writer writer(next->descriptor());
    failed_ = !writer.copy(source(), 0, edit.begin) ||
              !writer.write(edit.text.data(), edit.text.size()) ||
              !writer.copy(source(), edit.end, endOfFile);
    size_ = writer.written();
    draft_ = std::move(next);
}

bool Change::commit() {
    if (failed_ || !draft_) return !failed_;
    tqplatform::FileReplacement replacement(tqplatform::toHostPath(file_.name()),
                                            file_.descriptor());
    bool const copied = replacement.isOpen() &&
                        systemCalls.seek(draft_->descriptor(), 0, SEEK_SET) == 0 &&
                        tqplatform::copyRest(draft_->descriptor(), replacement.descriptor()) ==
                            tqplatform::CopyResult::done &&
                        systemCalls.seek(replacement.descriptor(), 0, SEEK_CUR) == size_;
    bool const committed = copied && replacement.commit(tqplatform::Safety::power);
    file_.refresh();
    return committed;
}

/// What a step says: as the operations on values do.
enum Answer { done = 0, refused = 1 };

Answer deleteValueStep(Change &change, std::string_view header, std::string_view name) {
    SettingsReader reader = change.reader();
    bool const found = !header.empty() && reader.findHeader(header);
    if (found && reader.findValue(name)) change.apply(reader, {reader.begin(), reader.end(), ""});
    change.check(reader);
    return found ? done : refused;
}

Answer addValueStep(Change &change, std::string_view header, std::string_view name,
                    std::string const &line) {
    SettingsReader reader = change.reader();
    bool const found = !header.empty() && reader.findHeader(header);
    std::int64_t const behindHeader = reader.end();
    bool const fresh = found && !reader.findValue(name);
    if (fresh) change.apply(reader, {behindHeader, behindHeader, line});
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

}  // namespace

int TQConfiguration::newCategorie(char const *category) {
    char room[headerRoom];
    std::string_view const header = headerOf(category, room);
    if (header.empty() || header.size() + 2 >= headerRoom || !isReady()) return 0;
    Change change(*file_);
    SettingsReader reader = change.reader();
    if (reader.findHeader(header)) return 0;
    change.apply(reader, {endOfFile, endOfFile, '\n' + std::string(header) + '\n'});
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
    change.apply(reader, {begin, end, ""});
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
    char room[headerRoom];
    if (program == nullptr || !isReady()) return refused;
    std::string const versionName = versionNameOf(program);
    if (versionName.size() > longestLine) return refused;
    Change change(*file_);
    std::string_view const header = headerOf(programCategory, room);
    setValueStep(change, header, program, path);
    setValueStep(change, header, versionName, version);
    return change.commit() ? done : refused;
}

int TQConfiguration::deleteProgramm(char const *program) {
    char room[headerRoom];
    if (program == nullptr || !isReady()) return refused;
    std::string const versionName = versionNameOf(program);
    if (versionName.size() > longestLine) return refused;
    Change change(*file_);
    std::string_view const header = headerOf(programCategory, room);
    if (deleteValueStep(change, header, program) == refused) return refused;
    deleteValueStep(change, header, versionName);
    return change.commit() ? done : refused;
}
