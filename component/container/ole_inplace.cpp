#include "component/container/ole_inplace.h"

#include "platform/win32/readable.h"

namespace sylvex {

void* InPlacePart::Find(const IID& id)
{
    // The window is asked for through either; one answer is enough.
    if (Answers<IOleInPlaceObject>(id)) return static_cast<IOleInPlaceObject*>(this);
    return id == IID_IOleInPlaceActiveObject ? static_cast<IOleInPlaceActiveObject*>(this) : nullptr;
}

HRESULT InPlacePart::GetWindow(HWND* window)
{
    return Border(IID_IOleWindow, [&] {
        Checked(window) = nullptr;
        if (!Embedded().Place().InPlace()) return E_FAIL;
        *window = Core().Window();
        return S_OK;
    });
}

HRESULT InPlacePart::InPlaceDeactivate()
{
    return Border(Identity(), IID_IOleInPlaceObject, [&] { Embedded().Place().LeaveInPlace(); });
}

HRESULT InPlacePart::UIDeactivate()
{
    return Border(Identity(), IID_IOleInPlaceObject, [&] { Embedded().Place().LeaveInterface(); });
}

HRESULT InPlacePart::SetObjectRects(LPCRECT place, LPCRECT clip)
{
    return Border(Identity(), IID_IOleInPlaceObject, [&] {
        const RECT& whole = Checked(place);
        Embedded().Place().SetRects(whole, clip ? *clip : whole);
    });
}

HRESULT InPlacePart::TranslateAccelerator(LPMSG message)
{
    return Border(Identity(), IID_IOleInPlaceActiveObject, [&] {
        // Some 64-bit containers pass the lower half of the pointer.
        return ReadFrom(message) ? Embedded().Place().TranslateKey(*message) : E_POINTER;
    });
}

}  // namespace sylvex
