// Separated reading against a plain model. An input is a line and the file: the line holds a comma
// for a locale with a decimal comma, a digit for the size of transfers, the separator ("0" for the
// default) and the steps, which work on one of two readers.

#include "tqlib/records/TQCSVInput.h"

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/Check.h"
#include "support/CsvReaderModel.h"
#include "support/FileInput.h"

namespace {

constexpr std::size_t longestText = 9192;
constexpr unsigned long noFileLength = 4294967295;

template <typename Read>
bool succeeds(Read read) {
    try {
        read();
        return true;
    } catch (TQCSVInput::Failure const &) {
        return false;
    }
}

struct Reader {
    TQCSVInput library;
    std::shared_ptr<FileModel> file;
    CsvReaderModel model;
    int ascii;
    bool named;
};

class Readers {
  public:
    Readers(std::string const &content, char separator)
        : content_(content), readers_{opened(separator), unopened()} {}

    template <typename Number>
    void number(Input & /*script*/) {
        Number library{7}, model{7};
        bool const taken = succeeds([&] { here().library >> &library; });
        expectSame("field taken", taken, here().model.read(model));
        expectSame("number", library, model);
        expectSameState();
    }

    template <typename Text>
    void text(Input & /*script*/) {
        Text library = "old";
        bool const taken = succeeds([&] { here().library >> library; });
        auto const model = here().model.readText();
        expectSame("field taken", taken, model.has_value());
        expectSame("text", library.text(), model.value_or(""));
        expectSameState();
    }

    void block(Input & /*script*/) {
        std::vector<char> library(longestText, 'x');
        bool const taken = succeeds([&] { here().library >> library.data(); });
        auto const model = here().model.readText();
        expectSame("field taken", taken, model.has_value());
        if (taken)
            expectSame("text", library.data(), *model);
        else
            expectSame("first byte", library.front(), 'x');
        expectSameState();
    }

    void nextLine(Input & /*script*/) {
        here().library.nextline();
        here().model.nextLine();
        expectSameState();
    }

    void readLine(Input & /*script*/) {
        CString line = "old";
        here().library.ReadLine(line);
        here().model.nextLine();
        expectSame("line", line.text(), here().model.currentLine());
        expectSameState();
    }

    void currentLine(Input & /*script*/) {
        expectSame("current line", here().library.currentLine(), here().model.currentLine());
        expectSameState();
    }

    void reset(Input &script) {
        int const state = static_cast<int>(script.pick(8));
        here().library.Reset(state);
        here().model.reset(state);
        expectSameState();
    }

    void init(Input & /*script*/) {
        here().library.Init();
        here().model.init();
        here().ascii = 0;
        expectSameState();
    }

    void setAscii(Input &script) {
        int const ascii = script.take();
        expectSame("ascii", here().library.setAscii(ascii), std::exchange(here().ascii, ascii));
    }

    void open(Input & /*script*/) {
        here().library.open(scratch().path(), 0x21);
        FileModel &file = *here().file;
        if (file.readable)
            here().model.state |= 2;
        else
            file = {content_, 0, true};
        expectSameState();
    }

    void openMissing(Input & /*script*/) {
        here().library.open("/proc/self/fd/missing", 0x21);
        here().model.state |= 2;
        expectSameState();
    }

    void close(Input & /*script*/) {
        here().library.close();
        int &state = here().model.state;
        state = (state & 6) | (std::exchange(here().file->readable, false) ? 0 : 2);
        expectSameState();
    }

    void changeReader(Input & /*script*/) { current_ ^= 1; }
    void assign(Input & /*script*/) { readers_[current_ ^ 1] = here(); }
    void copy(Input & /*script*/) { readers_[current_] = Reader(readers_[current_ ^ 1]); }
    void make(Input &script) { here() = opened(script.take()); }
    void makeUnopened(Input & /*script*/) { here() = unopened(); }

    void otherFacts(Input & /*script*/) {
        unsigned long const size = here().file->readable ? content_.size() : noFileLength;
        expectSame("file length", here().library.getFileLength(), size);
        expectSame("name", here().library.getName().text(), here().named ? scratch().path() : "");
    }

  private:
    Reader opened(char separator) const {
        if (separator == '0') separator = '\0';
        auto const file = std::make_shared<FileModel>(FileModel{content_, 0, true});
        return {
            TQCSVInput(scratch().path(), 3, 1, 'q', separator), file, {file, separator}, 3, true};
    }

    static Reader unopened() {
        auto const file = std::make_shared<FileModel>();
        return {TQCSVInput(), file, {file, '\0'}, 0, false};
    }

    Reader &here() { return readers_[current_]; }

    void expectSameState() {
        Reader &reader = here();
        bool const placed = reader.file->readable && (reader.model.state & 6) == 0;
        auto const position = static_cast<classic::streampos>(reader.file->position);
        expectSame("state", reader.library.rdstate(), reader.model.state);
        expectSame("line number", reader.library.lineNumber(), reader.model.lineNo);
        expectSame("field number", reader.library.fieldNumber(), reader.model.fieldNo);
        expectSame("position", reader.library.tellg(), placed ? position : -1);
    }

    std::string content_;
    std::array<Reader, 2> readers_;
    unsigned current_ = 0;
};

constexpr Step<Readers> steps[] = {
    {'d', &Readers::number<double>},
    {'f', &Readers::number<float>},
    {'l', &Readers::number<long>},
    {'s', &Readers::number<short>},
    {'i', &Readers::number<int>},
    {'L', &Readers::number<unsigned long>},
    {'S', &Readers::number<unsigned short>},
    {'I', &Readers::number<unsigned int>},
    {'t', &Readers::text<TQString>},
    {'c', &Readers::text<CString>},
    {'p', &Readers::block},
    {'n', &Readers::nextLine},
    {'R', &Readers::readLine},
    {'k', &Readers::currentLine},
    {'r', &Readers::reset},
    {'N', &Readers::init},
    {'a', &Readers::setAscii},
    {'o', &Readers::open},
    {'O', &Readers::openMissing},
    {'q', &Readers::close},
    {'x', &Readers::changeReader},
    {'=', &Readers::assign},
    {'K', &Readers::copy},
    {'m', &Readers::make},
    {'M', &Readers::makeUnopened},
    {'g', &Readers::otherFacts},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    FileInput input(data, size);
    Readers readers(input.content(), input.script().take());
    runScript(readers, input.script(), steps);
    return 0;
}
