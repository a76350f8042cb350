#include "component/ole_extent.h"

namespace sylvex {

namespace {

constexpr int kHimetricPerInch = 2540;

}  // namespace

Size ScreenResolution()
{
    const HDC screen = GetDC(nullptr);
    const Size resolution{GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
    ReleaseDC(nullptr, screen);
    return resolution;
}

SIZEL HimetricOf(Size pixels, Size resolution)
{
    return {MulDiv(pixels.cx, kHimetricPerInch, resolution.cx), MulDiv(pixels.cy, kHimetricPerInch, resolution.cy)};
}

Size PixelsOf(SIZEL himetric, Size resolution)
{
    return {MulDiv(himetric.cx, resolution.cx, kHimetricPerInch), MulDiv(himetric.cy, resolution.cy, kHimetricPerInch)};
}

}  // namespace sylvex
