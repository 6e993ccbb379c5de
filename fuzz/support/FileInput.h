#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "support/Input.h"
#include "support/NumberLocale.h"
#include "support/ScratchFile.h"

/// The file in memory of this process.
inline ScratchFile &scratch() {
    static ScratchFile file;
    return file;
}

/// An input that is a line and a file: the line holds a comma for a locale with a decimal comma, a
/// digit for the size of transfers, and a script. The file is expanded() and stands in scratch();
/// locale and transfers are in force for as long as the object lives.
class FileInput {
  public:
    FileInput(std::uint8_t const *data, std::size_t size) : FileInput(Input(data, size)) {}

    std::string const &content() const { return content_; }
    Input &script() { return script_; }

  private:
    explicit FileInput(Input input)
        : line_(input.text('\n')),
          content_(expanded(input.rest())),
          script_(line_),
          locale_(script_.take() == ',') {
        scratch().write(content_);
        unsigned const transfers = script_.pick(10);
        limitTransfers(transfers == 0 ? 1 << 20 : transfers);
    }

    std::string line_, content_;
    Input script_;
    NumberLocale locale_;
};
