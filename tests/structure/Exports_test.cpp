#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

std::string outputOf(std::string const &command) {
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    for (int c = 0; (c = std::fgetc(pipe.get())) != EOF;)
        output += static_cast<char>(c);
    return output;
}

// The class or function that a demangled symbol belongs to.
std::string ownerOf(std::string symbol) {
    static std::regex const prefix(
        "^(vtable for|VTT for|typeinfo for|typeinfo name for|construction vtable for|"
        "virtual thunk to|non-virtual thunk to|guard variable for) ");
    symbol = std::regex_replace(symbol, prefix, "");
    static std::regex const owner(R"((?:classic::|tqplatform::)?[A-Za-z_]\w*)");
    std::smatch match;
    return std::regex_search(symbol, match, owner) ? match.str() : symbol;
}

std::set<std::string> ownersIn(std::string const &library) {
    std::set<std::string> owners;
    std::istringstream symbols(outputOf("nm -D -C --defined-only '" + library + "'"));
    static std::regex const line(R"(^[0-9a-f]* *[A-Za-z] (.*)$)");
    std::smatch match;
    for (std::string symbol; std::getline(symbols, symbol);)
        if (std::regex_match(symbol, match, line)) owners.insert(ownerOf(match[1]));
    return owners;
}

bool isSanitized() {
#if defined(__SANITIZE_ADDRESS__)
    return true;
#else
    return false;
#endif
}

std::set<std::string> words(std::string const &text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

TEST(Exports, TheLibraryShowsItsDocumentedClassesAndNothingElse) {
    if (isSanitized()) GTEST_SKIP() << "sanitizers add symbols of their own";
    std::set<std::string> const documented = words(
        "CComboBoxMyEx CDib CDoubleEdit CNumEdit CNumberComboBox CTQOleDateTime "
        "CYesToAllDlg DDV_MyMinMaxDouble DDV_MyMinMaxInt DDX_CBString DDX_Text "
        "GetVersionInfo MinMaxDouble MinMaxInt MyDDVErrorMessage SetCursorToCenter "
        "TQArgv TQCSVInput TQCSVOutput TQConfiguration TQDate TQDateTime TQException "
        "TQExecute TQFilename TQFortranInput TQFortranOutput TQHpCalculator TQLogfile "
        "TQPickList TQRandom TQString TQTextInput TQTime getLibrarySetting operator");
    // Virtual bases and templates that the classes above derive from leave type records.
    std::set<std::string> const left = words(
        "CException TQHpList classic::FileStream classic::fstream classic::ifstream "
        "classic::iostream "
        "classic::istream classic::ofstream classic::ostream");
    std::set<std::string> owners = ownersIn(TQLIB_FILE);
    for (std::string const &name : left)
        owners.erase(name);
    EXPECT_EQ(owners, documented);
}

TEST(Exports, ThePlatformShowsItsPublishedNamesAndNothingElse) {
    if (isSanitized()) GTEST_SKIP() << "sanitizers add symbols of their own";
    std::set<std::string> const published = words(
        "AFX_MODULE_STATE AfxClassInit AfxFindResourceHandle AfxGetModuleState "
        "AfxInitExtensionModule AfxMessageBox AfxTermExtensionModule CArchive CComboBox "
        "CDataExchange CDialog CDynLinkLibrary CEdit CException CFile CFileException "
        "CObject COleDateTime CRuntimeClass CScrollBar CString CUserException CWnd "
        "CloseHandle CreateDIBSection CreateDIBitmap CreateFileA CreateFileMappingA "
        "CreateHalftonePalette CreatePalette CreateProcessA DDX_Text DeleteObject "
        "DestroyWindow EnableWindow EndDialog FileTimeToSystemTime FindResourceA "
        "GetActiveWindow GetCommandLineA GetDIBits GetDlgCtrlID GetDlgItem GetFileSize "
        "GetFileTime GetFileVersionInfoA GetFileVersionInfoSizeA GetFocus "
        "GetModuleFileNameA GetParent GetWindowRect GetWindowTextA GetWindowTextLengthA "
        "GlobalAlloc GlobalFree GlobalLock GlobalUnlock IsCharAlphaA IsDialogMessage "
        "IsWindow IsWindowEnabled IsWindowVisible LoadResource MapViewOfFile MessageBeep "
        "MessageBoxA OpenFile PostMessageA RealizePalette SelectPalette SendMessageA "
        "SetActiveWindow SetCursorPos SetFileSize SetFileTime SetFocus SetStretchBltMode "
        "SetWindowTextA SizeofResource StretchDIBits SystemTimeToFileTime "
        "UnmapViewOfFile VerQueryValueA WaitForSingleObject WinExec _access _filelength "
        "_getcwd _mtlock _mtunlock _stat _unlink classic::endl classic::filebuf "
        "classic::ios classic::iostream classic::istream classic::ostream "
        "classic::streambuf tqplatform::AbsentUser tqplatform::DeviceContext "
        "tqplatform::Dialog tqplatform::DibView tqplatform::FileReplacement "
        "tqplatform::Handle tqplatform::MessageHandler tqplatform::ScriptedUser "
        "tqplatform::StaticControl tqplatform::TerminalUser tqplatform::TextScreen "
        "tqplatform::User tqplatform::Window tqplatform::answersOf "
        "tqplatform::appendUtf8 tqplatform::copyRest tqplatform::createDialog "
        "tqplatform::createWindow tqplatform::defaultAnswer tqplatform::detail "
        "tqplatform::drawDialog tqplatform::encodeRuns tqplatform::findResource "
        "tqplatform::focusControl tqplatform::fromHostPath tqplatform::fromUnicode "
        "tqplatform::fromUtf8 tqplatform::hasDrive tqplatform::installUser "
        "tqplatform::isShiftDown tqplatform::joinCommandLine tqplatform::mnemonicOf "
        "tqplatform::openFile tqplatform::randomState tqplatform::readDialogTemplate "
        "tqplatform::readFile tqplatform::readFileAt tqplatform::readTerminalKey "
        "tqplatform::readUtf8 tqplatform::renameFile tqplatform::replaceFile "
        "tqplatform::runDialog tqplatform::setShiftDown tqplatform::splitCommandLine "
        "tqplatform::systemCalls tqplatform::takePosted tqplatform::toHostPath "
        "tqplatform::toLower1252 tqplatform::toUtf8 tqplatform::user "
        "tqplatform::withoutMnemonic tqplatform::wrapText tqplatform::writeFile");
    EXPECT_EQ(ownersIn(TQPLATFORM_FILE), published);
}

TEST(Exports, LoadingRunsTheEntryAndNoOtherInitialiser) {
    if (isSanitized()) GTEST_SKIP() << "sanitizers add initialisers of their own";
    // One entry is that of the compiler's frame. At load the class of bitmaps is registered, too.
    struct Row {
        char const *section;
        std::size_t entries;
    } const rows[] = {{"INIT_ARRAYSZ", 3}, {"FINI_ARRAYSZ", 2}};
    for (auto const &[section, entries] : rows) {
        std::string const bytes = std::to_string(entries * sizeof(void *));
        std::string const size =
            outputOf(std::string("readelf -dW '") + TQLIB_FILE + "' | grep " + section);
        EXPECT_NE(size.find(" " + bytes + " (bytes)"), std::string::npos) << size;
    }
    std::string const size =
        outputOf(std::string("readelf -dW '") + TQPLATFORM_FILE + "' | grep INIT_ARRAYSZ");
    std::string const one = sizeof(void *) == 8 ? " 8 (bytes)" : " 4 (bytes)";
    EXPECT_NE(size.find(one), std::string::npos) << size;
}

}  // namespace
