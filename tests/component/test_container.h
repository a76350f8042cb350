#pragma once

#include <map>
#include <optional>
#include <string>

#include "tests/component/automation.h"
#include "tests/component/test_control.h"

namespace sylvex::test {

/// A container on the test's stack: a visible form, and the sites of one control. It counts the references to itself,
/// and writes down what the control asks of it.
class TestContainer final
    : public TestDispatch<IOleClientSite, IOleInPlaceSite, IOleControlSite, IOleInPlaceFrame, IPropertyNotifySink> {
public:
    TestContainer();
    ~TestContainer();

    /// What it says of itself: numbers of ambient properties with their values. None: no ambient properties at all.
    std::optional<std::map<DISPID, Value>> ambients;
    RECT place{10, 10, 210, 160};
    /// What its form does with a key that a control leaves to it.
    HRESULT keyAnswer = S_OK;
    /// Whether it has property pages of its own way.
    HRESULT frameAnswer = S_OK;
    /// The control that was last made active with the user interface; what keys go to first.
    ComPtr<IOleInPlaceActiveObject> active;
    /// The control that SetObjectRects is for.
    IOleObject* resized = nullptr;

    void SetAmbient(DISPID property, const Value& value) { ambients->insert_or_assign(property, value); }
    HWND Form() const { return m_form; }
    /// Takes the form down, with every window in it.
    void DestroyForm();
    void NewForm();
    /// What has happened since the last call, in order.
    std::string TakeLog() { return std::exchange(m_log, {}); }
    /// Offers a message to the active control first if it is a key; whether it was taken.
    bool Takes(MSG& message);
    /// As the container's loop does with a key: the active control first, then the window that has the focus.
    void Key(UINT message, WPARAM key);

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;

    STDMETHODIMP SaveObject() override { return Note("SaveObject"); }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return Note("OnInPlaceActivate"); }
    STDMETHODIMP OnUIActivate() override { return Note("OnUIActivate"); }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return Note("OnUIDeactivate"); }
    STDMETHODIMP OnInPlaceDeactivate() override { return Note("OnInPlaceDeactivate"); }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT wanted) override;

    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(LPMSG message, DWORD modifiers) override;
    STDMETHODIMP OnFocus(BOOL gained) override { return Note(gained ? "OnFocus in" : "OnFocus out"); }
    STDMETHODIMP ShowPropertyFrame() override { return Note("ShowPropertyFrame", frameAnswer); }

    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override;
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL enable) override { return Note(enable ? "EnableModeless" : "DisableModeless"); }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    STDMETHODIMP Invoke(DISPID property, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override;

    STDMETHODIMP OnChanged(DISPID) override { return Note("OnChanged"); }
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

private:
    HRESULT Note(const std::string& line, HRESULT answer = S_OK);

    HWND m_form = nullptr;
    std::string m_log;
};

/// One control in one container, from its creation to its end.
class Embedded {
public:
    explicit Embedded(TestContainer& container);
    Embedded(const Embedded&) = delete;
    Embedded& operator=(const Embedded&) = delete;
    /// Closes it and lets go of it.
    ~Embedded();

    ComPtr<::_Sylvex> control;
    ComPtr<IOleObject> object;

    HRESULT SetSite() { return object->SetClientSite(&m_container); }
    HRESULT InitNew() { return As<IPersistStreamInit>()->InitNew(); }
    HRESULT Do(LONG verb);
    /// The usual start: site, new, active with the user interface.
    void Start();
    void Close();
    Value Members() const { return static_cast<IDispatch*>(control.Get()); }
    template <class Interface>
    ComPtr<Interface> As() const
    {
        return control.As<Interface>();
    }
    HWND Tree() const { return TreeOf(control); }
    /// The control's own window in its place; null when it has none.
    HWND Window() const;

private:
    TestContainer& m_container;
};

/// A test of one control in one container.
class InContainer : public testing::Test {
protected:
    TestContainer container;
    Embedded embedded{container};
};

}  // namespace sylvex::test
