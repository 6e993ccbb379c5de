#include "tqplatform/graphics/Dib.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace tqplatform {
namespace {

bool isDepth(unsigned int bitCount) {
    constexpr unsigned int depths[] = {1, 4, 8, 16, 24, 32};
    return std::ranges::find(depths, bitCount) != std::end(depths);
}

/// True if the compression goes with the depth.
bool isForm(std::uint32_t compression, unsigned int bitCount) {
    switch (compression) {
        case BI_RGB:
            return isDepth(bitCount);
        case BI_RLE8:
            return bitCount == 8;
        case BI_RLE4:
            return bitCount == 4;
        default:
            return false;
    }
}

}  // namespace

DibView::DibView(BITMAPINFO const *info, void const *bits)
    : bits_(static_cast<std::uint8_t const *>(bits)), colors_(nullptr) {
    if (info == nullptr || bits == nullptr) return;
    BITMAPINFOHEADER const &header = info->bmiHeader;
    colors_ = info->bmiColors;
    bitCount_ = header.biBitCount;
    colorCount_ = colorsOf(header);
    compressed_ = header.biCompression != BI_RGB;
    topDown_ = header.biHeight < 0;
    stride_ = lineBytes(header.biWidth, bitCount_);
    std::int64_t const lines = lineCount(header);
    bitsSize_ = bitsOf(header);
    std::uint64_t const most = compressed_ ? mostPictureBytes : bitsSize_;
    bool const hasLines = pictureBytes(header) <= most && !(compressed_ && topDown_);
    valid_ = header.biSize == sizeof header && header.biWidth > 0 && lines > 0 &&
             lines <= std::numeric_limits<std::int32_t>::max() && hasLines &&
             isForm(header.biCompression, bitCount_);
    if (!valid_) return;
    width_ = header.biWidth;
    height_ = static_cast<std::int32_t>(lines);
}

}  // namespace tqplatform
