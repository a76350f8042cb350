#pragma once

#include <windows.h>

#include "com/pointer.h"
#include "platform/types.h"

namespace sylvex {

/// An automation object on its way through the control; shares the object with its other owners.
class ComObject : public Object {
public:
    /// `object` must not be null.
    explicit ComObject(IUnknown* object) noexcept : m_object(object) {}
    IUnknown* Get() const noexcept { return m_object.Get(); }
    std::wstring ReportText() const override;

private:
    ComPtr<IUnknown> m_object;
};

/// The interface behind a reference of the seam; null for an empty reference or an object of another kind.
IUnknown* UnknownOf(const ObjectRef& object) noexcept;

}  // namespace sylvex
