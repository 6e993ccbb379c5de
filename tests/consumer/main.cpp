// Uses each class family from outside, with the namespaces opened that applications like to open.
#include <algorithm>
#include <cmath>
#include <iostream>

#include "tqlib/tqlib.h"

#include <filesystem>
#include <string>

using namespace std;

int main() {
    TQString text = "  7;8  ", token;
    int const next = text.Trim().GetToken(token, 0, ";", 1);

    string const path = filesystem::temp_directory_path() / "tqlib_consumer.csv";
    {
        TQCSVOutput out(path.c_str());
        out << token << 1.5 << 2;
        out.nextline();
    }
    double sum = 0, value = 0;
    TQCSVInput in(path.c_str());
    in >> token >> &sum >> &value;
    sum += value;
    filesystem::remove(path);

    TQHpCalculator calculator;
    calculator.addVariable("SUM", &sum);
    bool thrown = false;
    try {
        in >> &value;
    } catch (TQCSVInput::Failure const &) {
        thrown = true;
    }
    cout << token << ' ' << next << ' ' << calculator.calculate("sum 2 *") << ' ' << TQString(960u)
         << ' ' << thrown << endl;
    bool const good = token == "7" && next == 2 && calculator.stackValue(0) == 7.0 && thrown &&
                      TQString(960u) == "Ja";
    return good ? 0 : 1;
}
