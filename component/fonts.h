#pragma once

#include "component/com.h"

#include <ocidl.h>

namespace sylvex {

/// A new font object that looks like a font of the graphics device; null: like the system's own for dialogs. Empty when
/// the platform makes none.
ComPtr<IFontDisp> FontLike(HFONT font);

}  // namespace sylvex
