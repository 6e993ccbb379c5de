#pragma once

// What the programs made of the guide's pages have in common.

#include <chrono>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "tqlib/datetime/chrono.h"
#include "tqlib/files/filesystem.h"
#include "tqlib/tqlib.h"
#include "tqplatform/desktop/AfxMessageBox.h"
#include "tqplatform/desktop/DialogTemplate.h"
#include "tqplatform/desktop/ScriptedUser.h"
#include "tqplatform/framework/ModuleState.h"
#include "tqplatform/graphics/DeviceContext.h"

/// Holds a text against what the page says of it: the beginning of a comment, up to a blank or a
/// mark behind it, with or without quotes.
void expectShown(std::string text, std::string const &comment, int line);

inline void shows(char const *text, char const *comment, int line) {
    expectShown(text == nullptr ? "null" : text, comment, line);
}
inline void shows(bool value, char const *comment, int line) {
    expectShown(value ? "true" : "false", comment, line);
}
inline void shows(double value, char const *comment, int line) {
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", value);
    expectShown(text, comment, line);
}
template <std::integral Whole>
void shows(Whole value, char const *comment, int line) {
    expectShown(std::to_string(value), comment, line);
}
template <class Value>
requires requires(Value const &value) {
    value.operator TQString();
}
void shows(Value const &value, char const *comment, int line) {
    expectShown(std::string(value.operator TQString()), comment, line);
}
inline void shows(CString const &text, char const *comment, int line) {
    expectShown(std::string(text), comment, line);
}

/// The examples of the page.
void runPage(int argc, char **argv);
