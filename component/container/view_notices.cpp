#include "component/container/view_notices.h"

namespace sylvex {

void ViewNotices::Set(DWORD aspects, DWORD flags, IAdviseSink* sink)
{
    m_sink = ComPtr<IAdviseSink>(sink);
    m_aspects = aspects;
    m_flags = flags;
    if (flags & ADVF_PRIMEFIRST) Changed();
}

void ViewNotices::Get(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const
{
    if (aspects) *aspects = m_aspects;
    if (flags) *flags = m_flags;
    if (sink) m_sink.CopyTo(sink);
}

void ViewNotices::Changed()
{
    if (!m_sink || !(m_aspects & DVASPECT_CONTENT)) return;
    // The sink may take itself away in the call.
    const ComPtr<IAdviseSink> sink = m_sink;
    if (m_flags & ADVF_ONLYONCE) m_sink.Reset();
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

}  // namespace sylvex
