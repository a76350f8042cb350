#include "component/container/stream.h"

namespace sylvex {

void Write(IStream& stream, const void* data, std::size_t bytes)
{
    ULONG written = 0;
    Check(stream.Write(data, static_cast<ULONG>(bytes), &written));
    if (written != bytes) throw ComError{STG_E_MEDIUMFULL};
}

void Read(IStream& stream, void* data, std::size_t bytes)
{
    ULONG read = 0;
    Check(stream.Read(data, static_cast<ULONG>(bytes), &read));
    if (read != bytes) throw ComError{STG_E_READFAULT};
}

ComPtr<IStream> MemoryStream()
{
    ComPtr<IStream> stream;
    Check(CreateStreamOnHGlobal(nullptr, TRUE, stream.Put()));
    return stream;
}

void Rewind(IStream& stream)
{
    Check(stream.Seek({}, STREAM_SEEK_SET, nullptr));
}

std::uint64_t SizeOf(IStream& stream)
{
    STATSTG state{};
    Check(stream.Stat(&state, STATFLAG_NONAME));
    return state.cbSize.QuadPart;
}

std::uint64_t Remaining(IStream& stream)
{
    ULARGE_INTEGER place{};
    Check(stream.Seek({}, STREAM_SEEK_CUR, &place));
    const std::uint64_t size = SizeOf(stream);
    return place.QuadPart < size ? size - place.QuadPart : 0;
}

}  // namespace sylvex
