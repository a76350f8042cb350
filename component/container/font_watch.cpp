#include "component/container/font_watch.h"

#include "com/object.h"

namespace sylvex {

class FontWatch::Sink final : public CountedObject<IPropertyNotifySink> {
public:
    explicit Sink(std::function<void()> changed) : m_changed(std::move(changed)) {}
    void Forget() { m_changed = nullptr; }

    STDMETHODIMP OnChanged(DISPID) override
    {
        if (m_changed) m_changed();
        return S_OK;
    }
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

private:
    std::function<void()> m_changed;
};

FontWatch::FontWatch(std::function<void()> changed) : m_sink(Make<Sink>(std::move(changed))) {}

FontWatch::~FontWatch()
{
    m_sink->Forget();
    Stop();
}

void FontWatch::Watch(IUnknown* font)
{
    Stop();
    const auto points = ComPtr<IUnknown>(font).As<IConnectionPointContainer>();
    if (!points || FAILED(points->FindConnectionPoint(IID_IPropertyNotifySink, m_point.Put()))) return;
    if (FAILED(m_point->Advise(m_sink.Get(), &m_cookie))) m_point.Reset();
}

void FontWatch::Stop()
{
    if (m_point) m_point->Unadvise(m_cookie);
    m_point.Reset();
}

}  // namespace sylvex
