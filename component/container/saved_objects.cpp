#include "component/container/saved_objects.h"

#include <olectl.h>

#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

#include "component/container/picture_check.h"
#include "component/container/property_values.h"
#include "component/container/stream.h"
#include "platform/runtime_error.h"

namespace sylvex {

namespace {

// Some SDK headers declare these without defining them.
constexpr CLSID kFontClass = {0x0BE35203, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};
constexpr CLSID kPictureClass = {0x0BE35204, 0x8F91, 0x11CE, {0x9D, 0xE3, 0x00, 0xAA, 0x00, 0x4B, 0xB8, 0x51}};

constexpr std::size_t kPictureHeader = 8;

using Bytes = std::vector<std::byte>;

const CLSID& ClassOf(SavedKind kind)
{
    return kind == SavedKind::Font ? kFontClass : kPictureClass;
}

[[noreturn]] void ThrowCorrupt()
{
    throw ComError{STG_E_DOCFILECORRUPT};
}

/// The next bytes of the stream; looks first whether it still holds them, since the number may be nonsense.
void Append(Bytes& bytes, IStream& stream, std::uint64_t count)
{
    if (count > Remaining(stream)) ThrowCorrupt();
    const std::size_t before = bytes.size();
    bytes.resize(before + static_cast<std::size_t>(count));
    Read(stream, bytes.data() + before, static_cast<std::size_t>(count));
}

/// Version 1, character set, style, weight, height, and the length of the name behind these.
Bytes ReadFontBytes(IStream& stream)
{
    constexpr std::size_t header = 11;
    Bytes bytes;
    Append(bytes, stream, header);
    if (bytes.front() != std::byte{1}) ThrowCorrupt();
    Append(bytes, stream, std::to_integer<std::uint64_t>(bytes.back()));
    return bytes;
}

/// A fixed number, and the length of the picture behind it.
Bytes ReadPictureBytes(IStream& stream)
{
    constexpr std::uint32_t preamble = 0x0000746C;
    std::uint32_t header[2] = {};
    static_assert(sizeof header == kPictureHeader);
    Bytes bytes;
    Append(bytes, stream, sizeof header);
    std::memcpy(header, bytes.data(), sizeof header);
    if (header[0] != preamble) ThrowCorrupt();
    Append(bytes, stream, header[1]);
    return bytes;
}

/// False when the object refuses the content, or meets a fault in it.
bool Load(IUnknown* object, const Bytes& bytes)
{
    const ComPtr<IStream> stream = MemoryStream();
    Write(*stream, bytes.data(), bytes.size());
    Rewind(*stream);
    const ComPtr<IPersistStream> persistent = ComPtr<IUnknown>(object).As<IPersistStream>();
    try {
        return persistent && SUCCEEDED(Guarded([&] { return persistent->Load(stream.Get()); }));
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace

ComPtr<IUnknown> NewSystemObject(SavedKind kind)
{
    ComPtr<IUnknown> object;
    const HRESULT made = kind == SavedKind::Font
                             ? OleCreateFontIndirect(nullptr, IID_IUnknown, object.PutAny())
                             : OleCreatePictureIndirect(nullptr, IID_IUnknown, TRUE, object.PutAny());
    Check(made);
    return object;
}

bool IsSystemObject(SavedKind kind, IUnknown* object)
{
    const ComPtr<IPersistStream> persistent = ComPtr<IUnknown>(object).As<IPersistStream>();
    CLSID id{};
    return persistent && SUCCEEDED(persistent->GetClassID(&id)) && id == ClassOf(kind);
}

void WriteObject(IStream& stream, SavedKind kind, IUnknown* object)
{
    const bool written = IsSystemObject(kind, object);
    Write(stream, static_cast<std::uint8_t>(written ? 1 : 0));
    if (!written) return;
    Check(OleSaveToStream(ComPtr<IUnknown>(object).As<IPersistStream>().Get(), &stream));
}

Variant ReadObject(IStream& stream, SavedKind kind)
{
    if (Read<std::uint8_t>(stream) == 0) return ObjectValue(nullptr);
    const auto id = Read<CLSID>(stream);
    const Bytes bytes = kind == SavedKind::Font ? ReadFontBytes(stream) : ReadPictureBytes(stream);
    const bool whole = kind == SavedKind::Font || IsWholePicture(std::span(bytes).subspan(kPictureHeader));
    if (id != ClassOf(kind) || !whole) return {};
    const ComPtr<IUnknown> object = NewSystemObject(kind);
    return Load(object.Get(), bytes) ? ObjectValue(object.Get()) : Variant();
}

}  // namespace sylvex
