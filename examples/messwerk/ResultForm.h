#pragma once

// How a result is written down in one of the forms.

#include <memory>
#include <string>

#include "Options.h"

namespace messwerk {

class ResultForm {
  public:
    /// Opens the file `path` for the result of `options`.
    static std::unique_ptr<ResultForm> open(Options const &options, std::string const &path);

    ResultForm() = default;
    ResultForm(ResultForm const &) = delete;
    ResultForm &operator=(ResultForm const &) = delete;
    virtual ~ResultForm();

    /// Why the field number `index` can't hold a number or a text; empty if it can.
    virtual std::string fault(std::size_t index, double number) const = 0;
    virtual std::string fault(std::size_t index, std::string_view text) const = 0;

    /// Write the next field, that with the number `index`.
    virtual void write(std::size_t index, double number) = 0;
    virtual void write(std::size_t index, TQString const &text) = 0;

    /// Writes the name of a column ahead of the rows.
    virtual void writeName(std::size_t index, std::string const &name) = 0;

    virtual void endLine() = 0;

    /// Closes the file.
    virtual void close() = 0;

    /// True if the file didn't take all that was written.
    virtual bool hasFailed() const = 0;
};

}  // namespace messwerk
