#include "component/container/ambient.h"

#include <olectl.h>

#include "component/border/fonts.h"

namespace sylvex {

bool IsUserInterfaceDead(const ControlCore& core)
{
    Variant answer = core.Ambient(DISPID_AMBIENT_UIDEAD);
    return SUCCEEDED(answer.ChangeType(VT_BOOL)) && V_BOOL(&answer.Get()) != VARIANT_FALSE;
}

ComPtr<IFontDisp> CopyOfAmbientFont(const ControlCore& core)
{
    const ComPtr<IFontDisp> font = core.AmbientFont();
    const ComPtr<IFontDisp> copy = CopyOf(font.As<IFont>()).As<IFontDisp>();
    return copy ? copy : font;
}

}  // namespace sylvex
