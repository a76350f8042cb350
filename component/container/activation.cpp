#include "component/container/activation.h"

#include <commctrl.h>

#include "component/container/accelerators.h"
#include "component/container/ambient.h"
#include "platform/win32/handles.h"

namespace sylvex {

namespace {

// The end of a label's edit box is told to the tree, but not on every system to the windows above it.
LRESULT CALLBACK PassUpward(HWND tree, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR identifier, DWORD_PTR)
{
    if (message == WM_NCDESTROY) RemoveWindowSubclass(tree, &PassUpward, identifier);
    const LRESULT result = DefSubclassProc(tree, message, wParam, lParam);
    if (message == WM_PARENTNOTIFY) SendMessageW(GetParent(tree), message, wParam, lParam);
    return result;
}

}  // namespace

HRESULT Activation::EnterInPlace()
{
    if (InPlace()) {
        ShowWindow(m_core.Window(), SW_SHOWNA);
        return S_OK;
    }
    const ComPtr<IOleInPlaceSite> site = ComPtr<IOleClientSite>(m_core.Site()).As<IOleInPlaceSite>();
    if (!site || site->CanInPlaceActivate() != S_OK) return E_FAIL;
    const HRESULT allowed = site->OnInPlaceActivate();
    if (FAILED(allowed)) return allowed;
    m_site = site;
    try {
        if (const HRESULT shown = ShowIn(*site); FAILED(shown)) {
            LeaveInPlace();
            return shown;
        }
    } catch (...) {
        LeaveInPlace();
        throw;
    }
    FollowDeadInterface();
    // The container may have closed the control already in one of the calls.
    if (const ComPtr<IOleClientSite> client(m_core.Site()); client && InPlace()) client->ShowObject();
    return InPlace() ? S_OK : E_UNEXPECTED;
}

HRESULT Activation::ShowIn(IOleInPlaceSite& site)
{
    HWND parent = nullptr;
    if (const HRESULT found = site.GetWindow(&parent); FAILED(found)) return found;
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    const HRESULT described = site.GetWindowContext(frame.Put(), document.Put(), &place, &clip, &info);
    if (FAILED(described)) return described;
    if (!IsWindow(parent) || !InPlace()) return E_UNEXPECTED;
    m_wasInPlace = true;
    m_frame = std::move(frame);
    m_document = std::move(document);
    m_core.Attach(parent, place);
    SetRects(place, clip);
    SetWindowSubclass(WindowOf(m_core.Control().Tree().hWnd()), &PassUpward, 0, 0);
    return S_OK;
}

HRESULT Activation::EnterInterface(bool takeFocus)
{
    if (const HRESULT placed = EnterInPlace(); FAILED(placed)) return placed;
    if (!m_hasInterface && !IsUserInterfaceDead(m_core)) {
        // Set first: the container may send the focus around while it is told.
        m_hasInterface = true;
        const ComPtr<IOleInPlaceSite> site = m_site;
        const HRESULT allowed = site->OnUIActivate();
        if (FAILED(allowed)) {
            m_hasInterface = false;
            return allowed;
        }
        if (m_hasInterface) SetActiveObject(&m_active);
    }
    if (takeFocus && m_hasInterface && (!HoldsFocus() || GetFocus() == m_core.Window())) {
        SetFocus(WindowOf(m_core.Control().Tree().hWnd()));
        FocusMayHaveMoved();
    }
    return InPlace() ? S_OK : E_UNEXPECTED;
}

void Activation::SetActiveObject(IOleInPlaceActiveObject* object)
{
    const ComPtr<IOleInPlaceFrame> frame = m_frame;
    const ComPtr<IOleInPlaceUIWindow> document = m_document;
    if (frame) frame->SetActiveObject(object, nullptr);
    if (document) document->SetActiveObject(object, nullptr);
    // No tool bars of ours: the container may show its own.
    if (object && frame) frame->SetBorderSpace(nullptr);
    if (object && document) document->SetBorderSpace(nullptr);
}

void Activation::LeaveInterface()
{
    if (!std::exchange(m_hasInterface, false)) return;
    const ComPtr<IOleInPlaceSite> site = m_site;
    SetActiveObject(nullptr);
    if (site) site->OnUIDeactivate(FALSE);
}

void Activation::LeaveInPlace()
{
    if (!InPlace()) return;
    LeaveInterface();
    // Emptied first: what follows may come back here.
    const ComPtr<IOleInPlaceSite> site = std::move(m_site);
    m_frame.Reset();
    m_document.Reset();
    if (!site) return;
    GiveFocusAway();
    SetWindowRgn(m_core.Window(), nullptr, FALSE);
    m_core.Detach();
    site->OnInPlaceDeactivate();
}

void Activation::Hide()
{
    if (!InPlace()) return;
    LeaveInterface();
    if (!InPlace()) return;
    GiveFocusAway();
    ShowWindow(m_core.Window(), SW_HIDE);
}

void Activation::GiveFocusAway()
{
    // A label that is being edited loses what was typed: nobody must be asked anything while the container closes.
    const HWND tree = WindowOf(m_core.Control().Tree().hWnd());
    SendMessageW(tree, TVM_ENDEDITLABELNOW, TRUE, 0);
    // Nor may a drag go on in a tree that nobody sees.
    SendMessageW(tree, WM_CANCELMODE, 0, 0);
    if (HoldsFocus()) SetFocus(GetParent(m_core.Window()));
    FocusMayHaveMoved();
}

void Activation::SetRects(const RECT& place, const RECT& clip)
{
    if (!InPlace()) return;
    m_place = place;
    m_core.MoveWindow(place);
    RECT seen{};
    HRGN region = nullptr;
    // Containers that do not clip pass an empty or a far larger rectangle.
    if (IntersectRect(&seen, &place, &clip) && !EqualRect(&seen, &place)) {
        OffsetRect(&seen, -place.left, -place.top);
        region = CreateRectRgnIndirect(&seen);
    }
    // The window takes the region over.
    SetWindowRgn(m_core.Window(), region, TRUE);
}

void Activation::RequestSize(Size size)
{
    if (!InPlace() || std::exchange(m_requestingSize, true)) return;
    const ComPtr<IOleInPlaceSite> site = m_site;
    const RECT wanted{m_place.left, m_place.top, m_place.left + size.cx, m_place.top + size.cy};
    site->OnPosRectChange(&wanted);
    m_requestingSize = false;
}

HRESULT Activation::TranslateKey(MSG& message)
{
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return S_FALSE;
    if (!HoldsFocus() || !InPlace() || IsUserInterfaceDead(m_core)) return S_FALSE;
    const HWND tree = WindowOf(m_core.Control().Tree().hWnd());
    // Some containers name the control's window, whichever window below it has the focus.
    MSG key = message;
    key.hwnd = GetFocus();
    if (!BelongsToTree(key, key.hwnd != tree)) return OfferToSite(message);
    TranslateMessage(&key);
    DispatchMessageW(&key);
    return S_OK;
}

HRESULT Activation::OfferToSite(MSG& message)
{
    const ComPtr<IOleControlSite> site = ControlSite();
    if (!site) return S_FALSE;
    return site->TranslateAccelerator(&message, PressedModifiers()) == S_OK ? S_OK : S_FALSE;
}

bool Activation::HoldsFocus()
{
    const HWND focus = GetFocus();
    const HWND window = m_core.Window();
    return focus && (focus == window || IsChild(window, focus));
}

bool Activation::PassFocusOn()
{
    const HWND tree = WindowOf(m_core.Control().Tree().hWnd());
    if (!IsWindowVisible(tree) || !IsWindowEnabled(tree)) return false;
    SetFocus(tree);
    return true;
}

void Activation::FocusMayHaveMoved()
{
    const bool focused = HoldsFocus();
    if (m_focused == focused) return;
    m_focused = focused;
    // One that the container has hidden stays so.
    if (focused && InPlace() && IsWindowVisible(m_core.Window()) && m_core.UserMode()) EnterInterface(false);
    // The container may have moved it on meanwhile.
    if (m_focused != focused) return;
    if (const ComPtr<IOleControlSite> site = ControlSite()) site->OnFocus(focused);
}

ComPtr<IOleControlSite> Activation::ControlSite() const
{
    return ComPtr<IOleClientSite>(m_core.Site()).As<IOleControlSite>();
}

std::shared_ptr<const void> Activation::PauseFrame() noexcept
try {
    std::shared_ptr<const ModalPause> pause = m_pause.lock();
    if (!m_frame || (pause && pause->Frame().Get() == m_frame.Get())) return pause;
    pause = std::make_shared<const ModalPause>(m_frame);
    m_pause = pause;
    return pause;
} catch (const std::bad_alloc&) {
    return nullptr;
}

void Activation::FollowDeadInterface()
{
    if (!InPlace()) return;
    const bool dead = IsUserInterfaceDead(m_core);
    // The container may have disabled the window by itself.
    if (std::exchange(m_dead, dead) == dead) return;
    if (dead) LeaveInterface();
    EnableWindow(m_core.Window(), !dead);
}

void Activation::WindowGone()
{
    // The container is taking its window down and expects no call.
    m_hasInterface = false;
    m_focused = false;
    m_dead = false;
    m_frame.Reset();
    m_document.Reset();
    m_site.Reset();
}

}  // namespace sylvex
