#include "guide/Guide.h"

namespace {

int failures = 0;

}  // namespace

void expectShown(std::string text, std::string const &comment, int line) {
    if (comment.front() == '"') text = '"' + text + '"';
    bool const begins = comment.compare(0, text.size(), text) == 0;
    bool const ends = comment.size() == text.size() ||
                      std::string(" ,;:").find(comment[text.size()]) != std::string::npos;
    if (begins && ends) return;
    std::cerr << "line " << line << ": " << text << ", not " << comment << '\n';
    ++failures;
}

// In an empty folder of its own, the argument.
int main(int argc, char **argv) {
    std::filesystem::remove_all(argv[1]);
    std::filesystem::create_directories(argv[1]);
    std::filesystem::current_path(argv[1]);
    runPage(argc, argv);
    return failures == 0 ? 0 : 1;
}
