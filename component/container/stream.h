#pragma once

#include <cstddef>
#include <cstdint>

#include "component/border/border.h"

namespace sylvex {

/// Writes all bytes behind the stream's present position; throws ComError.
void Write(IStream& stream, const void* data, std::size_t bytes);

/// Reads exactly so many bytes; throws ComError, STG_E_READFAULT where the stream ends before.
void Read(IStream& stream, void* data, std::size_t bytes);

/// A plain value, in the machine's own (little-endian) form.
template <class Value>
void Write(IStream& stream, const Value& value)
{
    Write(stream, &value, sizeof value);
}

template <class Value>
Value Read(IStream& stream)
{
    Value value{};
    Read(stream, &value, sizeof value);
    return value;
}

/// An empty stream in memory; throws ComError.
ComPtr<IStream> MemoryStream();

/// Back to the stream's first byte; throws ComError.
void Rewind(IStream& stream);

/// The bytes in the whole stream, and those behind its present position; throw ComError. Of streams in memory only:
/// others need not know.
std::uint64_t SizeOf(IStream& stream);
std::uint64_t Remaining(IStream& stream);

}  // namespace sylvex
