#include "tqplatform/framework/CString.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "tqplatform/framework/ModuleState.h"
#include "tqplatform/runtime/CodePage1252.h"

namespace {

constexpr std::size_t maxLength = INT_MAX - 1;  // a length and its NUL fit an int
constexpr std::size_t shortText = 512;
constexpr std::string_view whiteSpace = " \t\n\v\f\r";

void copyText(char *target, std::string_view text) {
    tqplatform::copyText(target, text.data(), text.size());
}

}  // namespace

CString::CString(char c, int count) : CString() {
    std::size_t const length = notNegative(count);
    reserve(length);
    std::memset(text_, c, length);
    setLength(length);
}

void CString::release() {
    std::free(text_);
}

// Makes room for `capacity` characters, more than there is, keeping the text.
void CString::enlarge(std::size_t capacity) {
    if (capacity > maxLength) throw std::bad_alloc();
    bool const small = text_ == small_;
    auto *const block = static_cast<char *>(std::realloc(small ? nullptr : text_, capacity + 1));
    if (block == nullptr) throw std::bad_alloc();
    if (small) std::memcpy(block, small_, length_ + 1);
    text_ = block;
    capacity_ = capacity;
}

// Makes room for `more` characters behind the text and for some that may follow, so that appending
// piece by piece takes time in proportion to the text. Short texts grow faster: they are the ones
// that are most often built character by character.
void CString::grow(std::size_t more) {
    std::size_t const needed = length_ + more;
    if (needed <= capacity_) return;
    if (needed > maxLength) throw std::bad_alloc();
    std::size_t const larger = (capacity_ < shortText ? 4 : 2) * capacity_ + 1;
    reserve(std::max(needed, std::min(larger, maxLength)));
}

// Moves the text of `other` here; `other` becomes empty.
void CString::take(CString &other) noexcept {
    if (other.text_ == other.small_) {  // fits every capacity
        std::memcpy(text_, other.small_, sizeof small_);
        length_ = other.length_;
    } else {
        if (text_ != small_) release();
        text_ = std::exchange(other.text_, other.small_);
        length_ = other.length_;
        capacity_ = std::exchange(other.capacity_, smallCapacity);
    }
    other.setLength(0);
}

void CString::append(std::string_view text) {
    std::size_t const length = length_;
    if (text.size() > capacity_ - length) {
        bool const own = text.data() >= text_ && text.data() <= text_ + length;
        auto const offset = text.data() - text_;
        grow(text.size());
        if (own) text = {text_ + offset, text.size()};
    }
    copyText(text_ + length, text);
    setLength(length + text.size());
}

CString CString::concatenate(std::string_view left, std::string_view right) {
    // A result too long for the object itself gets some room, since more is often added to it.
    CString result;
    std::size_t const length = left.size() + right.size();
    if (length > smallCapacity) result.reserve(std::max(length, std::min(2 * length, maxLength)));
    copyText(result.text_, left);
    copyText(result.text_ + left.size(), right);
    result.setLength(length);
    return result;
}

void CString::Empty() {
    if (text_ != small_) release();
    text_ = small_;
    capacity_ = smallCapacity;
    setLength(0);
}

char *CString::GetBufferSetLength(int length) {
    reserve(notNegative(length));
    setLength(notNegative(length));
    return text_;
}

CString CString::Left(int count) const {
    return Mid(0, count);
}

CString CString::Right(int count) const {
    return Mid(GetLength() - std::clamp(count, 0, GetLength()), GetLength());
}

CString CString::Mid(int first, int count) const {
    CString part;
    std::size_t const start = std::min(notNegative(first), length_);
    part.assign(text().substr(start, notNegative(count)));
    return part;
}

int CString::Find(char const *text) const {
    std::size_t const found = CString::text().find(viewOf(text));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

int CString::FindOneOf(char const *set) const {
    std::size_t const found = text().find_first_of(viewOf(set));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

int CString::ReverseFind(char c) const {
    std::size_t const found = text().rfind(c);
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

void CString::TrimLeft() {
    std::size_t const first = text().find_first_not_of(whiteSpace);
    if (first != 0)
        assign(first == std::string_view::npos ? std::string_view() : text().substr(first));
}

void CString::TrimRight() {
    setLength(text().find_last_not_of(whiteSpace) + 1);
}

void CString::MakeLower() {
    std::transform(text_, text_ + length_, text_, tqplatform::toLower1252);
}

void CString::Format(char const *format, ...) {
    // The arguments may point into this text, so the result is made beside it.
    char buffer[512];
    CString longer;
    char const *result = buffer;
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    int const length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    if (length >= static_cast<int>(sizeof buffer)) {
        char *const room = longer.GetBuffer(length);
        std::vsnprintf(room, static_cast<std::size_t>(length) + 1, format, again);
        result = room;
    }
    va_end(again);
    va_end(arguments);
    assign(length < 0 ? std::string_view() : std::string_view(result, notNegative(length)));
}

int CString::LoadStringA(unsigned int id) {
    auto const *resource = AfxGetModuleState()->findResource(tqplatform::ResourceKind::string, id);
    if (resource == nullptr) {
        Empty();
        return 0;
    }
    assign({static_cast<char const *>(resource->data), resource->size});
    return 1;
}
