// A stream on a file against a text and a position in it. An input is a line and the file: the line
// holds a digit for the size of transfers, a letter for the mode of opening and the steps. A slash
// as delimiter stands for the newline.

#include "tqplatform/streams/filebuf.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "support/Check.h"
#include "support/FileModel.h"
#include "support/Input.h"
#include "support/ScratchFile.h"
#include "tqplatform/streams/fstream.h"

namespace {

using classic::ios;

ScratchFile &scratch() {
    static ScratchFile file;
    return file;
}

constexpr int modes[] = {
    ios::in | ios::out,
    ios::in,
    ios::in | ios::nocreate,
    ios::in | ios::binary,
    ios::out,
    ios::out | ios::binary,
    ios::out | ios::ate,
    ios::out | ios::app,
    ios::out | ios::noreplace,
    ios::in | ios::out | ios::binary,
    ios::in | ios::out | ios::trunc,
    ios::in | ios::out | ios::app | ios::binary,
};

class StreamModel {
  public:
    explicit StreamModel(std::string const &content) { file.content = content; }

    void open(int mode) {
        if (isOpen || (mode & ios::noreplace) != 0) {
            state |= ios::failbit;
            return;
        }
        isOpen = true;
        writable_ = (mode & (ios::out | ios::app)) != 0;
        append_ = (mode & ios::app) != 0;
        file.readable = (mode & ios::in) != 0;
        file.text = (mode & ios::binary) == 0;
        bool const keeps = (mode & (ios::in | ios::app | ios::ate)) != 0;
        if (!keeps || (mode & ios::trunc) != 0) file.content.clear();
        file.position = (mode & (ios::app | ios::ate)) != 0 ? file.content.size() : 0;
    }

    void close() {
        state = (state & (ios::failbit | ios::badbit)) | (isOpen ? ios::goodbit : ios::failbit);
        isOpen = writable_ = file.readable = false;
    }

    /// What get() puts into its target.
    std::string get(int limit, char delimiter, bool takeDelimiter) {
        count = 0;
        std::string taken;
        if (!ready()) return taken;
        auto const room = static_cast<std::size_t>(std::max(limit - 1, 0));
        for (; taken.size() < room; file.skip()) {
            int const c = file.peek();
            if (c < 0 || static_cast<char>(c) == delimiter) break;
            taken += static_cast<char>(c);
        }
        bool const looked = takeDelimiter || taken.size() < room;
        int const next = looked ? file.peek() : 0;
        if (next < 0) state |= taken.empty() ? ios::eofbit | ios::failbit : ios::eofbit;
        if (takeDelimiter && next >= 0 && static_cast<char>(next) == delimiter) file.skip();
        count = static_cast<int>(taken.size());
        return taken;
    }

    int get() {
        count = 0;
        if (!ready()) return -1;
        int const c = file.peek();
        if (c < 0) {
            state |= ios::eofbit;
        } else {
            file.skip();
            count = 1;
        }
        return c;
    }

    int peek() const { return state == 0 ? file.peek() : -1; }

    std::string word(int width) {
        count = 0;
        std::string taken;
        if (!ready()) return taken;
        int c = file.peek();
        for (; isBlank(c); c = file.peek())
            file.skip();
        for (; c >= 0 && !isBlank(c) && static_cast<int>(taken.size()) < width - 1;
             c = file.peek()) {
            taken += static_cast<char>(c);
            file.skip();
        }
        if (c < 0) state |= ios::eofbit;
        if (taken.empty()) state |= ios::failbit;
        return taken;
    }

    void write(std::string const &text) {
        if (failed() || text.empty()) return;
        if (!writable_) {
            state |= ios::badbit;
            return;
        }
        std::string &content = file.content;
        if (append_) file.position = content.size();
        if (content.size() < file.position + text.size())
            content.resize(file.position + text.size());
        content.replace(file.position, text.size(), text);
        file.position += text.size();
    }

    void seek(classic::streampos position) {
        if (isOpen && position >= 0)
            file.position = static_cast<std::size_t>(position);
        else
            state |= ios::badbit;
    }

    classic::streampos tell() const {
        return failed() || !isOpen ? -1 : static_cast<classic::streampos>(file.position);
    }

    bool failed() const { return (state & (ios::failbit | ios::badbit)) != 0; }

    FileModel file;
    int state = 0;
    int count = 0;
    bool isOpen = false;

  private:
    static bool isBlank(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    bool ready() {
        if (state != 0) state |= ios::failbit;
        return state == 0;
    }

    bool writable_ = false;
    bool append_ = false;
};

class Stream {
  public:
    explicit Stream(std::string const &content) : model_(content) {}

    void open(Input &script) {
        int const mode = modes[script.pick(std::size(modes))];
        library_.open(scratch().path(), mode);
        model_.open(mode);
        expectSameState();
    }

    void close(Input & /*script*/) {
        library_.close();
        model_.close();
        expectSameContent();
        expectSameState();
    }

    void get(Input &script) { getText(script, false, false); }
    void getline(Input &script) { getText(script, true, false); }
    void drop(Input &script) { getText(script, false, true); }
    void dropLine(Input &script) { getText(script, true, true); }

    void getCharacter(Input & /*script*/) {
        expectSame("character", library_.get(), model_.get());
        expectSameState();
    }

    void peek(Input & /*script*/) {
        expectSame("character ahead", library_.peek(), model_.peek());
        expectSameState();
    }

    void word(Input &script) {
        int const width = static_cast<int>(script.pick(20)) + 2;
        std::vector<char> text(static_cast<std::size_t>(width), 'x');
        library_.width(width);
        library_ >> text.data();
        std::string const model = model_.word(width) + '\0';
        expectSame("word", {text.data(), model.size()}, model);
        expectSameState();
    }

    void put(Input &script) {
        char const c = script.take();
        library_.put(c);
        model_.write({c});
        expectSameState();
    }

    void write(Input &script) {
        std::string const text = expanded(script.text('|'));
        library_.write(text);
        model_.write(text);
        expectSameState();
    }

    void flush(Input & /*script*/) {
        library_.flush();
        expectSameState();
        if (!model_.failed()) expectSameContent();
    }

    void seekg(Input &script) {
        auto const position = takePosition(script);
        library_.seekg(position);
        model_.seek(position);
        expectSameState();
    }

    void seekp(Input &script) {
        auto const position = takePosition(script);
        library_.seekp(position);
        if (!model_.failed()) model_.seek(position);
        expectSameState();
    }

    void clear(Input &script) {
        model_.state = static_cast<int>(script.pick(8));
        library_.clear(model_.state);
        expectSameState();
    }

  private:
    static classic::streampos takePosition(Input &script) {
        return std::atoi(script.text('|').c_str()) % 200000;
    }

    void getText(Input &script, bool takeDelimiter, bool toNowhere) {
        int const limit = static_cast<int>(script.pick(150));
        char const letter = script.take();
        char const delimiter = letter == '/' ? '\n' : letter;
        std::vector<char> text(static_cast<std::size_t>(limit) + 1, 'x');
        char *const target = toNowhere ? nullptr : text.data();
        if (takeDelimiter)
            library_.getline(target, limit, delimiter);
        else
            library_.get(target, limit, delimiter);

        std::string expected = model_.get(limit, delimiter, takeDelimiter);
        expectSame("count", library_.gcount(), model_.count);
        if (!toNowhere && limit > 0) {
            std::string_view const taken(text.data(), expected.size() + 1);
            expectSame("text", taken, expected + '\0');
        }
        expectSame("byte behind the target", text.back(), 'x');
        expectSameState();
    }

    void expectSameState() {
        expectSame("state", library_.rdstate(), model_.state);
        expectSame("open", library_.is_open(), model_.isOpen);
        expectSame("position", library_.tellg(), model_.tell());
        expectSame("position for writing", library_.tellp(), model_.tell());
    }

    void expectSameContent() { expectSame("file", scratch().read(), model_.file.content); }

    StreamModel model_;
    classic::fstream library_;
};

constexpr Step<Stream> steps[] = {
    {'o', &Stream::open},         {'q', &Stream::close}, {'g', &Stream::get},
    {'l', &Stream::getline},      {'d', &Stream::drop},  {'D', &Stream::dropLine},
    {'c', &Stream::getCharacter}, {'e', &Stream::peek},  {'t', &Stream::word},
    {'p', &Stream::put},          {'w', &Stream::write}, {'f', &Stream::flush},
    {'s', &Stream::seekg},        {'S', &Stream::seekp}, {'k', &Stream::clear},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    Input input(data, size);
    std::string const line = input.text('\n');
    std::string const content = expanded(input.rest());
    scratch().write(content);

    Input script(line);
    unsigned const transfers = script.pick(10);
    limitTransfers(transfers == 0 ? 1 << 20 : transfers);
    Stream stream(content);
    stream.open(script);
    runScript(stream, script, steps);
    return 0;
}
