#include "tqlib/foundation/InformationBitmap.h"

#include <cstddef>
#include <string_view>

namespace tqlib::detail {
namespace {

constexpr std::size_t size = 32;

/// The colours of the picture below, by their letters, with their places in the colour table.
struct Ink {
    char letter;
    std::uint8_t blue, green, red;
};
constexpr Ink inks[] = {
    {'#', 0, 0, 0},       {'i', 255, 0, 0},     {'.', 192, 192, 192},
    {':', 128, 128, 128}, {' ', 255, 255, 255},
};

// clang-format off
constexpr std::string_view picture[size] = {
    "................................",
    "..........###########...........",
    ".......###           ###........",
    "......#                 #.......",
    ".....#                   #......",
    "....#         iii         #.....",
    "...#         iiiii         #....",
    "...#         iiiii         #:...",
    "..#          iiiii          #:..",
    "..#           iii           #:..",
    "..#                         #:..",
    "..#                         #:..",
    "..#        iiiiiii          #:..",
    "..#          iiiii          #:..",
    "..#          iiiii          #:..",
    "..#          iiiii          #:..",
    "..#          iiiii          #:..",
    "..#          iiiii          #:..",
    "...#         iiiii         #::..",
    "...#         iiiii         #:...",
    "....#      iiiiiiiii      #::...",
    ".....#                   #::....",
    "......#                 #::.....",
    ".......###           ###::......",
    "........::####     ##:::::......",
    "..........:::::#    #:::........",
    "...............:#   #:..........",
    "................:#  #:..........",
    ".................:# #:..........",
    "..................:##:..........",
    "...................:::..........",
    "................................",
};
// clang-format on

constexpr unsigned int indexOf(char letter) {
    unsigned int index = 0;
    while (inks[index].letter != letter)
        ++index;
    return index;
}

constexpr std::uint8_t byteOf(unsigned int left, unsigned int right) {
    return static_cast<std::uint8_t>(left << 4 | right);
}

constexpr auto makeBitmap() {
    std::array<std::uint8_t, 40 + 16 * 4 + size * size / 2> bytes{};
    bytes[0] = 40;
    bytes[4] = bytes[8] = size;
    bytes[12] = 1;  // planes
    bytes[14] = 4;  // bits of a pixel
    std::size_t place = 40;
    for (Ink const &ink : inks) {
        bytes[place] = ink.blue;
        bytes[place + 1] = ink.green;
        bytes[place + 2] = ink.red;
        place += 4;
    }
    place = 40 + 16 * 4;
    for (std::size_t y = size; y-- > 0;)
        for (std::size_t x = 0; x < size; x += 2)
            bytes[place++] = byteOf(indexOf(picture[y][x]), indexOf(picture[y][x + 1]));
    return bytes;
}

}  // namespace

constinit std::array<std::uint8_t, 40 + 16 * 4 + 32 * 16> const informationBitmap = makeBitmap();

}  // namespace tqlib::detail
