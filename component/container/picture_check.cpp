#include "component/container/picture_check.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace sylvex {

namespace {

using File = std::span<const std::byte>;

constexpr WORD kBitmap = 0x4D42;
constexpr DWORD kPlaceable = 0x9AC6CDD7;

/// The value at a place of the file; zeros where it ends before.
template <class Value>
Value At(File file, std::size_t place)
{
    Value value{};
    if (place <= file.size() && sizeof value <= file.size() - place) {
        std::memcpy(&value, file.data() + place, sizeof value);
    }
    return value;
}

/// A bitmap's header; the oldest form has shorter numbers.
BITMAPINFOHEADER HeaderOf(File file, std::size_t place)
{
    const auto header = At<BITMAPINFOHEADER>(file, place);
    const auto core = At<BITMAPCOREHEADER>(file, place);
    if (core.bcSize != sizeof core) return header;
    return {core.bcSize, core.bcWidth, core.bcHeight, 1, core.bcBitCount, BI_RGB, 0, 0, 0, 0, 0};
}

bool IsWholeBitmap(File file)
{
    constexpr std::size_t info = sizeof(BITMAPFILEHEADER);
    const BITMAPINFOHEADER header = HeaderOf(file, info);
    const std::size_t color = header.biSize == sizeof(BITMAPCOREHEADER) ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD);
    const std::uint64_t bits = header.biBitCount;
    const std::uint64_t shades = bits > 8 ? 0 : std::uint64_t{1} << bits;
    const std::uint64_t colors = header.biClrUsed != 0 && header.biClrUsed < shades ? header.biClrUsed : shades;
    const std::uint64_t across = static_cast<std::uint64_t>(std::llabs(header.biWidth));
    const std::uint64_t down = static_cast<std::uint64_t>(std::llabs(header.biHeight));
    const bool plain = header.biCompression == BI_RGB || header.biCompression == BI_BITFIELDS;
    const std::uint64_t row = (across * bits + 31) / 32 * 4;
    if (plain && down != 0 && row > file.size() / down) return false;
    const std::uint64_t content = plain ? row * down : header.biSizeImage;
    return info + std::uint64_t{header.biSize} + colors * color <= file.size() &&
           At<BITMAPFILEHEADER>(file, 0).bfOffBits + content <= file.size();
}

/// Icons and cursors: a count, and for each a line of 16 bytes that ends in its length and place.
bool IsWholeIcon(File file)
{
    constexpr std::size_t first = 6;
    constexpr std::size_t line = 16;
    const std::size_t count = At<WORD>(file, 4);
    if (file.size() < first + count * line) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t length = At<DWORD>(file, first + i * line + 8);
        if (length + At<DWORD>(file, first + i * line + 12) > file.size()) return false;
    }
    return true;
}

}  // namespace

bool IsWholePicture(File file)
{
    const auto icon = At<std::uint32_t>(file, 0);
    if (At<WORD>(file, 0) == kBitmap) return IsWholeBitmap(file);
    if (icon == kPlaceable) {
        constexpr std::size_t before = 22;
        return before + std::uint64_t{At<DWORD>(file, before + offsetof(METAHEADER, mtSize))} * 2 <= file.size();
    }
    const auto metafile = At<ENHMETAHEADER>(file, 0);
    if (metafile.dSignature == ENHMETA_SIGNATURE) return metafile.nBytes <= file.size();
    return (icon != 0x00010000 && icon != 0x00020000) || IsWholeIcon(file);
}

}  // namespace sylvex
