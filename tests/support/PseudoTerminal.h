#pragma once

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

/// A program at a terminal of its own, of 24 by 80, and somebody who types.
class PseudoTerminal {
  public:
    /// Starts `words` in `folder`.
    PseudoTerminal(std::vector<std::string> words, std::string const &folder) {
        winsize const size{24, 80, 0, 0};
        child_ = forkpty(&descriptor_, nullptr, nullptr, &size);
        if (child_ != 0) return;
        std::vector<char *> arguments;
        for (std::string &word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        setenv("TERM", "xterm", 1);
        setenv("LC_ALL", "C.UTF-8", 1);
        if (chdir(folder.c_str()) == 0) execv(arguments[0], arguments.data());
        _exit(127);
    }
    PseudoTerminal(PseudoTerminal const &) = delete;
    PseudoTerminal &operator=(PseudoTerminal const &) = delete;
    ~PseudoTerminal() {
        if (!ended_) kill(child_, SIGKILL);
        close(descriptor_);
    }

    void type(std::string const &keys) const {
        if (write(descriptor_, keys.data(), keys.size()) < 0) std::abort();
    }
    void send(int signal) const { kill(child_, signal); }
    void resize(unsigned short rows, unsigned short columns) const {
        winsize const size{rows, columns, 0, 0};
        ioctl(descriptor_, TIOCSWINSZ, &size);
    }

    /// Whether the terminal shows keys as they are typed and waits for whole lines.
    bool isAtRest() const {
        termios state{};
        tcgetattr(descriptor_, &state);
        return (state.c_lflag & (ICANON | ECHO)) == (ICANON | ECHO);
    }

    /// Waits until the program has written `text` since the last call; false after ten seconds.
    bool shows(std::string const &text) {
        while (true) {
            std::size_t const place = output_.find(text, seen_);
            if (place != std::string::npos) {
                seen_ = place + text.size();
                return true;
            }
            pollfd waiting{descriptor_, POLLIN, 0};
            char block[4096];
            if (poll(&waiting, 1, 10000) <= 0) return false;
            ssize_t const count = read(descriptor_, block, sizeof block);
            if (count <= 0) return false;
            output_.append(block, static_cast<std::size_t>(count));
        }
    }

    /// How the program ended, as waitpid() tells it.
    int end() {
        int status = 0;
        shows("\xFF");  // reads all that comes
        waitpid(child_, &status, 0);
        ended_ = true;
        return status;
    }

    std::string const &output() const { return output_; }

  private:
    int descriptor_ = -1;
    pid_t child_;
    bool ended_ = false;
    std::string output_;
    std::size_t seen_ = 0;
};
