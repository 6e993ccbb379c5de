#pragma once

// Dialogs as they stand in a program's resources: how they are read, and how one is written down.
//
//     constexpr tqplatform::ControlDescription controls[] = {
//         {tqplatform::ControlKind::button, 920, {45, 40, 50, 14}, WS_TABSTOP, "&Ja"}};
//     constexpr auto bytes = tqplatform::dialogBytes<256>({"Frage", 0, {0, 0, 322, 61}, controls});
//
// The format is the published one of 32-bit programs, without its extended form: a header, menu,
// class, title and font, and for each control a header on a boundary of 4 bytes, class, text and a
// block of its own. Numbers are little-endian, texts are UTF-16 with a NUL.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tqplatform/desktop/Messages.h"
#include "tqplatform/runtime/CodePage1252.h"
#include "tqplatform/runtime/Export.h"

namespace tqplatform {

/// A place in dialog units: a quarter of the width of a letter, and an eighth of its height.
struct DialogRect {
    std::int16_t left, top, width, height;
};

/// The numbers of the windows' classes in templates.
enum class ControlKind : std::uint16_t {
    button = 0x80,
    edit = 0x81,
    text = 0x82,
    scrollBar = 0x84,  ///< can be read and written, but there is no such window: see createDialog()
    comboBox = 0x85
};

/// A control of a template that was read. Texts are in Windows-1252.
struct ControlTemplate {
    std::string className;
    std::string text;
    unsigned int resource = 0;  ///< the number that stands in place of a text, or 0
    std::uint16_t id = 0;
    DialogRect place{};
    unsigned int style = 0;
};

/// A template that was read.
struct DialogTemplate {
    std::string title;
    unsigned int style = 0;
    DialogRect place{};
    std::vector<ControlTemplate> controls;
};

/// Reads a template; nothing if it is cut off or of the extended form.
TQPLATFORM_API std::optional<DialogTemplate> readDialogTemplate(
    std::span<std::uint8_t const> bytes);

/// A control to be written, in Windows-1252. It becomes a visible child in any case.
struct ControlDescription {
    ControlKind kind;
    std::uint16_t id;
    DialogRect place;
    unsigned int style = 0;
    std::string_view text = {};
    std::uint16_t resource = 0;  ///< a number in place of the text
};

/// A dialog to be written: a frame with a caption, a system menu and a font of 8 points.
struct DialogDescription {
    std::string_view title;
    unsigned int style;
    DialogRect place;
    std::span<ControlDescription const> controls;
};

/// The bytes of a template.
template <std::size_t capacity>
struct DialogBytes {
    std::array<std::uint8_t, capacity> bytes{};
    std::size_t size = 0;

    constexpr void add16(unsigned int value) {
        bytes[size] = static_cast<std::uint8_t>(value & 0xFF);
        bytes[size + 1] = static_cast<std::uint8_t>(value >> 8 & 0xFF);
        size += 2;
    }
    constexpr void add32(unsigned int value) {
        add16(value);
        add16(value >> 16);
    }
    constexpr void addText(std::string_view text) {
        for (char const c : text)
            add16(toUnicode(c));
        add16(0);
    }
    constexpr void addPlace(DialogRect const &place) {
        for (std::int16_t const number : {place.left, place.top, place.width, place.height})
            add16(static_cast<std::uint16_t>(number));
    }
    constexpr void addNumber(unsigned int number) {
        add16(0xFFFF);
        add16(number);
    }
    constexpr void addControl(ControlDescription const &control) {
        size = (size + 3) & ~std::size_t{3};
        add32(control.style | WS_CHILD | WS_VISIBLE);
        add32(0);
        addPlace(control.place);
        add16(control.id);
        addNumber(static_cast<unsigned int>(control.kind));
        if (control.resource != 0)
            addNumber(control.resource);
        else
            addText(control.text);
        add16(0);
    }
};

/// Writes a template at compile time; a `capacity` that doesn't suffice is an error of the
/// compiler.
template <std::size_t capacity>
consteval DialogBytes<capacity> dialogBytes(DialogDescription const &dialog) {
    DialogBytes<capacity> result;
    result.add32(dialog.style | DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_VISIBLE | WS_CAPTION |
                 WS_SYSMENU);
    result.add32(0);
    result.add16(static_cast<unsigned int>(dialog.controls.size()));
    result.addPlace(dialog.place);
    result.add16(0);  // no menu
    result.add16(0);  // the class of dialogs
    result.addText(dialog.title);
    result.add16(8);
    result.addText("MS Sans Serif");
    for (ControlDescription const &control : dialog.controls)
        result.addControl(control);
    return result;
}

}  // namespace tqplatform
