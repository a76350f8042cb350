#include "component/container/property_pages.h"

#include <olectl.h>
#include <algorithm>
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

// The registry may name a page whose file has gone.
bool Exists(const CLSID& page)
{
    ComPtr<IClassFactory> factory;
    return SUCCEEDED(CoGetClassObject(page, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.PutAny()));
}

}  // namespace

std::vector<CLSID> PropertyPages()
{
    std::vector<CLSID> pages;
    for (const PageKind& kind : kKinds) {
        if (Exists(kind.stock)) {
            pages.push_back(kind.stock);
        } else if (Exists(kind.older)) {
            pages.push_back(kind.older);
        }
    }
    return pages;
}

HRESULT PropertyPagesPart::GetPages(CAUUID* pages)
{
    return Border(IID_ISpecifyPropertyPages, [&] {
        Checked(pages) = {};
        const std::vector<CLSID> found = PropertyPages();
        if (found.empty()) return S_OK;
        void* const memory = CoTaskMemAlloc(found.size() * sizeof(GUID));
        if (!memory) return E_OUTOFMEMORY;
        *pages = {static_cast<ULONG>(found.size()), static_cast<GUID*>(memory)};
        std::copy(found.begin(), found.end(), pages->pElems);
        return S_OK;
    });
}

HRESULT ShowPropertyPages(ControlCore& core, IUnknown* object, HWND parent)
{
    const ComPtr<IOleControlSite> site = ComPtr<IOleClientSite>(core.Site()).As<IOleControlSite>();
    if (site && site->ShowPropertyFrame() == S_OK) return S_OK;
    std::vector<CLSID> pages = PropertyPages();
    if (pages.empty()) return OLEOBJ_E_INVALIDVERB;
    const std::shared_ptr<const void> pause = core.PauseFrame();
    return Guarded([&] {
        return OleCreatePropertyFrame(parent, 0, 0, L"Sylvex", 1, &object, static_cast<ULONG>(pages.size()),
                                      pages.data(), LOCALE_USER_DEFAULT, 0, nullptr);
    });
}

}  // namespace sylvex
