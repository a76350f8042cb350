#include "component/container/property_values.h"

#include <limits>

#include "component/border/fonts.h"

namespace sylvex {

namespace {

Variant Converted(const VARIANT& value, VARTYPE type)
{
    Variant converted;
    Check(converted.SetTo(value, type));
    return converted;
}

bool IsObject(const VARIANT& value)
{
    return V_VT(&value) == VT_UNKNOWN || V_VT(&value) == VT_DISPATCH;
}

bool SameObject(IUnknown* left, IUnknown* right)
{
    return left == right || LookAlike(ComPtr<IUnknown>(left).As<IFont>(), ComPtr<IUnknown>(right).As<IFont>());
}

}  // namespace

Variant ShortValue(long number)
{
    if (number < std::numeric_limits<short>::min() || number > std::numeric_limits<short>::max()) {
        return Variant(number);
    }
    Variant value;
    V_VT(&value.Get()) = VT_I2;
    V_I2(&value.Get()) = static_cast<short>(number);
    return value;
}

Variant ObjectValue(IUnknown* object)
{
    Variant value;
    V_VT(&value.Get()) = VT_UNKNOWN;
    V_UNKNOWN(&value.Get()) = object;
    if (object) object->AddRef();
    return value;
}

long NumberIn(const VARIANT& value)
{
    Variant number;
    if (SUCCEEDED(number.SetTo(value, VT_I4))) return V_I4(&number.Get());
    // Colours of the system are beyond what a signed number holds.
    return static_cast<long>(V_UI4(&Converted(value, VT_UI4).Get()));
}

bool FlagIn(const VARIANT& value)
{
    return V_BOOL(&Converted(value, VT_BOOL).Get()) != VARIANT_FALSE;
}

std::wstring TextIn(const VARIANT& value)
{
    return std::wstring(Converted(value, VT_BSTR).Text());
}

bool SameValue(const VARIANT& left, const VARIANT& right)
{
    if (IsObject(left) || IsObject(right)) {
        return IsObject(left) && IsObject(right) && SameObject(V_UNKNOWN(&left), V_UNKNOWN(&right));
    }
    if (V_VT(&left) == VT_BSTR) return TextIn(left) == TextIn(right);
    return NumberIn(left) == NumberIn(right);
}

}  // namespace sylvex
