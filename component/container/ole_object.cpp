#include "component/container/ole_object.h"

#include <olectl.h>

#include "component/container/ole_verbs.h"
#include "component/container/property_pages.h"

#include "SylvexControl_h.h"

namespace sylvex {

HRESULT OleObjectPart::SetClientSite(IOleClientSite* site)
{
    return Border(Identity(), IID_IOleObject, [&] { Embedded().SetSite(site); });
}

HRESULT OleObjectPart::GetClientSite(IOleClientSite** site)
{
    return Border(IID_IOleObject, [&] { ComPtr<IOleClientSite>(Core().Site()).CopyTo(&Checked(site)); });
}

HRESULT OleObjectPart::Close(DWORD option)
{
    return Border(Identity(), IID_IOleObject, [&] {
        const ComPtr<IOleClientSite> site(Core().Site());
        HRESULT saved = S_OK;
        if (option != OLECLOSE_NOSAVE && Core().Dirty() && site) saved = site->SaveObject();
        Embedded().Place().LeaveInPlace();
        if (const ComPtr<IOleAdviseHolder> advises(Embedded().Advises()); advises) advises->SendOnClose();
        return saved;
    });
}

HRESULT OleObjectPart::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND parent, LPCRECT)
{
    return Border(Identity(), IID_IOleObject, [&] { return Run(verb, parent); });
}

HRESULT OleObjectPart::Run(LONG verb, HWND parent)
{
    Activation& place = Embedded().Place();
    switch (verb) {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_UIACTIVATE:
            return place.EnterInterface(true);
        case OLEIVERB_SHOW:
        case OLEIVERB_INPLACEACTIVATE:
            return place.EnterInPlace();
        case OLEIVERB_HIDE:
            place.Hide();
            return S_OK;
        case OLEIVERB_DISCARDUNDOSTATE:
            return S_OK;
        case OLEIVERB_PROPERTIES:
        case kVerbProperties:
            return ShowPropertyPages(Core(), Identity(), parent);
        default:
            if (verb < 0) return E_NOTIMPL;
            // What the platform asks for with a verb of the object's own that it does not have.
            if (const HRESULT entered = place.EnterInterface(true); FAILED(entered)) return entered;
            return OLEOBJ_S_INVALIDVERB;
    }
}

HRESULT OleObjectPart::EnumVerbs(IEnumOLEVERB** verbs)
{
    return Border(IID_IOleObject, [&] { Checked(verbs) = Verbs().Detach(); });
}

HRESULT OleObjectPart::GetUserClassID(CLSID* classId)
{
    return Border(IID_IOleObject, [&] { Checked(classId) = __uuidof(::Sylvex); });
}

HRESULT OleObjectPart::GetUserType(DWORD form, LPOLESTR* name)
{
    return Border(IID_IOleObject, [&] {
        // Not what the registry says: a container may run the control without any registration.
        const std::wstring_view text = form == USERCLASSTYPE_FULL ? L"Sylvex Folder and File Selector" : L"Sylvex";
        Checked(name) = CopyForCaller(text);
    });
}

HRESULT OleObjectPart::SetExtent(DWORD aspect, SIZEL* size)
{
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return Border(Identity(), IID_IOleObject,
                  [&] { return Embedded().SetExtent(Checked(size)) ? S_OK : E_INVALIDARG; });
}

HRESULT OleObjectPart::GetExtent(DWORD aspect, SIZEL* size)
{
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return Border(IID_IOleObject, [&] { Checked(size) = Embedded().Extent(); });
}

HRESULT OleObjectPart::Advise(IAdviseSink* sink, DWORD* connection)
{
    return Border(IID_IOleObject, [&] {
        IOleAdviseHolder* const advises = Embedded().Advises();
        return advises ? advises->Advise(sink, &Checked(connection)) : E_OUTOFMEMORY;
    });
}

HRESULT OleObjectPart::Unadvise(DWORD connection)
{
    return Border(IID_IOleObject, [&] {
        IOleAdviseHolder* const advises = Embedded().Advises();
        return advises ? advises->Unadvise(connection) : E_OUTOFMEMORY;
    });
}

HRESULT OleObjectPart::EnumAdvise(IEnumSTATDATA** connections)
{
    return Border(IID_IOleObject, [&] {
        IOleAdviseHolder* const advises = Embedded().Advises();
        return advises ? advises->EnumAdvise(&Checked(connections)) : E_OUTOFMEMORY;
    });
}

HRESULT OleObjectPart::GetMiscStatus(DWORD aspect, DWORD* status)
{
    return Border(IID_IOleObject, [&] {
        Checked(status) = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
        return aspect == DVASPECT_CONTENT ? S_OK : DV_E_DVASPECT;
    });
}

void* OleControlPart::Find(const IID& id)
{
    if (id == IID_IOleControl) return static_cast<IOleControl*>(this);
    return id == IID_IQuickActivate ? static_cast<IQuickActivate*>(this) : nullptr;
}

HRESULT OleControlPart::GetControlInfo(CONTROLINFO* info)
{
    return Border(IID_IOleControl, [&] {
        Checked(info) = {sizeof(CONTROLINFO), nullptr, 0, CTRLINFO_EATS_RETURN | CTRLINFO_EATS_ESCAPE};
    });
}

HRESULT OleControlPart::OnAmbientPropertyChange(DISPID property)
{
    return Border(Identity(), IID_IOleControl, [&] { Embedded().AmbientChanged(property); });
}

HRESULT OleControlPart::FreezeEvents(BOOL freeze)
{
    return Border(IID_IOleControl, [&] { Core().FreezeEvents(freeze != FALSE); });
}

HRESULT OleControlPart::QuickActivate(QACONTAINER* container, QACONTROL* control)
{
    return Border(IID_IQuickActivate, [&] {
        const QACONTAINER& offer = Checked(container);
        QACONTROL answer{};
        answer.cbSize = sizeof answer;
        answer.dwMiscStatus = kMiscStatus;
        answer.dwViewStatus = VIEWSTATUS_OPAQUE;
        const ComPtr<IUnknown> alive(Identity());
        Embedded().SetSite(offer.pClientSite);
        if (offer.pAdviseSink) Embedded().View().Set(DVASPECT_CONTENT, 0, offer.pAdviseSink);
        if (offer.pUnkEventSink) answer.dwEventCookie = Connect(__uuidof(::__Sylvex), offer.pUnkEventSink);
        if (offer.pPropertyNotifySink) {
            answer.dwPropNotifyCookie = Connect(IID_IPropertyNotifySink, offer.pPropertyNotifySink);
        }
        Checked(control) = answer;
    });
}

DWORD OleControlPart::Connect(const IID& outgoing, IUnknown* sink)
{
    DWORD cookie = 0;
    const ComPtr<IConnectionPoint> point = Core().Points().Find(outgoing);
    if (!point || FAILED(point->Advise(sink, &cookie))) return 0;
    return cookie;
}

HRESULT OleControlPart::SetContentExtent(SIZEL* size)
{
    return Border(Identity(), IID_IQuickActivate,
                  [&] { return Embedded().SetExtent(Checked(size)) ? S_OK : E_INVALIDARG; });
}

HRESULT OleControlPart::GetContentExtent(SIZEL* size)
{
    return Border(IID_IQuickActivate, [&] { Checked(size) = Embedded().Extent(); });
}

}  // namespace sylvex
