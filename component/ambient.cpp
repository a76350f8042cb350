#include "component/ambient.h"

#include <olectl.h>

namespace sylvex {

bool IsUserInterfaceDead(const ControlCore& core)
{
    Variant answer = core.Ambient(DISPID_AMBIENT_UIDEAD);
    return SUCCEEDED(VariantChangeType(&answer.Get(), &answer.Get(), 0, VT_BOOL)) &&
           V_BOOL(&answer.Get()) != VARIANT_FALSE;
}

ComPtr<IFontDisp> CopyOfAmbientFont(const ControlCore& core)
{
    const ComPtr<IFontDisp> font = core.AmbientFont();
    const ComPtr<IFontDisp> copy = CopyOf(font.As<IFont>()).As<IFontDisp>();
    return copy ? copy : font;
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
