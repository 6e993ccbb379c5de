#include "tqplatform/runtime/HostPath.h"

#include <algorithm>

namespace tqplatform {
namespace {

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

}  // namespace

bool hasDrive(std::string_view path) {
    return path.size() >= 2 && path[1] == ':' && isLetter(path[0]);
}

std::string toHostPath(std::string_view path) {
    if (path.find('/') != std::string_view::npos) return std::string(path);
    if (hasDrive(path)) {
        if (path[0] != 'C' && path[0] != 'c') return {};
        path.remove_prefix(2);
        if (path.empty()) return ".";
    }
    std::string host(path);
    std::replace(host.begin(), host.end(), '\\', '/');
    return host;
}

std::string fromHostPath(std::string_view path) {
    if (path.find('\\') != std::string_view::npos) return std::string(path);
    std::string windows = path.starts_with('/') ? "C:" : "";
    windows += path;
    std::replace(windows.begin(), windows.end(), '/', '\\');
    return windows;
}

}  // namespace tqplatform
