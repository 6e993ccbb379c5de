#include "tqlib/files/GetVersionInfo.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "tqplatform/kernel/Version.h"

namespace {

constexpr std::size_t longestPath = 255;

double asNumber(VS_FIXEDFILEINFO const &version) {
    std::uint32_t const first = version.dwFileVersionMS, last = version.dwFileVersionLS;
    return (first >> 16) + (first & 0xFFFF) * 0.1 + (last >> 16) * 0.01 + (last & 0xFFFF) * 0.001;
}

}  // namespace

double GetVersionInfo(TQFilename &file) {
    if (file.text().size() > longestPath) return 0.0;
    std::uint32_t handle;
    unsigned int const size = GetFileVersionInfoSizeA(file, &handle);
    std::vector<std::byte> block(size);
    if (size == 0 || GetFileVersionInfoA(file, handle, size, block.data()) == 0) return 0.0;
    void *value;
    unsigned int length;
    if (VerQueryValueA(block.data(), "\\", &value, &length) == 0) return 0.0;
    VS_FIXEDFILEINFO version;
    std::memcpy(&version, value, sizeof version);
    return asNumber(version);
}
