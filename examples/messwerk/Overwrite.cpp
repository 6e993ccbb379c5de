#include "Overwrite.h"

#include <unistd.h>

#include <string>

#include "Errors.h"
#include "Paths.h"
#include "tqlib/dialogs/CYesToAllDlg.h"
#include "tqplatform/desktop/TerminalUser.h"
#include "tqplatform/runtime/CodePage1252.h"
#include "Words.h"

namespace messwerk {
namespace {

/// `path` in quotes as a caption, to which an ampersand that is to be seen is two.
CString caption(std::string const &path) {
    CString text;
    for (char const c : tqplatform::fromUtf8(quotedPath(path))) {
        if (c == '&') text += c;
        text += c;
    }
    return text;
}

/// The question for one file after the other, until it is answered for all.
class Replacing {
  public:
    /// True if `path` may be written.
    bool permits(std::string const &path) {
        bool const isThere = isOrdinaryFile(path) && !isDescriptor(path, STDOUT_FILENO);
        if (forAll_ || !isThere) return true;
        if (!tqplatform::TerminalUser::isThere())
            throw RunError(quotedPath(path) + " is there already; -f replaces it");
        CString text =
            "Die Datei " + caption(path) + " existiert bereits!\nSoll sie ersetzt werden?";
        CYesToAllDlg question(text, nullptr);
        question.DoModal();
        forAll_ = question.result == CYesToAllDlg::yesToAll;
        if (question.result != CYesToAllDlg::no && question.result != CYesToAllDlg::yes && !forAll_)
            throw RunError("stopped; nothing is written");
        return question.result != CYesToAllDlg::no;
    }

  private:
    bool forAll_ = false;
};

}  // namespace

void askToReplace(Options &options) {
    if (options.replace) return;
    Replacing replacing;
    if (!replacing.permits(options.output)) options.output.clear();
    if (!options.plot.file.empty() && !replacing.permits(options.plot.file))
        options.plot.file.clear();
}

}  // namespace messwerk
