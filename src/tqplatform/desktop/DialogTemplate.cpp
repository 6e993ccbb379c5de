#include "tqplatform/desktop/DialogTemplate.h"

#include <algorithm>
#include <iterator>

namespace tqplatform {
namespace {

constexpr unsigned int extendedForm = 0xFFFF0001;
constexpr unsigned int numberFollows = 0xFFFF;

struct ClassNumber {
    ControlKind kind;
    char const *name;
};
constexpr ClassNumber classNumbers[] = {
    {ControlKind::button, "BUTTON"},     {ControlKind::edit, "EDIT"},
    {ControlKind::text, "STATIC"},       {ControlKind::scrollBar, "SCROLLBAR"},
    {ControlKind::comboBox, "COMBOBOX"},
};

std::string classNamed(unsigned int number) {
    auto const *const found =
        std::ranges::find(classNumbers, static_cast<ControlKind>(number), &ClassNumber::kind);
    return found == std::end(classNumbers) ? std::string() : found->name;
}

/// Reads from a block; past its end everything is 0 and `isGood` false.
class Reader {
  public:
    explicit Reader(std::span<std::uint8_t const> bytes) : bytes_(bytes) {}

    bool isGood() const { return isGood_; }

    unsigned int read16() {
        if (bytes_.size() - place_ < 2) {
            isGood_ = false;
            place_ = bytes_.size();
            return 0;
        }
        unsigned int const low = bytes_[place_];
        unsigned int const high = bytes_[place_ + 1];
        place_ += 2;
        return low | high << 8;
    }
    unsigned int read32() {
        unsigned int const low = read16();
        return low | read16() << 16;
    }
    DialogRect readPlace() {
        DialogRect place{};
        for (std::int16_t *number : {&place.left, &place.top, &place.width, &place.height})
            *number = static_cast<std::int16_t>(read16());
        return place;
    }
    void align() { skip((4 - place_ % 4) % 4); }
    void skip(std::size_t count) {
        isGood_ = isGood_ && count <= bytes_.size() - place_;
        place_ += std::min(count, bytes_.size() - place_);
    }

    /// A text, or the number in its place.
    std::string readText(unsigned int &number) {
        std::string text;
        unsigned int character = read16();
        number = 0;
        if (character == numberFollows) {
            number = read16();
            return text;
        }
        for (; character != 0; character = read16()) {
            char const letter = fromUnicode(character);
            text += letter == '\0' ? '?' : letter;
        }
        return text;
    }

  private:
    std::span<std::uint8_t const> bytes_;
    std::size_t place_ = 0;
    bool isGood_ = true;
};

ControlTemplate readControl(Reader &reader) {
    ControlTemplate control;
    reader.align();
    control.style = reader.read32();
    reader.read32();  // extended style
    control.place = reader.readPlace();
    control.id = static_cast<std::uint16_t>(reader.read16());
    unsigned int classNumber = 0;
    control.className = reader.readText(classNumber);
    if (classNumber != 0) control.className = classNamed(classNumber);
    control.text = reader.readText(control.resource);
    // Data of the control's own; its size counts itself.
    unsigned int const size = reader.read16();
    if (size > 2) reader.skip(size - 2);
    return control;
}

}  // namespace

std::optional<DialogTemplate> readDialogTemplate(std::span<std::uint8_t const> bytes) {
    Reader reader(bytes);
    DialogTemplate result;
    unsigned int number = 0;
    result.style = reader.read32();
    if (result.style == extendedForm) return std::nullopt;
    reader.read32();  // extended style
    unsigned int const count = reader.read16();
    result.place = reader.readPlace();
    reader.readText(number);  // menu
    reader.readText(number);  // class
    result.title = reader.readText(number);
    if ((result.style & DS_SETFONT) != 0) {
        reader.read16();  // points
        reader.readText(number);
    }
    for (unsigned int i = 0; i < count && reader.isGood(); ++i)
        result.controls.push_back(readControl(reader));
    if (!reader.isGood()) return std::nullopt;
    return result;
}

}  // namespace tqplatform
