#pragma once

#include "component/container/control_core.h"

#include <ocidl.h>

namespace sylvex {

/// Where the control stands with its container: hidden; in place (its window is a child of the container's); or in
/// place with the user interface (its keys come first). Every call may run code of the container, which may let go of
/// the control: the caller holds a reference to it.
class Activation {
public:
    /// `active` is what the container's frame is given; both outlive this object.
    Activation(ControlCore& core, IOleInPlaceActiveObject& active) : m_core(core), m_active(active) {}
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;

    bool InPlace() const { return static_cast<bool>(m_site); }
    /// Whether it has ever been in place.
    bool WasInPlace() const { return m_wasInPlace; }
    /// Keeps the container's frame still while the result lives, and whatever else is opened meanwhile; null while the
    /// control has no frame.
    std::shared_ptr<const void> PauseFrame() noexcept;

    /// Shows the control in the container's window, also when it is there but hidden.
    HRESULT EnterInPlace();
    /// Takes the user interface, and the focus when `takeFocus`, entering in place first.
    HRESULT EnterInterface(bool takeFocus);
    void LeaveInterface();
    /// Hides the control and takes its window out of the container's; the tree keeps all that it holds.
    void LeaveInPlace();
    /// Takes the focus out of the control and hides its window where it is.
    void Hide();
    /// Pixels of the container's window; `clip` is what may be seen.
    void SetRects(const RECT& place, const RECT& clip);
    /// Asks the container for room for `size` (pixels) at the present place.
    void RequestSize(Size size);
    /// A message that the container offers before its own keys: S_OK when it has been handled.
    HRESULT TranslateKey(MSG& message);
    /// Gives the tree the focus that has come to the control's own window; false when the tree cannot take it.
    bool PassFocusOn();
    /// Looks where the focus is, and tells the container when it has come or gone.
    void FocusMayHaveMoved();
    /// Takes input or takes none, as the container wants now.
    void FollowDeadInterface();
    /// The container's window is gone, and the control's with it.
    void WindowGone();

private:
    HRESULT ShowIn(IOleInPlaceSite& site);
    bool HoldsFocus();
    void GiveFocusAway();
    HRESULT OfferToSite(MSG& message);
    void SetActiveObject(IOleInPlaceActiveObject* object);
    ComPtr<IOleControlSite> ControlSite() const;

    ControlCore& m_core;
    IOleInPlaceActiveObject& m_active;
    ComPtr<IOleInPlaceSite> m_site;
    ComPtr<IOleInPlaceFrame> m_frame;
    ComPtr<IOleInPlaceUIWindow> m_document;
    RECT m_place{};
    std::weak_ptr<const ModalPause> m_pause;
    bool m_wasInPlace = false;
    bool m_hasInterface = false;
    bool m_dead = false;  // the container has said that its user interface is
    bool m_focused = false;
    bool m_requestingSize = false;
};

}  // namespace sylvex
