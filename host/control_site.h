#pragma once

#include <functional>

#include "com/dispatch.h"
#include "com/object.h"

#include <ocidl.h>

namespace sylvex::host {

/// The form's side of in-place activation: remembers which object takes the keys.
class ControlFrame final : public CountedObject<IOleInPlaceFrame> {
public:
    /// `form` is the top-level window.
    explicit ControlFrame(HWND form) : m_form(form) {}

    /// The object that takes accelerators, or null.
    IOleInPlaceActiveObject* ActiveObject() const { return m_active.Get(); }
    /// Forgets the active object, for the end.
    void Detach() { m_active.Reset(); }

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetBorder(RECT*) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(const BORDERWIDTHS*) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(const BORDERWIDTHS*) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override;
    STDMETHODIMP InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) override { return S_OK; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(MSG*, WORD) override { return S_FALSE; }

private:
    HWND m_form;
    ComPtr<IOleInPlaceActiveObject> m_active;
};

/// What a control sees of its container: its place, the frame, the ambient properties.
class ControlSite final : public CountedObject<IOleClientSite, IOleInPlaceSite, IOleControlSite, PlainDispatch> {
public:
    /// Moves the focus on from the control, to the previous control when its argument is true.
    using TabOut = std::function<void(bool)>;

    /// `window` is the child window that the control fills; `font` is what the control inherits.
    ControlSite(HWND window, ComPtr<ControlFrame> frame, ComPtr<IFontDisp> font, TabOut tabOut);

    bool IsUiActive() const { return m_uiActive; }
    /// Must be called before the window goes: from then on the site answers nothing that needs it.
    void Detach();

    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return m_window ? S_OK : S_FALSE; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override;
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* place, RECT* clip,
                                  OLEINPLACEFRAMEINFO* info) override;
    STDMETHODIMP Scroll(SIZE) override { return S_FALSE; }
    STDMETHODIMP OnUIDeactivate(BOOL undoable) override;
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP DiscardUndoState() override { return S_OK; }
    STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
    /// The place is the form's to give: the control keeps the one that it has.
    STDMETHODIMP OnPosRectChange(const RECT*) override { return S_OK; }

    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** control) override;
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override;
    STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
    STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

    /// The ambient properties; they have identifiers only.
    STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID, WORD kind, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

private:
    HRESULT ReadAmbient(DISPID member, VARIANT& value) const;

    HWND m_window;
    ComPtr<ControlFrame> m_frame;
    ComPtr<IFontDisp> m_font;
    TabOut m_tabOut;
    bool m_uiActive = false;
};

}  // namespace sylvex::host
