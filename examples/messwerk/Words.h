#pragma once

// What a word can be: a field of the file, a name, a token of an expression.

#include <optional>
#include <string>
#include <string_view>

namespace messwerk {

/// Numbers below this magnitude can be written: the library cuts the text of a number behind 199
/// characters, which is enough for 191 digits, sign and six decimals.
inline constexpr double tooLarge = 1e191;

/// The number that `text` is from its beginning to its end, blanks around it allowed, by the
/// decimal point of the locale in force; nothing if it is none. It may be infinite or not-a-number.
std::optional<double> wholeNumber(char const *text);

/// `text` with the capitals that the calculator turns it to.
std::string toCapitals(std::string_view text);

/// True if the calculator takes `word`, which is in capitals and has no blank, as a keyword.
bool isKeyword(std::string const &word);

/// `text` in quotes for a message: its beginning if it is long, with `?` for what is
/// neither ASCII nor UTF-8 and for control characters.
std::string quoted(std::string_view text);

/// A path in the same way, but with its end, the name of the file, if it is long.
std::string quotedPath(std::string_view path);

/// "1 row", "2 rows".
std::string counted(long count, std::string const &noun);

}  // namespace messwerk
