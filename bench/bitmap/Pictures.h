#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Pictures for the benchmarks, 2000 by 1500 pixels.
inline constexpr int pictureWidth = 2000;
inline constexpr int pictureHeight = 1500;

/// The indices of a drawing, with long runs, and of noise, from the bottom line to the top one.
std::vector<std::uint8_t> const &drawing();
std::vector<std::uint8_t> const &noise();

/// The paths of BMP files: colours of 24 bits, the drawing with 8 bits, and its run-length code.
std::string const &colorFile();
std::string const &drawingFile();
std::string const &compressedFile();
