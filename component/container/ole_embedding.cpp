#include "component/container/ole_embedding.h"

#include <commctrl.h>
#include <olectl.h>

#include "component/border/fonts.h"
#include "component/border/ole_extent.h"
#include "component/container/ambient.h"
#include "platform/win32/readable.h"

namespace sylvex {

namespace {

// About 190 by 240 pixels on an ordinary screen.
constexpr SIZEL kFirstExtent{5080, 6350};

// The end of a label's edit box may have taken the focus along: only windows above the tree hear of that.
bool MayMoveFocus(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_PARENTNOTIFY) return LOWORD(wParam) == WM_DESTROY;
    if (message != WM_NOTIFY) return false;
    const auto notice = ReadFrom(reinterpret_cast<const NMHDR*>(lParam));
    return notice &&
           (notice->code == static_cast<UINT>(NM_SETFOCUS) || notice->code == static_cast<UINT>(NM_KILLFOCUS));
}

}  // namespace

Embedding::Embedding(ControlCore& core, IOleInPlaceActiveObject& active)
    : m_core(core), m_activation(core, active), m_extent(kFirstExtent)
{
    core.Resize(PixelsOf(m_extent, ScreenResolution()));
    core.SetObserver(this);
}

bool Embedding::SetExtent(SIZEL extent)
{
    if (extent.cx < 0 || extent.cy < 0) return false;
    if (extent.cx == m_extent.cx && extent.cy == m_extent.cy) return true;
    m_extent = extent;
    m_core.SetDirty(true);
    const Size size = PixelsOf(extent, ScreenResolution());
    if (m_activation.InPlace()) {
        m_activation.RequestSize(size);
    } else {
        m_core.Resize(size);
    }
    m_view.Changed();
    return true;
}

IOleAdviseHolder* Embedding::Advises()
{
    if (!m_advises) CreateOleAdviseHolder(m_advises.Put());
    return m_advises.Get();
}

void Embedding::SetFontInherited(bool inherited)
{
    // A copy: the font's own object may be changed by whoever holds it.
    m_inheritedFont = inherited ? CopyOf(m_core.Font().As<IFont>()) : ComPtr<IFont>();
}

void Embedding::AmbientChanged(DISPID property)
{
    if (property == DISPID_AMBIENT_FONT || property == DISPID_UNKNOWN) FollowAmbientFont();
    if (property == DISPID_AMBIENT_UIDEAD || property == DISPID_UNKNOWN) m_activation.FollowDeadInterface();
    // Everything else is asked of the container whenever it matters.
    m_view.Changed();
}

void Embedding::SetSite(IOleClientSite* site)
{
    const ComPtr<IOleClientSite> next(site);
    if (next.As<IUnknown>().Get() != ComPtr<IOleClientSite>(m_core.Site()).As<IUnknown>().Get()) {
        m_activation.LeaveInPlace();
    }
    m_core.SetSite(site);
    // A control may have been loaded before it knew its container.
    if (site) FollowAmbientFont();
}

void Embedding::FollowAmbientFont()
{
    if (m_activation.WasInPlace()) return;
    if (!m_inheritedFont || !LookAlike(m_inheritedFont, m_core.Font().As<IFont>())) return;
    m_core.SetFont(CopyOfAmbientFont(m_core).Get());
    SetFontInherited(true);
}

bool Embedding::WindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (message == WM_SETFOCUS && m_activation.PassFocusOn()) {
        result = 0;
        return true;
    }
    if (MayMoveFocus(message, wParam, lParam)) {
        const std::shared_ptr<void> alive = m_core.KeepAlive();
        Border(IID_IOleInPlaceObject, [&] { m_activation.FocusMayHaveMoved(); });
    }
    return false;
}

void Embedding::WindowGone()
{
    m_activation.WindowGone();
}

void Embedding::ViewChanged()
{
    m_view.Changed();
}

}  // namespace sylvex
