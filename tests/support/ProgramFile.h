#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>

/// Program files of a few hundred bytes, with nothing in them but the way to a version block, which
/// ends the file.

using Version = std::array<std::uint32_t, 4>;

struct Word {
    std::size_t offset;
    std::uint32_t value;
};

/// Writes 32-bit words at their offsets; one may cover the upper half of the one ahead of it.
inline std::string withWords(std::string file, std::initializer_list<Word> words) {
    for (Word const &word : words) {
        if (file.size() < word.offset + 4) file.resize(word.offset + 4);
        for (std::size_t i = 0; i < 4; ++i)
            file[word.offset + i] = static_cast<char>(word.value >> 8 * i);
    }
    return file;
}

// clang-format off
inline std::string versionBlock(Version const &version) {
    std::string block = withWords("", {
        {0, 52 << 16 | 92}, {40, 0xFEEF04BD}, {48, version[0] << 16 | version[1]},
        {52, version[2] << 16 | version[3]}, {88, 0}});
    for (std::size_t i = 0; i < 15; ++i)
        block[6 + 2 * i] = "VS_VERSION_INFO"[i];
    return block;
}

/// A Windows file of 64 bits, if `wide`, or 32. The resources begin at `at`, 408 at least: the
/// directory of types, and from at + 32, + 56 and + 80 on those of names and languages and the
/// place of the block.
inline std::string windowsFile(Version const &version, bool wide, std::uint32_t at = 408) {
    constexpr std::uint32_t isDirectory = 0x80000000, one = 1 << 16;
    std::uint32_t const directories = wide ? 196 : 180, sections = directories + 132;
    return withWords("", {
        {0, 'Z' << 8 | 'M'}, {60, 64}, {64, 'E' << 8 | 'P'}, {68, 2 << 16}, {84, sections - 88},
        {88, wide ? 0x20Bu : 0x10Bu}, {directories, 16}, {directories + 20, 0x2000},
        {sections + 12, 0x1000}, {sections + 16, 0x1000}, {sections + 52, 0x2000},
        {sections + 56, 188}, {sections + 60, at},
        {at + 12, 2 * one}, {at + 16, 3}, {at + 24, 16}, {at + 28, isDirectory | 32},
        {at + 44, one}, {at + 48, 1}, {at + 52, isDirectory | 56},
        {at + 68, one}, {at + 72, 0x407}, {at + 76, 80},
        {at + 80, 0x2000 + 96}, {at + 84, 92}, {at + 92, 0}}) + versionBlock(version);
}

/// An ELF file of 64 bits, if `wide`, or 32, with three sections.
inline std::string elfFile(Version const &version, bool wide) {
    std::uint32_t const size = wide ? 64 : 40, offset = wide ? 24 : 16, length = wide ? 32 : 20;
    std::uint32_t const block = 64 + size, names = block + size, content = names + size;
    return withWords("", {
        {0, 0x464C457F}, {4, wide ? 0x102u : 0x101u}, {wide ? 40u : 32u, 64},
        {wide ? 56u : 44u, size << 16}, {wide ? 60u : 48u, 2 << 16 | 3},
        {block, 1}, {block + 4, 1}, {block + offset, content + 16}, {block + length, 92},
        {names + 4, 3}, {names + offset, content}, {names + length, 16}, {content - 4, 0}}) +
        std::string("\0.rsrc.version\0", 16) + versionBlock(version);
}
// clang-format on
