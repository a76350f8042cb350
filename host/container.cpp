#include "host/container.h"

#include <olectl.h>

#include "host/automation.h"

namespace sylvex::host {
namespace {

/// Size of a rectangle on the screen in the unit of OLE, hundredths of a millimetre.
SIZEL ToHimetric(HWND window, const RECT& rect)
{
    constexpr int kHimetricPerInch = 2540;
    const HDC dc = GetDC(window);
    const SIZEL size{MulDiv(rect.right - rect.left, kHimetricPerInch, GetDeviceCaps(dc, LOGPIXELSX)),
                     MulDiv(rect.bottom - rect.top, kHimetricPerInch, GetDeviceCaps(dc, LOGPIXELSY))};
    ReleaseDC(window, dc);
    return size;
}

/// Tells a new object that there is no saved state.
void Initialise(IOleObject& object)
{
    const ComPtr<IOleObject> holder(&object);
    if (const auto stream = holder.As<IPersistStreamInit>()) {
        Check(stream->InitNew(), L"IPersistStreamInit.InitNew");
    } else if (const auto bag = holder.As<IPersistPropertyBag>()) {
        Check(bag->InitNew(), L"IPersistPropertyBag.InitNew");
    }
}

}  // namespace

void ControlContainer::Open(const wchar_t* progId, ComPtr<IFontDisp> font, Listeners listeners)
{
    try {
        CreateObject(progId);
        m_frame = Make<ControlFrame>(m_form);
        m_site = Make<ControlSite>(m_place, m_frame, std::move(font), std::move(listeners.tabOut));
        SetSite();
        const auto events = Make<EventSink>(std::move(listeners.event));
        m_events = Connection(*m_object, __uuidof(__Sylvex), *events);
        const auto properties = Make<PropertySink>(std::move(listeners.property));
        m_properties = Connection(*m_object, IID_IPropertyNotifySink, *properties);
        ActivateInPlace();
    } catch (const AutomationError&) {
        Close();
        throw;
    }
}

void ControlContainer::CreateObject(const wchar_t* progId)
{
    CLSID classId;
    const HRESULT known = CLSIDFromProgID(progId, &classId);
    if (FAILED(known)) throw AutomationError(progId, REGDB_E_CLASSNOTREG, L"The class is not registered");
    Check(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, m_object.PutAny()), progId);
    m_control = m_object.As<_Sylvex>();
    m_inPlace = m_object.As<IOleInPlaceObject>();
    if (!m_control || !m_inPlace) throw AutomationError(progId, E_NOINTERFACE, {});
}

void ControlContainer::SetSite()
{
    DWORD status = 0;
    m_object->GetMiscStatus(DVASPECT_CONTENT, &status);
    const bool siteFirst = (status & OLEMISC_SETCLIENTSITEFIRST) != 0;
    if (siteFirst) Check(m_object->SetClientSite(m_site.Get()), L"SetClientSite");
    Initialise(*m_object);
    if (!siteFirst) Check(m_object->SetClientSite(m_site.Get()), L"SetClientSite");
    m_object->SetHostNames(L"SylvexHost", nullptr);
}

void ControlContainer::ActivateInPlace()
{
    RECT place;
    GetClientRect(m_place, &place);
    SIZEL extent = ToHimetric(m_place, place);
    m_object->SetExtent(DVASPECT_CONTENT, &extent);
    Check(m_object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, m_site.Get(), 0, m_place, &place), L"DoVerb");
    Resize();
}

void ControlContainer::Close() noexcept
{
    m_events = {};
    m_properties = {};
    if (m_inPlace) {
        m_inPlace->UIDeactivate();
        m_inPlace->InPlaceDeactivate();
    }
    if (m_object) {
        m_object->Close(OLECLOSE_NOSAVE);
        m_object->SetClientSite(nullptr);
    }
    if (m_site) m_site->Detach();
    if (m_frame) m_frame->Detach();
    m_control.Reset();
    m_inPlace.Reset();
    m_object.Reset();
}

void ControlContainer::Resize()
{
    if (!m_inPlace) return;
    RECT place;
    GetClientRect(m_place, &place);
    SIZEL extent = ToHimetric(m_place, place);
    m_object->SetExtent(DVASPECT_CONTENT, &extent);
    m_inPlace->SetObjectRects(&place, &place);
}

bool ControlContainer::TranslateKey(MSG& message)
{
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST || !m_frame) return false;
    // The object may go while it handles the key.
    const ComPtr<IOleInPlaceActiveObject> active(m_frame->ActiveObject());
    return active && active->TranslateAccelerator(&message) == S_OK;
}

void ControlContainer::Activate(MSG* message)
{
    if (!m_object) return;
    RECT place;
    GetClientRect(m_place, &place);
    m_object->DoVerb(OLEIVERB_UIACTIVATE, message, m_site.Get(), 0, m_place, &place);
}

void ControlContainer::FollowFocus()
{
    const HWND focus = GetFocus();
    if (!m_inPlace || !m_site->IsUiActive() || HasFocus()) return;
    if (IsChild(m_form, focus)) m_inPlace->UIDeactivate();
}

bool ControlContainer::HasFocus() const
{
    const HWND focus = GetFocus();
    return focus && (focus == m_place || IsChild(m_place, focus));
}

}  // namespace sylvex::host
