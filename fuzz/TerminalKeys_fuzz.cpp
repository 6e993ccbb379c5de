// Bytes of a terminal. They give the same keys all at once and one by one, every byte belongs to
// one key, and no key is none.

#include "tqplatform/desktop/TerminalKeys.h"

#include <cstdint>
#include <string>

#include "support/Check.h"

namespace {

using tqplatform::Input;
using tqplatform::TerminalKey;

void append(std::string &keys, TerminalKey const &key) {
    if (!key.input) return;
    Input const &input = *key.input;
    bool const isKey = input.kind == Input::Kind::key;
    if (isKey == (input.key == 0) || isKey != (input.character == '\0'))
        disagree("a key without meaning", shown(input.key), shown(int{input.character}));
    keys +=
        (input.alt ? "A" : "") + std::string(input.shift ? "S" : "") +
        std::to_string(isKey ? input.key : 1000U + static_cast<unsigned char>(input.character)) +
        ' ';
}

// Takes keys from the front until more bytes are needed, or all are taken.
void takeKeys(std::string &bytes, bool isUtf8, bool isAll, std::string &keys) {
    while (!bytes.empty()) {
        TerminalKey const key = tqplatform::readTerminalKey(bytes, isUtf8, isAll);
        if (key.bytes > bytes.size()) disagree("bytes", shown(key.bytes), shown(bytes.size()));
        if (key.bytes == 0 && isAll) disagree("at the end", "nothing", shown(bytes));
        if (key.bytes == 0) return;
        bytes.erase(0, key.bytes);
        append(keys, key);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    for (bool const isUtf8 : {true, false}) {
        std::string all(reinterpret_cast<char const *>(data), size), slowly, atOnce, oneByOne;
        for (char const c : all) {
            slowly += c;
            takeKeys(slowly, isUtf8, false, oneByOne);
        }
        takeKeys(slowly, isUtf8, true, oneByOne);
        takeKeys(all, isUtf8, false, atOnce);
        takeKeys(all, isUtf8, true, atOnce);
        expectSame("keys", oneByOne, atOnce);
    }
    return 0;
}
