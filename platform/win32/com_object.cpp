#include "platform/win32/com_object.h"

#include <string>

#include "platform/win32/variant_text.h"

namespace sylvex {

std::wstring ComObject::ReportText() const
{
    ValueText report;
    RenderObject(m_object.Get(), report);
    return report.Get();
}

IUnknown* UnknownOf(const ObjectRef& object) noexcept
{
    const auto* const known = dynamic_cast<const ComObject*>(object.get());
    return known ? known->Get() : nullptr;
}

}  // namespace sylvex
