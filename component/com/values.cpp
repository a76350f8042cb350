#include "component/com/values.h"

#include "platform/runtime_error.h"

namespace sylvex {

std::wstring TextOf(const VARIANT& value)
{
    if (IsMissing(value)) return {};
    Variant text(value);
    if (text.Type() == VT_DISPATCH || text.Type() == VT_UNKNOWN) ThrowTypeMismatch();
    if (FAILED(VariantChangeType(&text.Get(), &text.Get(), 0, VT_BSTR))) ThrowTypeMismatch();
    return std::wstring(ViewOf(V_BSTR(&text.Get())));
}

long IndexOf(const VARIANT& value)
{
    Variant number(value);
    if (number.Type() == VT_DISPATCH || number.Type() == VT_UNKNOWN) ThrowTypeMismatch();
    const HRESULT changed = VariantChangeType(&number.Get(), &number.Get(), 0, VT_I4);
    if (changed == DISP_E_OVERFLOW) throw IndexOutOfBounds();
    if (FAILED(changed)) ThrowTypeMismatch();
    return V_I4(&number.Get());
}

}  // namespace sylvex
