#pragma once

#include <functional>

#include "component/border/border.h"

#include <ocidl.h>

namespace sylvex {

/// Follows the changes that somebody makes to a font object.
class FontWatch {
public:
    /// `changed` must not throw.
    explicit FontWatch(std::function<void()> changed);
    ~FontWatch();
    FontWatch(const FontWatch&) = delete;
    FontWatch& operator=(const FontWatch&) = delete;

    /// Follows this font instead of the one before. Null: none. A font that tells of no changes is not followed.
    void Watch(IUnknown* font);

private:
    class Sink;
    void Stop();

    ComPtr<Sink> m_sink;
    ComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

}  // namespace sylvex
