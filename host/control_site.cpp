#include "host/control_site.h"

#include <olectl.h>

#include <optional>

namespace sylvex::host {
namespace {

/// OLE colour of a system colour.
constexpr LONG SystemColor(int index)
{
    return static_cast<LONG>(0x80000000u | static_cast<unsigned>(index));
}

/// Ambient properties that are true or false; empty for the others.
std::optional<bool> AmbientFlag(DISPID member)
{
    switch (member) {
        case DISPID_AMBIENT_USERMODE:
        case DISPID_AMBIENT_SUPPORTSMNEMONICS:
        case DISPID_AMBIENT_AUTOCLIP:
            return true;
        case DISPID_AMBIENT_UIDEAD:
        case DISPID_AMBIENT_SHOWGRABHANDLES:
        case DISPID_AMBIENT_SHOWHATCHING:
        case DISPID_AMBIENT_DISPLAYASDEFAULT:
        case DISPID_AMBIENT_MESSAGEREFLECT:
        case DISPID_AMBIENT_RIGHTTOLEFT:
            return false;
        default:
            return std::nullopt;
    }
}

HRESULT AnswerFlag(VARIANT& value, bool flag)
{
    V_VT(&value) = VT_BOOL;
    V_BOOL(&value) = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT AnswerNumber(VARIANT& value, LONG number)
{
    V_VT(&value) = VT_I4;
    V_I4(&value) = number;
    return S_OK;
}

HRESULT AnswerText(VARIANT& value, const wchar_t* text)
{
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = SysAllocString(text);
    return V_BSTR(&value) ? S_OK : E_OUTOFMEMORY;
}

}  // namespace

STDMETHODIMP ControlFrame::GetWindow(HWND* window)
{
    if (!window) return E_POINTER;
    *window = m_form;
    return S_OK;
}

STDMETHODIMP ControlFrame::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR)
{
    m_active = ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

ControlSite::ControlSite(HWND window, ComPtr<ControlFrame> frame, ComPtr<IFontDisp> font, TabOut tabOut)
    : m_window(window), m_frame(std::move(frame)), m_font(std::move(font)), m_tabOut(std::move(tabOut))
{
}

void ControlSite::Detach()
{
    m_window = nullptr;
    m_tabOut = nullptr;
}

STDMETHODIMP ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker)
{
    if (moniker) *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP ControlSite::GetContainer(IOleContainer** container)
{
    if (container) *container = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP ControlSite::GetWindow(HWND* window)
{
    if (!window) return E_POINTER;
    *window = m_window;
    return m_window ? S_OK : E_FAIL;
}

STDMETHODIMP ControlSite::OnUIActivate()
{
    m_uiActive = true;
    return S_OK;
}

STDMETHODIMP ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, RECT* place,
                                           RECT* clip, OLEINPLACEFRAMEINFO* info)
{
    if (!frame || !document || !place || !clip || !info) return E_POINTER;
    *frame = nullptr;
    *document = nullptr;
    if (!m_window) return E_FAIL;
    m_frame.CopyTo(frame);
    GetClientRect(m_window, place);
    *clip = *place;
    info->fMDIApp = FALSE;
    m_frame->GetWindow(&info->hwndFrame);
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

STDMETHODIMP ControlSite::OnUIDeactivate(BOOL)
{
    m_uiActive = false;
    return S_OK;
}

STDMETHODIMP ControlSite::GetExtendedControl(IDispatch** control)
{
    if (control) *control = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP ControlSite::TranslateAccelerator(MSG* message, DWORD modifiers)
{
    constexpr DWORD kShift = 1;
    if (!message || message->message != WM_KEYDOWN || message->wParam != VK_TAB || !m_tabOut) return S_FALSE;
    m_tabOut((modifiers & kShift) != 0);
    return S_OK;
}

STDMETHODIMP ControlSite::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                 UINT*)
{
    if ((kind & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    if (!result) return E_POINTER;
    VariantInit(result);
    return ReadAmbient(member, *result);
}

HRESULT ControlSite::ReadAmbient(DISPID member, VARIANT& value) const
{
    if (const auto flag = AmbientFlag(member)) return AnswerFlag(value, *flag);
    switch (member) {
        case DISPID_AMBIENT_BACKCOLOR:
            return AnswerNumber(value, SystemColor(COLOR_BTNFACE));
        case DISPID_AMBIENT_FORECOLOR:
            return AnswerNumber(value, SystemColor(COLOR_BTNTEXT));
        case DISPID_AMBIENT_APPEARANCE:
            return AnswerNumber(value, 1);
        case DISPID_AMBIENT_LOCALEID:
            return AnswerNumber(value, static_cast<LONG>(GetUserDefaultLCID()));
        case DISPID_AMBIENT_DISPLAYNAME:
            return AnswerText(value, L"Sylvex1");
        case DISPID_AMBIENT_FONT:
            if (!m_font) return DISP_E_MEMBERNOTFOUND;
            V_VT(&value) = VT_DISPATCH;
            m_font.CopyTo(&V_DISPATCH(&value));
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace sylvex::host
