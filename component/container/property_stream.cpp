#include "component/container/property_stream.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "component/container/property_values.h"
#include "component/container/stream.h"

namespace sylvex {

namespace {

constexpr std::uint32_t kSignature = 0x58564C53;
constexpr std::uint32_t kFormat = 1;

/// Stands before the values; all of it little-endian.
struct Header {
    std::uint32_t signature = kSignature;
    std::uint32_t format = kFormat;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint32_t bytes = 0;
};
static_assert(sizeof(Header) == 20);

std::vector<std::byte> ContentOf(IStream& stream)
{
    std::vector<std::byte> content(static_cast<std::size_t>(SizeOf(stream)));
    Rewind(stream);
    Read(stream, content.data(), content.size());
    return content;
}

// Bit by bit: the length comes from the stream, and may be nonsense.
ComPtr<IStream> Excerpt(IStream& stream, std::size_t bytes)
{
    constexpr std::size_t piece = 65536;
    ComPtr<IStream> excerpt = MemoryStream();
    std::vector<std::byte> buffer(std::min(bytes, piece));
    while (bytes > 0) {
        const std::size_t now = std::min(bytes, piece);
        Read(stream, buffer.data(), now);
        Write(*excerpt, buffer.data(), now);
        bytes -= now;
    }
    Rewind(*excerpt);
    return excerpt;
}

void WriteText(IStream& stream, std::wstring_view text)
{
    Write(stream, static_cast<std::uint32_t>(text.size()));
    Write(stream, text.data(), text.size() * sizeof(wchar_t));
}

Variant ReadText(IStream& stream)
{
    const std::size_t length = Read<std::uint32_t>(stream);
    if (length > Remaining(stream) / sizeof(wchar_t)) throw ComError{STG_E_DOCFILECORRUPT};
    std::wstring text(length, L'\0');
    Read(stream, text.data(), length * sizeof(wchar_t));
    return Variant(std::wstring_view(text));
}

void WriteValue(IStream& stream, const SavedProperty& property, const VARIANT& value)
{
    switch (property.kind) {
        case SavedKind::Number:
            return Write(stream, static_cast<std::int32_t>(NumberIn(value)));
        case SavedKind::Text:
            return WriteText(stream, ViewOf(V_BSTR(&value)));
        default:
            return WriteObject(stream, property.kind, V_UNKNOWN(&value));
    }
}

Variant ReadValue(IStream& stream, const SavedProperty& property)
{
    switch (property.kind) {
        case SavedKind::Number:
            return Variant(static_cast<long>(Read<std::int32_t>(stream)));
        case SavedKind::Text:
            return ReadText(stream);
        default:
            return ReadObject(stream, property.kind);
    }
}

}  // namespace

void WriteControl(IStream& stream, const SavedControl& control)
{
    const ComPtr<IStream> values = MemoryStream();
    for (std::size_t i = 0; i < control.values.size(); ++i) {
        WriteValue(*values, SavedProperties()[i], control.values[i].Get());
    }
    const std::vector<std::byte> content = ContentOf(*values);
    Header header;
    header.width = control.extent.cx;
    header.height = control.extent.cy;
    header.bytes = static_cast<std::uint32_t>(content.size());
    Write(stream, header);
    Write(stream, content.data(), content.size());
}

SavedControl ReadControl(IStream& stream)
{
    const Header header = Read<Header>(stream);
    if (header.signature != kSignature) throw ComError{STG_E_INVALIDHEADER};
    if (header.format != kFormat) throw ComError{STG_E_OLDDLL};
    const ComPtr<IStream> values = Excerpt(stream, header.bytes);
    SavedControl control;
    control.extent = {header.width, header.height};
    for (std::size_t i = 0; i < control.values.size(); ++i) {
        control.values[i] = ReadValue(*values, SavedProperties()[i]);
    }
    return control;
}

}  // namespace sylvex
