#include "component/container/ole_view.h"

#include "platform/win32/handles.h"

namespace sylvex {

namespace {

using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, HandleCloser<&DeleteObject>>;
using UniqueDevice = std::unique_ptr<std::remove_pointer_t<HDC>, HandleCloser<&DeleteDC>>;

/// The control's picture at the size of its window, in memory.
class Snapshot {
public:
    /// Throws ComError.
    Snapshot(ControlCore& core, Size size) : m_size(size), m_device(CreateCompatibleDC(nullptr))
    {
        // From the bottom up, as old metafiles want it.
        m_info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.cx, size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        // Given although it may be left out: who records a metafile may take it for what is to be recorded.
        m_info.bmiHeader.biSizeImage = static_cast<DWORD>(size.cx) * static_cast<DWORD>(size.cy) * DWORD{sizeof(DWORD)};
        m_bitmap.reset(CreateDIBSection(m_device.get(), &m_info, DIB_RGB_COLORS, &m_bits, nullptr, 0));
        if (!m_device || !m_bitmap) throw ComError{E_OUTOFMEMORY};
        const HGDIOBJ before = SelectObject(m_device.get(), m_bitmap.get());
        core.Face().Paint(m_device.get(), {0, 0, size.cx, size.cy});
        const HWND tree = WindowOf(core.Control().Tree().hWnd());
        SendMessageW(tree, WM_PRINT, reinterpret_cast<WPARAM>(m_device.get()),
                     PRF_CLIENT | PRF_NONCLIENT | PRF_ERASEBKGND | PRF_CHILDREN);
        GdiFlush();
        SelectObject(m_device.get(), before);
    }

    void StretchInto(HDC device, const RECTL& bounds) const
    {
        const int state = SaveDC(device);
        SetStretchBltMode(device, COLORONCOLOR);
        StretchDIBits(device, bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top, 0, 0,
                      m_size.cx, m_size.cy, m_bits, &m_info, DIB_RGB_COLORS, SRCCOPY);
        RestoreDC(device, state);
    }

private:
    Size m_size;
    BITMAPINFO m_info{};
    UniqueDevice m_device;
    UniqueBitmap m_bitmap;
    void* m_bits = nullptr;
};

}  // namespace

HRESULT ViewPart::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC device, LPCRECTL bounds, LPCRECTL,
                       BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR)
{
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (!device) return E_INVALIDARG;
    return Border(IID_IViewObject2, [&] {
        const RECTL place = Checked(bounds);
        const ComPtr<IUnknown> alive(Identity());
        // Of an embedding that has been made, so that the window has the control's size.
        Embedded();
        // The container may have taken the window along.
        Core().Window();
        const Size size = Core().InnerSize();
        if (size.cx > 0 && size.cy > 0) Snapshot(Core(), size).StretchInto(device, place);
    });
}

HRESULT ViewPart::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors)
{
    if (!colors) return E_POINTER;
    *colors = nullptr;
    return S_FALSE;
}

HRESULT ViewPart::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink)
{
    return Border(Identity(), IID_IViewObject2, [&] { Embedded().View().Set(aspects, flags, sink); });
}

HRESULT ViewPart::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink)
{
    return Border(IID_IViewObject2, [&] { Embedded().View().Get(aspects, flags, sink); });
}

HRESULT ViewPart::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* size)
{
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    return Border(IID_IViewObject2, [&] { Checked(size) = Embedded().Extent(); });
}

}  // namespace sylvex
