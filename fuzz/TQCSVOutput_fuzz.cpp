// Separated writing against a plain model, and reading what was written. An input holds a comma for
// a locale with a decimal comma, a digit for the size of transfers and the steps, which work on one
// of two writers. Texts and numbers of steps end with "|".

#include "tqlib/records/TQCSVOutput.h"

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/Check.h"
#include "support/CsvReaderModel.h"
#include "support/Input.h"
#include "support/NumberLocale.h"
#include "support/ScratchFile.h"
#include "tqlib/records/TQCSVInput.h"

namespace {

/// A file that writers share, and what should be in it.
struct Target {
    ScratchFile file;
    std::string content;
    bool open = false;
};

class WriterModel {
  public:
    WriterModel(std::shared_ptr<Target> file) : target(std::move(file)) { init(); }

    void init() {
        first_ = separated = quoted = true;
        ascii = 0;
        separator = ';';
        decimal = *std::localeconv()->decimal_point;
    }

    /// These give false where the writer reports a failure.
    bool writeBare(std::string_view text) {
        startField();
        put(text);
        return good();
    }

    bool writeQuoted(std::string const &text) {
        startField();
        put(quoted ? '"' + text + '"' : text);
        return good();
    }

    bool endLine() {
        put(separated ? std::string{separator, '\n'} : "\n");
        if (good()) first_ = true;
        return good();
    }

    std::string withoutZeros(std::string text) const {
        auto const point = decimal == '\0' ? std::string::npos : text.rfind(decimal);
        while (point != std::string::npos && text.size() > point + 1 && text.back() == '0')
            text.pop_back();
        return text;
    }

    std::shared_ptr<Target> target;
    int state = 0;
    int ascii = 0;
    bool separated = true;
    bool quoted = true;
    char separator = ';';
    char decimal = '.';

  private:
    bool good() const { return (state & 6) == 0; }

    void startField() {
        if (!first_ && separated) put({&separator, 1});
        first_ = false;
    }

    void put(std::string_view text) {
        if (!good() || text.empty()) return;
        if (target->open)
            target->content += text;
        else
            state |= 4;
    }

    bool first_ = true;
};

template <typename Number>
std::string printed(char const *format, Number value) {
    char text[200];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

struct Writer {
    TQCSVOutput library;
    WriterModel model;
};

class Writers {
  public:
    explicit Writers(std::vector<std::shared_ptr<Target>> &targets)
        : targets_(targets), writers_{unopened(), unopened()} {
        make(0, true, true, 0, 0);
    }

    void writeDouble(Input &script) { real("%lf", std::strtod(takeText(script).c_str(), nullptr)); }
    void writeFloat(Input &script) { real("%f", std::strtof(takeText(script).c_str(), nullptr)); }
    void writeLong(Input &script) { whole("%ld", takeWhole(script)); }
    void writeInt(Input &script) { whole("%d", static_cast<int>(takeWhole(script))); }
    void writeShort(Input &script) { whole("%d", static_cast<short>(takeWhole(script))); }
    void writeUnsignedLong(Input &script) {
        whole("%lu", static_cast<unsigned long>(takeWhole(script)));
    }
    void writeUnsignedInt(Input &script) {
        whole("%u", static_cast<unsigned int>(takeWhole(script)));
    }
    void writeUnsignedShort(Input &script) {
        whole("%u", static_cast<unsigned short>(takeWhole(script)));
    }
    void writeChar(Input &script) { whole("%c", script.take()); }
    void writeUnsignedChar(Input &script) {
        whole("%c", static_cast<unsigned char>(script.take()));
    }

    void writeBlock(Input &script) {
        std::string const text = takeText(script).c_str();
        bool const done = succeeds([&] { here().library << text.c_str(); });
        expectSame("text written", done, here().model.writeQuoted(text));
        expectSameState();
    }

    template <typename Text>
    void writeText(Input &script) {
        std::string const text = takeText(script);
        Text value;
        text.copy(value.GetBufferSetLength(static_cast<int>(text.size())), text.size());
        bool const done = succeeds([&] { here().library << value; });
        expectSame("text written", done, here().model.writeQuoted(text));
        expectSameState();
    }

    void endLine(Input & /*script*/) {
        bool const done = succeeds([&] { here().library.nextline(); });
        expectSame("line ended", done, here().model.endLine());
        expectSameState();
    }

    void setSeparator(Input &script) {
        here().model.separator = script.take();
        here().library.setTrennzeichen(here().model.separator);
    }

    void setDecimal(Input &script) {
        here().model.decimal = script.take();
        here().library.setcDezimalzeichen(here().model.decimal);
    }

    void setAscii(Input &script) {
        int const ascii = script.take();
        expectSame("ascii", here().library.setAscii(ascii),
                   std::exchange(here().model.ascii, ascii));
    }

    void removeZeros(Input &script) {
        std::string text = takeText(script).c_str();
        std::string const model = here().model.withoutZeros(text);
        here().library.ZeroCheck(text.data());
        expectSame("text without zeros", text.c_str(), model);
    }

    void init(Input & /*script*/) {
        here().library.Init();
        here().model.init();
    }

    void clear(Input & /*script*/) {
        here().library.clear();
        here().model.state = 0;
    }

    void open(Input & /*script*/) {
        Target &target = *here().model.target;
        here().library.open(target.file.path());
        if (std::exchange(target.open, true))
            here().model.state |= 2;
        else
            target.content.clear();
        expectSameState();
    }

    void close(Input & /*script*/) {
        here().library.close();
        int &state = here().model.state;
        state = (state & 6) | (std::exchange(here().model.target->open, false) ? 0 : 2);
        expectSameState();
        expectSameContent();
    }

    void flush(Input & /*script*/) {
        here().library.flush();
        expectSameState();
        if (!here().library.fail()) expectSameContent();
    }

    void changeWriter(Input & /*script*/) { current_ ^= 1; }
    void assign(Input & /*script*/) { writers_[current_ ^ 1] = here(); }
    void copy(Input & /*script*/) { writers_[current_] = Writer(writers_[current_ ^ 1]); }
    void makeUnopened(Input & /*script*/) { here() = unopened(); }

    void make(Input &script) {
        bool const quoted = script.pick(2) != 0;
        bool const separated = script.pick(2) != 0;
        char const separator = script.take();
        make(script.take(), quoted, separated, separator, script.take());
    }

  private:
    template <typename Write>
    static bool succeeds(Write write) {
        try {
            write();
            return true;
        } catch (TQCSVOutput::Failure const &) {
            return false;
        }
    }

    static std::string takeText(Input &script) { return expanded(script.text('|')); }
    static long takeWhole(Input &script) {
        return std::strtol(takeText(script).c_str(), nullptr, 10);
    }

    std::shared_ptr<Target> newTarget() {
        targets_.push_back(std::make_shared<Target>());
        return targets_.back();
    }

    Writer unopened() { return {TQCSVOutput(), WriterModel(newTarget())}; }

    void make(int ascii, bool quoted, bool separated, char separator, char decimal) {
        auto const target = newTarget();
        target->open = true;
        WriterModel model(target);
        model.ascii = ascii;
        model.quoted = quoted;
        model.separated = separated;
        if (separator != 0) model.separator = separator;
        if (decimal != 0) model.decimal = decimal;
        here() = {
            TQCSVOutput(target->file.path(), ascii, quoted, 'q', separated, separator, decimal),
            model};
    }

    template <typename Real>
    void real(char const *format, Real value) {
        bool const done = succeeds([&] { here().library << value; });
        std::string const text = here().model.withoutZeros(printed(format, value));
        expectSame("number written", done, here().model.writeBare(text));
        expectSameState();
    }

    template <typename Whole>
    void whole(char const *format, Whole value) {
        bool const done = succeeds([&] { here().library << value; });
        expectSame("number written", done, here().model.writeBare(printed(format, value)));
        expectSameState();
    }

    Writer &here() { return writers_[current_]; }

    void expectSameState() { expectSame("state", here().library.rdstate(), here().model.state); }

    void expectSameContent() {
        Target const &target = *here().model.target;
        expectSame("file", target.file.read(), target.content);
    }

    std::vector<std::shared_ptr<Target>> &targets_;
    std::array<Writer, 2> writers_;
    unsigned current_ = 0;
};

constexpr Step<Writers> steps[] = {
    {'d', &Writers::writeDouble},
    {'f', &Writers::writeFloat},
    {'l', &Writers::writeLong},
    {'s', &Writers::writeShort},
    {'i', &Writers::writeInt},
    {'L', &Writers::writeUnsignedLong},
    {'S', &Writers::writeUnsignedShort},
    {'I', &Writers::writeUnsignedInt},
    {'c', &Writers::writeChar},
    {'u', &Writers::writeUnsignedChar},
    {'p', &Writers::writeBlock},
    {'t', &Writers::writeText<TQString>},
    {'T', &Writers::writeText<CString>},
    {'n', &Writers::endLine},
    {';', &Writers::setSeparator},
    {'.', &Writers::setDecimal},
    {'a', &Writers::setAscii},
    {'z', &Writers::removeZeros},
    {'N', &Writers::init},
    {'C', &Writers::clear},
    {'o', &Writers::open},
    {'q', &Writers::close},
    {'F', &Writers::flush},
    {'x', &Writers::changeWriter},
    {'=', &Writers::assign},
    {'K', &Writers::copy},
    {'M', &Writers::makeUnopened},
    {'m', &Writers::make},
};

/// Reads a field of either kind; nothing at the end of the line.
std::optional<std::string> readField(TQCSVInput &file, bool number) {
    try {
        double value = 0;
        TQString text;
        if (number)
            file >> &value;
        else
            file >> text;
        return number ? shown(value) : std::string(text.text());
    } catch (TQCSVInput::Failure const &) {
        return {};
    }
}

std::optional<std::string> readField(CsvReaderModel &file, bool number) {
    if (!number) return file.readText();
    double value = 0;
    return file.read(value) ? std::optional(shown(value)) : std::nullopt;
}

void expectReadsBack(Target const &target, char separator) {
    TQCSVInput library(target.file.path(), 0, 1, 0, separator);
    auto const file = std::make_shared<FileModel>(FileModel{target.content, 0, true});
    CsvReaderModel model(file, separator);
    for (unsigned field = 0; file->position < target.content.size();) {
        library.nextline();
        model.nextLine();
        for (std::optional<std::string> text = ""; text; ++field) {
            text = readField(library, field % 2 != 0);
            auto const expected = readField(model, field % 2 != 0);
            expectSame("field read", text.has_value(), expected.has_value());
            expectSame("field", text.value_or(""), expected.value_or(""));
        }
        expectSame("line", library.currentLine(), model.currentLine());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    NumberLocale const locale(input.take() == ',');
    unsigned const transfers = input.pick(10);
    limitTransfers(transfers == 0 ? 1 << 20 : transfers);

    std::vector<std::shared_ptr<Target>> targets;
    {
        Writers writers(targets);
        runScript(writers, input, steps);
    }
    for (auto const &target : targets) {
        expectSame("file", target->file.read(), target->content);
        if (!target->content.empty()) expectReadsBack(*target, ';');
    }
    return 0;
}
