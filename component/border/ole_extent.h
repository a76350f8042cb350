#pragma once

#include <windows.h>

#include "platform/types.h"

namespace sylvex {

/// The screen's pixels per inch, across and down.
inline Size ScreenResolution()
{
    const HDC screen = GetDC(nullptr);
    const Size resolution{GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
    ReleaseDC(nullptr, screen);
    return resolution;
}

/// A size in hundredths of a millimetre in pixels, at `resolution` pixels per inch; rounded.
inline Size PixelsOf(SIZEL himetric, Size resolution)
{
    constexpr int himetricPerInch = 2540;
    return {MulDiv(himetric.cx, resolution.cx, himetricPerInch), MulDiv(himetric.cy, resolution.cy, himetricPerInch)};
}

}  // namespace sylvex
