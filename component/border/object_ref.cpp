#include "component/border/object_ref.h"

#include "platform/win32/com_object.h"
#include "platform/win32/variant_text.h"

namespace sylvex {

namespace {

/// A value that is no object, such as a tag that is a number.
class HeldValue : public Object {
public:
    explicit HeldValue(const VARIANT& value) : m_value(value) {}
    const Variant& Value() const { return m_value; }
    std::wstring ReportText() const override
    {
        ValueText report;
        RenderVariant(m_value.Get(), report);
        return report.Get();
    }

private:
    Variant m_value;
};

}  // namespace

ObjectRef ReferTo(IUnknown* object)
{
    return object ? std::make_shared<ComObject>(object) : nullptr;
}

ComPtr<IUnknown> ObjectBehind(const ObjectRef& reference)
{
    return ComPtr<IUnknown>(UnknownOf(reference));
}

ObjectRef ReferTo(const VARIANT& value)
{
    if (V_VT(&value) == VT_EMPTY || IsMissing(value)) return nullptr;
    return std::make_shared<HeldValue>(value);
}

Variant ValueBehind(const ObjectRef& reference)
{
    const auto* const held = dynamic_cast<const HeldValue*>(reference.get());
    return held ? held->Value() : Variant();
}

}  // namespace sylvex
