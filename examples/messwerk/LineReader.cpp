#include "LineReader.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "Paths.h"
#include "Words.h"

namespace messwerk {

LineReader::LineReader(std::string const &path, char separator)
    : path_(path), file_(libraryPath(path).c_str(), 0, 1, 0, separator) {
    if (!file_.fail()) return;
    int const reason = errno;
    struct stat status {};
    bool const isFolder = stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    throw systemError("can't read " + quoted(path), isFolder ? EISDIR : reason);
}

LineReader::Piece LineReader::takePiece() {
    std::int64_t const before = file_.tellg();
    file_.nextline();
    // To the reader a file that can't be read any further ends here, as any file does.
    if (file_.rdbuf()->readFailed()) throw readError(errno);
    return {file_.tellg() - before, file_.gcount(),
            static_cast<std::int64_t>(std::strlen(file_.currentLine()))};
}

// A whole line takes its line end from the file as well, unless it is the last one.
bool LineReader::isCut(Piece const &piece) {
    if (piece.taken != piece.content) return false;
    file_.clear();
    return file_.peek() >= 0;
}

LineKind LineReader::next() {
    Piece piece = takePiece();
    if (piece.taken == 0) {
        if (endsEarly()) throw readError(0);
        return LineKind::End;
    }
    ++number_;
    if (piece.content == 0) return LineKind::Blank;
    if (isCut(piece)) {
        do
            piece = takePiece();
        while (isCut(piece));
        return LineKind::TooLong;
    }
    return piece.visible < piece.content ? LineKind::HasNul : LineKind::Fields;
}

bool LineReader::endsEarly() {
    return isOrdinaryFile(path_) && position() < static_cast<std::int64_t>(fileLength());
}

RunError LineReader::readError(int reason) const {
    std::string const place = number_ == 0 ? "" : " beyond line " + std::to_string(number_);
    return systemError("can't read " + quoted(path_) + place, reason);
}

}  // namespace messwerk
