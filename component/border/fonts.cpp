#include "component/border/fonts.h"

#include "com/font.h"

namespace sylvex {

ComPtr<IFontDisp> FontLike(HFONT font)
{
    LOGFONTW description{};
    if (!font) font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    if (GetObjectW(font, sizeof description, &description) == 0) return nullptr;
    return MakeFont(description);
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
