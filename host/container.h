#pragma once

#include "host/control_site.h"
#include "host/event_sink.h"
#include "SylvexControl_h.h"

namespace sylvex::host {

/// Creates a Sylvex control, activates it in a child window and carries keys, focus and size between it and the form.
class ControlContainer {
public:
    struct Listeners {
        EventSink::Listener event;
        PropertySink::Listener property;
        ControlSite::TabOut tabOut;
    };

    /// `form` is the top-level window, `place` the child window that the control fills.
    ControlContainer(HWND form, HWND place) : m_form(form), m_place(place) {}
    ControlContainer(const ControlContainer&) = delete;
    ControlContainer& operator=(const ControlContainer&) = delete;
    ~ControlContainer() { Close(); }

    /// Creates an object of the registered class and activates it in place; throws AutomationError, and then holds
    /// nothing. `font` is what the control inherits.
    void Open(const wchar_t* progId, ComPtr<IFontDisp> font, Listeners listeners);
    /// Deactivates and releases the control; the windows must still be there.
    void Close() noexcept;
    bool IsOpen() const { return static_cast<bool>(m_control); }
    /// Only while it is open.
    _Sylvex& Control() const { return *m_control; }

    /// Gives the control the size of its place.
    void Resize();
    /// Lets the active object use a key message; true when it did.
    bool TranslateKey(MSG& message);
    /// Gives the control the focus; `message` is the key that led there, or null.
    void Activate(MSG* message);
    /// Takes the control's state of being active away when the focus has gone to another part of the form.
    void FollowFocus();
    /// Whether the focus is in the control.
    bool HasFocus() const;

private:
    void CreateObject(const wchar_t* progId);
    void SetSite();
    void ActivateInPlace();

    HWND m_form;
    HWND m_place;
    ComPtr<IOleObject> m_object;
    ComPtr<IOleInPlaceObject> m_inPlace;
    ComPtr<_Sylvex> m_control;
    ComPtr<ControlFrame> m_frame;
    ComPtr<ControlSite> m_site;
    Connection m_events;
    Connection m_properties;
};

}  // namespace sylvex::host
