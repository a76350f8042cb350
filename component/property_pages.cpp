#include "component/property_pages.h"

#include <olectl.h>
#include <array>

#include <initguid.h>

#include <msstkppg.h>

namespace sylvex {

namespace {

// One kind of page under the two identifiers that systems have it under.
struct PageKind {
    const CLSID& stock;
    const CLSID& older;
};

const std::array<PageKind, 3> kKinds{{{CLSID_StockFontPage, CLSID_CFontPropPage},
                                      {CLSID_StockColorPage, CLSID_CColorPropPage},
                                      {CLSID_StockPicturePage, CLSID_CPicturePropPage}}};

bool IsRegistered(const CLSID& id)
{
    wchar_t text[39] = {};
    StringFromGUID2(id, text, ARRAYSIZE(text));
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, (std::wstring(L"CLSID\\") + text).c_str(), 0, KEY_READ, &key)) return false;
    RegCloseKey(key);
    return true;
}

CLSID PageOf(const PageKind& kind)
{
    return IsRegistered(kind.older) && !IsRegistered(kind.stock) ? kind.older : kind.stock;
}

}  // namespace

HRESULT PropertyPagesPart::GetPages(CAUUID* pages)
{
    return Border(IID_ISpecifyPropertyPages, [&] {
        Checked(pages) = {};
        void* const memory = CoTaskMemAlloc(kKinds.size() * sizeof(GUID));
        if (!memory) return E_OUTOFMEMORY;
        *pages = {static_cast<ULONG>(kKinds.size()), static_cast<GUID*>(memory)};
        for (std::size_t i = 0; i < kKinds.size(); ++i)
            pages->pElems[i] = PageOf(kKinds[i]);
        return S_OK;
    });
}

HRESULT ShowPropertyPages(ControlCore& core, IUnknown* object, HWND parent)
{
    const ComPtr<IOleControlSite> site = ComPtr<IOleClientSite>(core.Site()).As<IOleControlSite>();
    if (site && site->ShowPropertyFrame() == S_OK) return S_OK;
    std::array<CLSID, kKinds.size()> pages{};
    for (std::size_t i = 0; i < pages.size(); ++i)
        pages[i] = PageOf(kKinds[i]);
    return OleCreatePropertyFrame(parent, 0, 0, L"Sylvex", 1, &object, static_cast<ULONG>(pages.size()), pages.data(),
                                  LOCALE_USER_DEFAULT, 0, nullptr);
}

}  // namespace sylvex
