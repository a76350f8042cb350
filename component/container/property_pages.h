#pragma once

#include <vector>

#include "com/object.h"
#include "component/container/ole_embedding.h"

namespace sylvex {

/// The pages on which a designer edits the control: those of the system's own for fonts, colours and pictures that this
/// system has. A sheet without a page would never close.
std::vector<CLSID> PropertyPages();

/// The part that names these pages to a designer.
class PropertyPagesPart : public ISpecifyPropertyPages, public OlePart {
public:
    void* Find(const IID& id)
    {
        return id == IID_ISpecifyPropertyPages ? static_cast<ISpecifyPropertyPages*>(this) : nullptr;
    }

    STDMETHODIMP GetPages(CAUUID* pages) override;
};

/// Shows the control's pages: in the container's way, or in a frame of the system's below `parent`. `object` is the
/// control as the pages see it. Returns when the user has closed them; OLEOBJ_E_INVALIDVERB where there is neither.
HRESULT ShowPropertyPages(ControlCore& core, IUnknown* object, HWND parent);

}  // namespace sylvex
