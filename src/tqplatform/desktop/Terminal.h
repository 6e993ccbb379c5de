#pragma once

#include <string>
#include <string_view>

namespace tqplatform {

/// The terminal at standard input and error, while it shows dialogs: keys come at once and aren't
/// shown, the screen is another one. As it was before on every way out: the last end(), exit(), and
/// signals that end the process. Calls nest.
class Terminal {
  public:
    struct Size {
        int rows, columns;
    };

    /// Whether there is one that can move its cursor; whether its characters are UTF-8, by the
    /// environment.
    static bool isThere();
    static bool isUtf8();

    static void begin();
    static void end();

    /// 24 by 80 where it can't be told.
    static Size size();

    static void write(std::string_view text);

    /// Waits for keys, or for `milliseconds`, and appends their bytes: false if the terminal is
    /// gone.
    static bool read(std::string &bytes, int milliseconds);
};

}  // namespace tqplatform
