#pragma once

#include <cstdint>

#include "component/border/border.h"

#include <ocidl.h>

namespace sylvex {

/// A new font object that looks like a font of the graphics device; null: like the system's own for dialogs. Empty when
/// the platform makes none.
ComPtr<IFontDisp> FontLike(HFONT font);

/// A copy of a font object; empty for null and for a font of a kind that cannot be copied.
ComPtr<IFont> CopyOf(const ComPtr<IFont>& font);

/// Whether two fonts look the same; false when either is empty.
bool LookAlike(const ComPtr<IFont>& left, const ComPtr<IFont>& right);

/// The largest size that is loaded from a saved state, in ten-thousandths of a point: a damaged one may hold any, and
/// all that is painted takes the longer.
constexpr std::uint32_t kLargestSavedSize = 1638u * 10000u;

/// The font, or where it is larger than kLargestSavedSize, a copy of that size.
ComPtr<IFontDisp> Limited(const ComPtr<IFontDisp>& font);

}  // namespace sylvex
