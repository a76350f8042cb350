#pragma once

#include "com/object.h"
#include "component/container/ole_embedding.h"

namespace sylvex {

/// What containers may expect of the control; the same as registered.
constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                              OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

/// The part that a container embeds the control by: its site, size, verbs and end.
class OleObjectPart : public IOleObject, public OlePart {
public:
    void* Find(const IID& id) { return Answers<IOleObject>(id) ? static_cast<IOleObject*>(this) : nullptr; }

    STDMETHODIMP SetClientSite(IOleClientSite* site) override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) override;
    STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    /// Saves through the site first where `option` asks for it, then hides the control. The site stays.
    STDMETHODIMP Close(DWORD option) override;
    STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                        LPCRECT place) override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
    STDMETHODIMP Update() override { return S_OK; }
    STDMETHODIMP IsUpToDate() override { return S_OK; }
    STDMETHODIMP GetUserClassID(CLSID* classId) override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* name) override;
    /// Hundredths of a millimetre, as in GetExtent().
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP Unadvise(DWORD connection) override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** connections) override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
    STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return S_OK; }

private:
    HRESULT Run(LONG verb, HWND parent);
};

/// The part that a container talks to the control about controls by.
class OleControlPart : public IOleControl, public IQuickActivate, public OlePart {
public:
    void* Find(const IID& id);

    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    /// There are no mnemonics.
    STDMETHODIMP OnMnemonic(MSG*) override { return E_NOTIMPL; }
    STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;

    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    STDMETHODIMP SetContentExtent(SIZEL* size) override;
    STDMETHODIMP GetContentExtent(SIZEL* size) override;

private:
    DWORD Connect(const IID& outgoing, IUnknown* sink);
};

}  // namespace sylvex
