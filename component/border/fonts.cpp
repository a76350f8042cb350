#include "component/border/fonts.h"

#include <olectl.h>

namespace sylvex {

namespace {

constexpr int kPointsPerInch = 72;
// Currency counts ten-thousandths.
constexpr int kCurrencyUnit = 10000;

CY SizeInPoints(const LOGFONTW& description)
{
    const HDC screen = GetDC(nullptr);
    const int perInch = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    CY size{};
    size.int64 = MulDiv(std::abs(description.lfHeight), kPointsPerInch * kCurrencyUnit, perInch);
    return size;
}

}  // namespace

ComPtr<IFontDisp> FontLike(HFONT font)
{
    LOGFONTW description{};
    if (!font) font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    if (GetObjectW(font, sizeof description, &description) == 0) return nullptr;
    FONTDESC wanted{};
    wanted.cbSizeofstruct = sizeof wanted;
    wanted.lpstrName = description.lfFaceName;
    wanted.cySize = SizeInPoints(description);
    wanted.sWeight = static_cast<SHORT>(description.lfWeight);
    wanted.sCharset = description.lfCharSet;
    wanted.fItalic = description.lfItalic;
    wanted.fUnderline = description.lfUnderline;
    wanted.fStrikethrough = description.lfStrikeOut;
    ComPtr<IFontDisp> made;
    OleCreateFontIndirect(&wanted, IID_IFontDisp, made.PutAny());
    return made;
}

ComPtr<IFontDisp> Limited(const ComPtr<IFontDisp>& font)
{
    const ComPtr<IFont> described = font.As<IFont>();
    CY size{};
    if (!described || FAILED(described->get_Size(&size)) || std::abs(size.int64) <= kLargestSavedSize) return font;
    const ComPtr<IFont> copy = CopyOf(described);
    size.int64 = kLargestSavedSize;
    if (!copy || FAILED(copy->put_Size(size))) return {};
    return copy.As<IFontDisp>();
}

ComPtr<IFont> CopyOf(const ComPtr<IFont>& font)
{
    ComPtr<IFont> copy;
    if (font) font->Clone(copy.Put());
    return copy;
}

bool LookAlike(const ComPtr<IFont>& left, const ComPtr<IFont>& right)
{
    if (!left || !right) return false;
    // A font object takes the size and the name that it gets from the system when it is first used.
    HFONT used = nullptr;
    left->get_hFont(&used);
    right->get_hFont(&used);
    return left->IsEqual(right.Get()) == S_OK;
}

}  // namespace sylvex
