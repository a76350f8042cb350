#pragma once

#include <windows.h>

#include "platform/types.h"

namespace sylvex {

/// The screen's pixels per inch, across and down.
Size ScreenResolution();

/// A length in pixels as hundredths of a millimetre, at `resolution` pixels per inch; rounded.
SIZEL HimetricOf(Size pixels, Size resolution);

/// The way back; rounded, so that a size in pixels survives both ways at any resolution up to 2540.
Size PixelsOf(SIZEL himetric, Size resolution);

}  // namespace sylvex
