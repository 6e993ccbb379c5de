#pragma once

#include <string>
#include <vector>

#include "tqplatform/desktop/User.h"

/// A user who answers messages with their default button and remembers them. In place for as long
/// as the object lives.
class RecordingUser final : public tqplatform::User {
  public:
    RecordingUser() : before_(tqplatform::installUser(this)) {}
    ~RecordingUser() override { tqplatform::installUser(before_); }

    int answer(tqplatform::Message const &message) override {
        texts.emplace_back(message.text);
        styles.push_back(message.style);
        return tqplatform::defaultAnswer(message.style);
    }

    /// The texts since the last call, one behind the other.
    std::string taken() {
        std::string all;
        for (std::string const &text : texts)
            all += text + "|";
        texts.clear();
        return all;
    }

    std::vector<std::string> texts;
    std::vector<unsigned int> styles;

  private:
    tqplatform::User *before_;
};
