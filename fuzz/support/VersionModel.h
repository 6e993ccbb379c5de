#pragma once

#include <cstdint>
#include <string_view>

/// The version of a program file that is in memory, looked for byte by byte.
class VersionModel {
  public:
    explicit VersionModel(std::string_view file) : file_(file) {}

    /// The version as one number; 0 if there is none.
    double number() const {
        try {
            return at(0, 2) == 0x5A4D ? inWindowsFile() : inElf();
        } catch (Nothing const &) {
            return 0.0;
        }
    }

  private:
    using Number = std::uint64_t;
    struct Nothing {};
    struct Range {
        Number offset, size;
    };

    static void require(bool condition) {
        if (!condition) throw Nothing();
    }
    // The bytes of a table of `count` records.
    std::string_view table(Number offset, Number count, Number size) const {
        require(offset <= file_.size() && count * size <= 65536 &&
                count * size <= file_.size() - offset);
        return file_.substr(static_cast<std::size_t>(offset),
                            static_cast<std::size_t>(count * size));
    }
    Number at(Number offset, Number width) const {
        std::string_view const bytes = table(offset, 1, width);
        Number value = 0;
        for (std::size_t i = bytes.size(); i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes[i]);
        return value;
    }

    double numberOf(Range block) const {
        Number const p = block.offset, length = at(p, 2);
        table(p, 1, length);
        require(length >= 92 && length <= block.size && at(p + 2, 2) >= 52);
        std::string_view const key("VS_VERSION_INFO", 16);
        for (std::size_t i = 0; i < key.size(); ++i)
            require(at(p + 6 + 2 * i, 2) == static_cast<unsigned char>(key[i]));
        require(at(p + 40, 4) == 0xFEEF04BD);
        auto const part = [&](Number offset) { return static_cast<double>(at(p + offset, 2)); };
        return part(50) + part(48) * 0.1 + part(54) * 0.01 + part(52) * 0.001;
    }

    double inWindowsFile() const {
        Number const header = at(60, 4), optional = header + 24;
        require(at(header, 4) == 0x4550);
        Number const magic = at(optional, 2), optionalSize = at(header + 20, 2);
        require(magic == 0x10B || magic == 0x20B);
        Number const directories = optional + (magic == 0x10B ? 92 : 108);
        table(directories, 1, 28);
        require(directories + 28 <= optional + optionalSize && at(directories, 4) >= 3);
        Number const sections = optional + optionalSize, count = at(header + 6, 2);
        table(sections, count, 40);
        auto const place = [&](Number address) {
            for (Number s = sections; s < sections + 40 * count; s += 40) {
                Number const start = at(s + 12, 4), size = at(s + 16, 4), offset = at(s + 20, 4);
                if (start <= address && address < start + size)
                    return Range{offset + address - start, start + size - address};
            }
            throw Nothing();
        };

        Number const root = place(at(directories + 20, 4)).offset;
        Number const type = subdirectory(root, 0, [](Number id) { return id == 16; });
        Number const name = subdirectory(root, type - isDirectory, [](Number) { return true; });
        Number const data = subdirectory(root, name - isDirectory, [](Number) { return true; });
        require(type >= isDirectory && name >= isDirectory && data < isDirectory);
        table(root + data, 1, 16);
        Range block = place(at(root + data, 4));
        if (Number const size = at(root + data + 4, 4); size < block.size) block.size = size;
        return numberOf(block);
    }

    static constexpr Number isDirectory = 0x80000000;

    // What the first entry that is `wanted` points to.
    template <typename Wanted>
    Number subdirectory(Number root, Number directory, Wanted wanted) const {
        require(directory < isDirectory);
        Number const first = root + directory + 16;
        Number const count = at(first - 4, 2) + at(first - 2, 2);
        table(first, count, 8);
        for (Number entry = first; entry < first + 8 * count; entry += 8)
            if (wanted(at(entry, 4))) return at(entry + 4, 4);
        throw Nothing();
    }

    double inElf() const {
        require(at(0, 4) == 0x464C457F && at(5, 1) == 1);
        bool const wide = at(4, 1) == 2;
        require(wide || at(4, 1) == 1);
        Number const word = wide ? 8 : 4, size = wide ? 64 : 40, header = wide ? 64 : 52;
        table(0, 1, header);
        Number const sections = at(wide ? 40 : 32, word), count = at(header - 4, 2);
        require(at(header - 6, 2) == size);
        table(sections, count, size);
        auto const range = [&](Number section) {
            Number const offset = section + (wide ? 24 : 16);
            return Range{at(offset, word), at(offset + word, word)};
        };

        Number const last = at(header - 2, 2);
        require(last < count);
        Range const names = range(sections + last * size);
        std::string_view const all = table(names.offset, 1, names.size);
        for (Number s = sections; s < sections + count * size; s += size) {
            Number const name = at(s, 4);
            if (at(s + 4, 4) == 1 && name < all.size() &&
                all.substr(static_cast<std::size_t>(name), 14) ==
                    std::string_view(".rsrc.version", 14))
                return numberOf(range(s));
        }
        throw Nothing();
    }

    std::string_view file_;
};
