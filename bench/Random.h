#pragma once

#include <random>
#include <string>
#include <string_view>

/// Random input that is the same in every run.
class Random {
  public:
    /// A whole number from `lowest` to `highest`.
    template <typename Whole>
    Whole between(Whole lowest, Whole highest) {
        return std::uniform_int_distribution<Whole>(lowest, highest)(engine_);
    }

    char oneOf(std::string_view characters) {
        return characters[between<std::size_t>(0, characters.size() - 1)];
    }

    /// A text of `shortest` to `longest` characters out of `characters`.
    std::string text(int shortest, int longest,
                     std::string_view characters = "abcdefghijklmnopqrstuvwxyz") {
        std::string result(static_cast<std::size_t>(between(shortest, longest)), ' ');
        for (char &c : result)
            c = oneOf(characters);
        return result;
    }

  private:
    std::mt19937_64 engine_{19971104};
};
