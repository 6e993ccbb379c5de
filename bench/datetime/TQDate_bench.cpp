#include "tqlib/datetime/TQDate.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "Job.h"
#include "Random.h"
#include "tqlib/datetime/chrono.h"

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr std::size_t dateCount = 1000;
constexpr sys_days dayZero = sys_days(std::chrono::year(1) / 1 / 1) - std::chrono::days(1);

struct Fields {
    int year, month, day;
};

/// The same random dates in every shape.
struct Inputs {
    std::vector<Fields> fields;
    std::vector<TQDate> dates;
    std::vector<sys_days> days;
    std::vector<int> distances;
    std::vector<std::tm> moments;
    std::vector<std::string> texts;
    std::vector<TQString> strings;
};

Inputs makeInputs() {
    Random random;
    Inputs inputs;
    for (std::size_t i = 0; i < dateCount; ++i) {
        Fields const date{random.between(1800, 2200), random.between(1, 12), random.between(1, 28)};
        std::tm moment{};
        moment.tm_year = date.year - 1900;
        moment.tm_mon = date.month - 1;
        moment.tm_mday = date.day;
        inputs.fields.push_back(date);
        inputs.dates.emplace_back(date.day, date.month, date.year);
        inputs.days.push_back(toSysDays(inputs.dates.back()));
        inputs.distances.push_back(random.between(-20000, 20000));
        inputs.moments.push_back(moment);
        inputs.strings.push_back(inputs.dates.back());
        inputs.texts.emplace_back(inputs.strings.back().text());
    }
    return inputs;
}

Inputs const &inputs() {
    static Inputs const dates = makeInputs();
    return dates;
}

/// A date and its weekday in one number.
int packed(int year, int month, int day, int weekday) {
    return ((year * 100 + month) * 100 + day) * 10 + weekday;
}

auto const counting = Job<long>("day count")
                          .peer("chrono",
                                [](auto take) {
                                    for (auto const [year, month, day] : inputs().fields) {
                                        sys_days const date = std::chrono::year(year) / month / day;
                                        take(static_cast<long>((date - dayZero).count()));
                                    }
                                })
                          .contender("tqlib", [](auto take) {
                              for (auto const [year, month, day] : inputs().fields)
                                  take(TQDate::numberofdays(year, month, day));
                          });

constexpr auto moveWithChrono = [](auto take) {
    Inputs const &all = inputs();
    for (std::size_t i = 0; i < dateCount; ++i) {
        sys_days const day = all.days[i] + std::chrono::days(all.distances[i]);
        year_month_day const date = day;
        take(packed(static_cast<int>(date.year()),
                    static_cast<int>(static_cast<unsigned>(date.month())),
                    static_cast<int>(static_cast<unsigned>(date.day())),
                    static_cast<int>(std::chrono::weekday(day).c_encoding())));
    }
};

constexpr auto moveWithTqlib = [](auto take) {
    Inputs const &all = inputs();
    for (std::size_t i = 0; i < dateCount; ++i) {
        TQDate const date = all.dates[i] + all.distances[i];
        take(packed(date.year(), date.month(), date.day(), date.weekday()));
    }
};

auto const moving =
    Job<int>("date plus days").peer("chrono", moveWithChrono).contender("tqlib", moveWithTqlib);

constexpr auto writeWithStrftime = [](auto take) {
    for (std::tm const &moment : inputs().moments) {
        char text[16];
        std::strftime(text, sizeof text, "%d.%m.%Y", &moment);
        take(text);
    }
};

constexpr auto writeText = [](auto take) {
    for (TQDate const &date : inputs().dates)
        take(date.operator char *());
};

constexpr auto writeString = [](auto take) {
    for (TQDate const &date : inputs().dates) {
        TQString const text = date;
        take(text);
    }
};

auto const writing = Job<std::string>("date to text")
                         .peer("strftime", writeWithStrftime)
                         .contender("tqlib", writeText);

auto const writingStrings = Job<std::string>("date to string")
                                .peer("strftime", writeWithStrftime)
                                .contender("tqlib", writeString);

constexpr auto readWithStrptime = [](auto take) {
    for (std::string const &text : inputs().texts) {
        std::tm date{};
        strptime(text.c_str(), "%d.%m.%Y", &date);
        take(packed(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday, date.tm_wday));
    }
};

constexpr auto readWithSscanf = [](auto take) {
    for (std::string const &text : inputs().texts) {
        int day = 0, month = 0, year = 0;
        std::sscanf(text.c_str(), "%d.%d.%d", &day, &month, &year);
        take(packed(year, month, day, 0));
    }
};

constexpr auto readColumns = [](auto take) {
    TQDate date(1, 1, 2000);
    for (std::string const &text : inputs().texts) {
        date = text.c_str();
        take(packed(date.year(), date.month(), date.day(), date.weekday()));
    }
};

constexpr auto readFreely = [](auto take) {
    TQDate date(1, 1, 2000);
    for (TQString const &text : inputs().strings) {
        date = text;
        take(packed(date.year(), date.month(), date.day(), 0));
    }
};

auto const readingColumns =
    Job<int>("date columns").peer("strptime", readWithStrptime).contender("tqlib", readColumns);

auto const readingFreely =
    Job<int>("date free form").peer("sscanf", readWithSscanf).contender("tqlib", readFreely);

}  // namespace
