#include "tqplatform/desktop/Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cctype>
#include <csignal>
#include <cstdlib>
#include <iterator>

#include "tqplatform/runtime/SystemCalls.h"

namespace tqplatform {
namespace {

constexpr int keyboard = 0;
constexpr int screen = 2;

// Another screen, without wrapping at the end of lines; and all as it was.
constexpr std::string_view enter = "\x1B[?1049h\x1B[?7l\x1B[2J";
constexpr std::string_view leave = "\x1B[0m\x1B[?7h\x1B[?25h\x1B[?1049l";

/// Signals that end a process, and whether they do so whatever a handler of the host's does.
struct Ending {
    int signal;
    bool isFault;
};
constexpr Ending endings[] = {
    {SIGHUP, false}, {SIGINT, false}, {SIGQUIT, false}, {SIGTERM, false}, {SIGPIPE, false},
    {SIGABRT, true}, {SIGSEGV, true}, {SIGBUS, true},   {SIGFPE, true},   {SIGILL, true},
};

constinit int depth = 0;  ///< calls of begin() without their end()
constinit termios before{};
constinit bool isExitWatched = false;
struct sigaction handlersBefore[std::size(endings)];

// Safe in a signal handler.
void restore() {
    tcsetattr(keyboard, TCSADRAIN, &before);
    writeFile(screen, leave.data(), leave.size());
}

void restoreAtExit() {
    if (depth > 0) restore();
    depth = 0;
}

// What was in force takes over: for a fault of the program by its happening again, else by another
// signal, which waits until this handler has returned.
extern "C" void onEnding(int signal, siginfo_t *info, void * /*context*/) {
    restore();
    for (std::size_t i = 0; i < std::size(endings); ++i)
        if (endings[i].signal == signal) sigaction(signal, &handlersBefore[i], nullptr);
    bool const happensAgain = info->si_code > 0 && (signal == SIGSEGV || signal == SIGBUS ||
                                                    signal == SIGFPE || signal == SIGILL);
    if (!happensAgain) raise(signal);
}

bool isOurs(struct sigaction const &action) {
    return (action.sa_flags & SA_SIGINFO) != 0 && action.sa_sigaction == onEnding;
}

// A signal that the host ignores, or handles and may survive, stays his.
void watchSignals() {
    struct sigaction ours {};
    ours.sa_sigaction = onEnding;
    ours.sa_flags = SA_SIGINFO;
    sigemptyset(&ours.sa_mask);
    for (std::size_t i = 0; i < std::size(endings); ++i) {
        struct sigaction &known = handlersBefore[i];
        sigaction(endings[i].signal, nullptr, &known);
        bool const isDefault = (known.sa_flags & SA_SIGINFO) == 0 && known.sa_handler == SIG_DFL;
        if (isDefault || endings[i].isFault) sigaction(endings[i].signal, &ours, nullptr);
    }
}

void unwatchSignals() {
    for (std::size_t i = 0; i < std::size(endings); ++i) {
        struct sigaction present {};
        sigaction(endings[i].signal, nullptr, &present);
        if (isOurs(present)) sigaction(endings[i].signal, &handlersBefore[i], nullptr);
    }
}

bool saysUtf8(std::string_view locale) {
    std::string letters;
    for (char const c : locale)
        if (c != '-') letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return letters.find("utf8") != std::string::npos;
}

}  // namespace

bool Terminal::isThere() {
    char const *const kind = std::getenv("TERM");
    bool const moves = kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
    return moves && isatty(keyboard) != 0 && isatty(screen) != 0;
}

bool Terminal::isUtf8() {
    for (char const *const name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        char const *const value = std::getenv(name);
        if (value != nullptr && *value != '\0') return saysUtf8(value);
    }
    return false;
}

void Terminal::begin() {
    if (depth++ > 0) return;
    tcgetattr(keyboard, &before);
    if (!isExitWatched) isExitWatched = std::atexit(restoreAtExit) == 0;
    watchSignals();
    termios raw = before;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN);
    raw.c_iflag &= ~static_cast<tcflag_t>(ICRNL | IXON);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    raw.c_cc[VSUSP] = _POSIX_VDISABLE;
    tcsetattr(keyboard, TCSADRAIN, &raw);
    write(enter);
}

void Terminal::end() {
    if (depth == 0 || --depth > 0) return;
    restore();
    unwatchSignals();
}

Terminal::Size Terminal::size() {
    winsize size{};
    if (ioctl(screen, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0)
        return {24, 80};
    return {size.ws_row, size.ws_col};
}

void Terminal::write(std::string_view text) {
    writeFile(screen, text.data(), text.size());
}

bool Terminal::read(std::string &bytes, int milliseconds) {
    pollfd waiting{keyboard, POLLIN, 0};
    int const ready = poll(&waiting, 1, milliseconds);
    if (ready <= 0) return true;
    char block[256];
    ssize_t const count = readFile(keyboard, block, sizeof block);
    if (count <= 0) return false;
    bytes.append(block, static_cast<std::size_t>(count));
    return true;
}

}  // namespace tqplatform
