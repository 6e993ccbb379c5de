#pragma once

// The reader of separated fields, character by character.

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "support/FileModel.h"

class CsvReaderModel {
  public:
    /// A reader on `file`, which it shares with its copies. A `separator` of 0 is the semicolon.
    CsvReaderModel(std::shared_ptr<FileModel> file, char separator) : file_(std::move(file)) {
        init();
        if (separator != 0) separator_ = separator;
    }

    void init() {
        lineNo = fieldNo = 0;
        line_ = std::make_shared<Line>();
        position_.reset();
        separator_ = ';';
    }

    void nextLine() {
        line_->fill('\0');
        std::size_t count = 0;
        int c = file_->peek();
        for (; c >= 0 && c != '\n' && count < longestLine; c = file_->peek()) {
            (*line_)[count++] = static_cast<char>(c);
            file_->skip();
        }
        if (c == '\n') file_->skip();
        state = c < 0 || line_->front() == '\0' ? 1 : 0;
        position_ = 0;
        ++lineNo;
        fieldNo = 0;
    }

    char const *currentLine() {
        if (!position_) nextLine();
        return line_->data();
    }

    void reset(int newState) {
        state = newState | (file_->readable ? 0 : 4);
        file_->position = 0;
        lineNo = 0;
    }

    /// The next field as a number; false, with the target unchanged, if there is none.
    bool read(double &target) { return scan<double>("%lf", target); }
    bool read(float &target) { return scan<float>("%f", target); }
    bool read(long &target) { return scan<long>("%ld", target); }
    bool read(int &target) { return scan<int>("%d", target); }
    bool read(short &target) { return scan<int>("%d", target); }
    bool read(unsigned long &target) { return scan<unsigned long>("%lu", target); }
    bool read(unsigned int &target) { return scan<unsigned int>("%u", target); }
    bool read(unsigned short &target) { return scan<unsigned int>("%u", target); }

    /// The next field as a text, or nothing.
    std::optional<std::string> readText() {
        skipSeparator();
        if (at() == quote) ++*position_;
        if (at() == '\0') return {};
        ++fieldNo;
        std::string field;
        if (at() == separator_) return field;
        while (at() != separator_ && at() != quote && at() != '\0')
            field += take();
        if (at() == quote) ++*position_;
        return field;
    }

    int state = 0;
    long lineNo = 0;
    int fieldNo = 0;

  private:
    static constexpr std::size_t longestLine = 9191;
    static constexpr std::size_t longestNumber = 199;
    static constexpr char quote = '"';

    using Line = std::array<char, longestLine + 1>;

    char at() const { return (*line_)[*position_]; }
    char take() { return (*line_)[(*position_)++]; }

    void skipSeparator() {
        if (!position_) nextLine();
        if (at() == separator_) ++*position_;
    }

    std::optional<std::string> numberField() {
        skipSeparator();
        if (at() == '\0') return {};
        ++fieldNo;
        if (at() == separator_) return "0";
        std::string field;
        while (at() != separator_ && at() != '\0')
            field += take();
        field.resize(std::min(field.size(), longestNumber));
        return field;
    }

    template <typename Converted, typename Target>
    bool scan(char const *format, Target &target) {
        auto const field = numberField();
        Converted value;
        if (!field || std::sscanf(field->c_str(), format, &value) != 1) return false;
        target = static_cast<Target>(value);
        return true;
    }

    std::shared_ptr<FileModel> file_;
    std::shared_ptr<Line> line_;
    std::optional<std::size_t> position_;  ///< nothing before the first line
    char separator_ = ';';
};
