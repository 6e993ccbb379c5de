#pragma once

#include <cstddef>
#include <string>

/// A file of which all is in memory, and where its reader stands in it.
struct FileModel {
    std::string content;
    std::size_t position = 0;
    bool readable = false;
    bool text = true;  ///< CR LF reads as one newline

    bool atCrLf() const {
        return text && content[position] == '\r' && content[position + 1] == '\n';
    }

    /// The next character, 0 to 255, or -1 at the end.
    int peek() const {
        if (!readable || position >= content.size()) return -1;
        return atCrLf() ? '\n' : static_cast<unsigned char>(content[position]);
    }

    void skip() { position += atCrLf() ? 2 : 1; }
};
