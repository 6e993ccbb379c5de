#include "tqlib/foundation/TQString.h"

#include <fnmatch.h>

#include <cstring>

#include "Job.h"
#include "Nearly.h"
#include "Random.h"

namespace {

constexpr std::size_t megabyte = 1024 * 1024;

// Tokens: words with one to three separators between them, none at the ends.

constexpr char separators[] = " ,;:|/=()";

std::string makeWords() {
    Random random;
    std::string text = random.text(1, 12);
    while (text.size() < megabyte)
        text += random.text(1, 3, separators) + random.text(1, 12);
    return text;
}

std::string const &words() {
    static std::string const text = makeWords();
    return text;
}

constexpr auto tokensWithStrtok = [](auto take) {
    static std::vector<char> copy(words().size() + 1);
    std::memcpy(copy.data(), words().c_str(), copy.size());
    char *rest = nullptr;
    char *token = strtok_r(copy.data(), separators, &rest);
    for (; token != nullptr; token = strtok_r(nullptr, separators, &rest))
        take(token);
};

constexpr auto tokensWithTqlib = [](auto take) {
    static TQString const text = words().c_str();
    TQString const set = separators;
    TQString token;
    for (int at = 0; at != -1;) {
        at = text.GetToken(token, at, set, 1);
        take(token);
    }
};

auto const tokens = Job<std::string>("tokens")
                        .peer("strtok_r", tokensWithStrtok)
                        .contender("tqlib", tokensWithTqlib);

// Wildcards: names of files, some of which fit the pattern.

constexpr char pattern[] = "*_da?a_*.t?t";

std::vector<TQString> makeNames() {
    constexpr char const *kinds[] = {"_data_", "_dada_", "_date_", "_raw_"};
    constexpr char const *types[] = {".txt", ".txt", ".tst", ".csv"};
    Random random;
    std::vector<TQString> names;
    for (int i = 0; i < 4096; ++i) {
        std::string name = random.text(4, 12);
        name += kinds[random.between(0, 3)];
        name += random.text(2, 8, "0123456789_");
        name += types[random.between(0, 3)];
        names.emplace_back(name.c_str());
    }
    return names;
}

std::vector<TQString> const &names() {
    static std::vector<TQString> const texts = makeNames();
    return texts;
}

constexpr auto matchWithFnmatch = [](auto take) {
    for (char const *const name : names())
        take(fnmatch(pattern, name, 0) == 0);
};

constexpr auto matchWithTqlib = [](auto take) {
    for (TQString const &name : names())
        take(name.Search(pattern));
};

auto const wildcards =
    Job<bool>("wildcards").peer("fnmatch", matchWithFnmatch).contender("tqlib", matchWithTqlib);

// Short numbers: whole ones, decimals, and now and then an exponent.

std::vector<TQString> makeNumbers() {
    constexpr char const *formats[] = {"%.0f", "%.0f", "%.1f", "%.2f",
                                       "%.2f", "%.3f", "%.4f", "%.2e"};
    Random random;
    std::vector<TQString> numbers;
    for (std::size_t length = 0; length < megabyte;) {
        char const *const format = formats[random.between(0, 7)];
        char text[32];
        std::snprintf(text, sizeof text, format, random.between(-9999999, 9999999) / 1e3);
        numbers.emplace_back(text);
        length += std::strlen(text) + 1;
    }
    return numbers;
}

std::vector<TQString> const &numbers() {
    static std::vector<TQString> const texts = makeNumbers();
    return texts;
}

constexpr auto convertWithStrtod = [](auto take) {
    for (char const *const number : numbers())
        take(std::strtod(number, nullptr));
};

constexpr auto convertWithTqlib = [](auto take) {
    for (TQString const &number : numbers())
        take(number.GetDouble());
};

auto const shortNumbers = Job<double>("short numbers")
                              .peer("strtod", convertWithStrtod)
                              .contender("tqlib", convertWithTqlib, nearly);

}  // namespace
