#pragma once

#include "com/object.h"
#include "component/container/ole_embedding.h"

namespace sylvex {

/// The part that draws the control while it has no window to be seen in.
class ViewPart : public IViewObject2, public OlePart {
public:
    void* Find(const IID& id) { return Answers<IViewObject2>(id) ? static_cast<IViewObject2*>(this) : nullptr; }

    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectData, DVTARGETDEVICE* target, HDC targetDevice, HDC device,
                      LPCRECTL bounds, LPCRECTL windowBounds, BOOL(STDMETHODCALLTYPE* goOn)(ULONG_PTR),
                      ULONG_PTR argument) override;
    STDMETHODIMP GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) override;
    STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    /// Hundredths of a millimetre.
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, SIZEL* size) override;
};

}  // namespace sylvex
