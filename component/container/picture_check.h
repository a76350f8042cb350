#pragma once

#include <cstddef>
#include <span>

namespace sylvex {

/// Whether a picture file (bitmap, icon, cursor, metafile) holds all that its headers promise. Not every system looks
/// before it reads on. True for formats whose decoders count for themselves, and for none at all.
bool IsWholePicture(std::span<const std::byte> file);

}  // namespace sylvex
