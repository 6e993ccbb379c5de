#include "ResultForm.h"

#include <climits>
#include <cmath>
#include <cstdio>

#include "Paths.h"
#include "Words.h"

namespace messwerk {
namespace {

/// What a text can't hold in a form.
std::string characterFault(std::string_view text, std::string_view characters) {
    std::size_t const bad = text.find_first_of(characters);
    if (bad == std::string_view::npos) return {};
    return "can't be written: there is " + quoted(text.substr(bad, 1)) + " in " + quoted(text);
}

/// Fields with a separator or a blank behind each.
class SeparatedForm final : public ResultForm {
  public:
    SeparatedForm(std::string const &path, char separator, bool isText)
        : file_(libraryPath(path).c_str(), 0, isText ? 0 : 1, 0, 1, separator),
          isText_(isText),
          reserved_(isText ? " =\"'" : std::string("\"") + separator) {}

    std::string fault(std::size_t /*index*/, double /*number*/) const override { return {}; }
    std::string fault(std::size_t /*index*/, std::string_view text) const override {
        if (isText_ && text.empty()) return "is empty";
        return characterFault(text, reserved_);
    }

    void write(std::size_t /*index*/, double number) override { file_ << number; }
    void write(std::size_t /*index*/, TQString const &text) override { file_ << text; }
    void writeName(std::size_t /*index*/, std::string const &name) override {
        file_ << name.c_str();
    }
    void endLine() override { file_.nextline(); }
    void close() override { file_.close(); }
    bool hasFailed() const override { return file_.fail(); }

  private:
    TQCSVOutput file_;
    bool isText_;
    std::string reserved_;
};

/// Fields of fixed width.
class ColumnForm final : public ResultForm {
  public:
    ColumnForm(std::string const &path, Layout const &layout)
        : file_(libraryPath(path).c_str()), layout_(layout) {}

    // The library fills a field with asterisks, or cuts the number, where there is no room.
    std::string fault(std::size_t index, double number) const override {
        Field const &field = layout_[index];
        bool const isWhole = field.kind == 'I';
        if (isWhole && (number != std::rint(number) || std::fabs(number) > INT_MAX))
            return "isn't a whole number for the field " + describe(field);
        auto const decimals = static_cast<int>(field.decimals);
        int const length = std::snprintf(nullptr, 0, "%.*f", isWhole ? 0 : decimals, number);
        return roomFault(field, static_cast<std::size_t>(length));
    }
    std::string fault(std::size_t index, std::string_view text) const override {
        return roomFault(layout_[index], text.size());
    }

    void write(std::size_t index, double number) override {
        Field const &field = startField(index);
        if (field.kind == 'I')
            file_.I(field.width, static_cast<int>(number));
        else
            file_.F(field.width, static_cast<int>(field.decimals), number);
    }
    void write(std::size_t index, TQString const &text) override {
        file_.A(startField(index).width, text);
    }
    // Names stand where the values do, cut to the field.
    void writeName(std::size_t index, std::string const &name) override {
        Field const &field = startField(index);
        std::string text = name.substr(0, field.width);
        if (field.kind != 'A') text.insert(0, field.width - text.size(), ' ');
        file_.A(field.width, text.c_str());
    }
    void endLine() override { file_.NL(); }
    void close() override { file_.close(); }
    bool hasFailed() const override { return file_.fail(); }

  private:
    static std::string roomFault(Field const &field, std::size_t length) {
        return length <= field.width ? "" : "has no room in the field " + describe(field);
    }

    Field const &startField(std::size_t index) {
        file_.X(layout_[index].gap);
        return layout_[index];
    }

    TQFortranOutput file_;
    Layout layout_;
};

}  // namespace

std::unique_ptr<ResultForm> ResultForm::open(Options const &options, std::string const &path) {
    switch (options.outputForm) {
        case Form::Text:
            return std::make_unique<SeparatedForm>(path, ' ', true);
        case Form::Columns:
            return std::make_unique<ColumnForm>(path, options.outputLayout);
        default:
            return std::make_unique<SeparatedForm>(path, options.separator, false);
    }
}

ResultForm::~ResultForm() = default;

}  // namespace messwerk
