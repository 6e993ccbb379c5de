// The version of a file against a plain model of the way to it. An input is the file.

#include <string_view>

#include "support/Check.h"
#include "support/ScratchFile.h"
#include "support/VersionModel.h"
#include "tqlib/files/GetVersionInfo.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    static ScratchFile scratch;
    std::string_view const content(reinterpret_cast<char const *>(data), size);
    scratch.write(content);
    TQFilename file(scratch.path());
    expectSame("version", GetVersionInfo(file), VersionModel(content).number());
    return 0;
}
