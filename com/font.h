#pragma once

#include <cstdlib>

#include "com/pointer.h"

#include <olectl.h>

namespace sylvex {

/// A new font object of this description; empty when the platform makes none.
inline ComPtr<IFontDisp> MakeFont(const LOGFONTW& description)
{
    constexpr int pointsPerInch = 72;
    // Currency counts ten-thousandths.
    constexpr int currencyUnit = 10000;
    const HDC screen = GetDC(nullptr);
    const int pixelsPerInch = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    FONTDESC wanted{};
    wanted.cbSizeofstruct = sizeof wanted;
    // The platform does not write to the name.
    wanted.lpstrName = const_cast<LPOLESTR>(description.lfFaceName);
    wanted.cySize.int64 = MulDiv(std::abs(description.lfHeight), pointsPerInch * currencyUnit, pixelsPerInch);
    wanted.sWeight = static_cast<SHORT>(description.lfWeight);
    wanted.sCharset = description.lfCharSet;
    wanted.fItalic = description.lfItalic;
    wanted.fUnderline = description.lfUnderline;
    wanted.fStrikethrough = description.lfStrikeOut;
    ComPtr<IFontDisp> made;
    OleCreateFontIndirect(&wanted, IID_IFontDisp, made.PutAny());
    return made;
}

}  // namespace sylvex
