#include "component/container/surface.h"

namespace sylvex {

namespace {

/// Draws the picture with its upper left corner at a point of the device, both in pixels of the device.
void Draw(IPicture& picture, HDC device, POINT corner)
{
    constexpr int kHimetricPerInch = 2540;
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    if (FAILED(picture.get_Width(&width)) || FAILED(picture.get_Height(&height))) return;
    const int across = MulDiv(width, GetDeviceCaps(device, LOGPIXELSX), kHimetricPerInch);
    const int down = MulDiv(height, GetDeviceCaps(device, LOGPIXELSY), kHimetricPerInch);
    // A picture's own vertical axis points up.
    picture.Render(device, corner.x, corner.y, across, down, 0, height, width, -height, nullptr);
}

}  // namespace

void Surface::Paint(HDC device, const RECT& place) const
{
    COLORREF color = 0;
    if (FAILED(OleTranslateColor(backColor, nullptr, &color))) color = GetSysColor(COLOR_BTNFACE);
    // The device's own brush, so that there is none to make and delete.
    const COLORREF before = SetDCBrushColor(device, color);
    FillRect(device, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetDCBrushColor(device, before);
    if (const ComPtr<IPicture> drawn = picture.As<IPicture>()) Draw(*drawn, device, {place.left, place.top});
}

}  // namespace sylvex
