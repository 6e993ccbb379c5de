#pragma once

// What the benchmarks are held against.

/// The time that tqlib may take for a job, as a multiple of a peer's in the same run.
struct Target {
    char const *job;
    char const *peer;
    double atMost;
    double bestSeen;  ///< the best ratio measured so far; 0 if none is on record
};

inline constexpr Target targets[] = {
    {"csv read", "fast-cpp-csv-parser", 0.45, 0.32},
    {"csv read", "sscanf", 0.10, 0.07},
    {"csv write", "to_chars", 0.55, 0.38},
    {"text read", "sscanf", 0.12, 0.07},
    {"columns read", "gfortran", 0.12, 0.07},
    {"columns write", "gfortran", 0.09, 0.06},
    {"random", "absl::Uniform", 0.4, 0.25},
    {"share", "shared_ptr", 0.5, 0.09},
    {"pooled append", "std::string", 0.8, 0.2},
    {"pooled format", "snprintf", 0.8, 0},
    {"calculate", "muparser", 0.008, 0.004},
    {"append", "std::string", 1.0, 0.36},
    {"join", "std::string", 0.8, 0.2},
    {"tokens", "strtok_r", 1.0, 0.28},
    {"wildcards", "fnmatch", 0.6, 0.25},
    {"short numbers", "strtod", 0.5, 0.0},
    {"day count", "chrono", 1.2, 1.0},
    {"date plus days", "chrono", 3.0, 0.0},
    {"date to text", "strftime", 0.2, 0.07},
    {"date to string", "strftime", 0.2, 0.07},
    {"date columns", "strptime", 0.4, 0.12},
    {"date free form", "sscanf", 0.25, 0.12},
    {"path parts", "filesystem", 0.3, 0.0},
    {"open and get value", "inih", 0.15, 0.09},
    {"get value of an open file", "SimpleIni", 0.05, 0.0},
    {"set value", "SimpleIni", 0.4, 0.09},
    {"log line", "write", 1.15, 1.0},
    {"suppressed call", "spdlog", 0.3, 0.09},
    {"copy", "filesystem", 1.05, 0.91},
    {"start and wait", "posix_spawn", 1.1, 1.0},
    {"read 24 bits", "SDL_LoadBMP", 0.5, 0.40},
    {"read 8 bits", "SDL_LoadBMP", 0.5, 0.35},
    {"write 24 bits", "SDL_SaveBMP", 0.35, 0.24},
    {"pixels", "SDL_GetRGB", 0.3, 0.22},
    {"compress a drawing", "bytewise", 0.8, 0.67},
    {"compress noise", "bytewise", 0.3, 0.12},
    {"decode", "SDL_LoadBMP", 0.35, 0.27},
    {"draw", "SDL_BlitScaled", 0.9, 0.71},
    {"map 1 GB", "open and mmap", 2.0, 0.0},
    {"messages", "std::function", 12.0, 0.0},
    {"number list", "vector and sscanf", 2.0, 0.0},
    {"dialog of 50", "printf and scanf", 20.0, 0.0},
    {"pick list", "set and vector", 4.0, 0.0},
    {"version info", "whole-file read", 0.5, 0.0},
};
