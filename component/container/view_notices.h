#pragma once

#include "component/border/border.h"

#include <ocidl.h>

namespace sylvex {

/// The one sink that a container may set to hear that the control's picture has changed.
class ViewNotices {
public:
    /// IViewObject::SetAdvise; null ends it. May call the sink at once.
    void Set(DWORD aspects, DWORD flags, IAdviseSink* sink);
    /// IViewObject::GetAdvise; each may be null.
    void Get(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const;
    void Changed();

private:
    ComPtr<IAdviseSink> m_sink;
    DWORD m_aspects = 0;
    DWORD m_flags = 0;
};

}  // namespace sylvex
