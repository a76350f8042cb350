#include "component/border/values.h"

#include "platform/runtime_error.h"

namespace sylvex {

std::wstring TextOf(const VARIANT& value)
{
    if (IsMissing(value)) return {};
    Variant text(value);
    if (text.IsObject()) ThrowTypeMismatch();
    if (FAILED(text.ChangeType(VT_BSTR))) ThrowTypeMismatch();
    return std::wstring(text.Text());
}

long IndexOf(const VARIANT& value)
{
    Variant number(value);
    if (number.IsObject()) ThrowTypeMismatch();
    const HRESULT changed = number.ChangeType(VT_I4);
    if (changed == DISP_E_OVERFLOW) throw IndexOutOfBounds();
    if (FAILED(changed)) ThrowTypeMismatch();
    return V_I4(&number.Get());
}

}  // namespace sylvex
