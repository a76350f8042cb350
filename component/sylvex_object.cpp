#include "component/sylvex_object.h"

namespace sylvex {

HRESULT CreateSylvexObject(IUnknown* outer, REFIID id, void** object) noexcept
{
    return Border(IID_IClassFactory, [&] { return MakeInner<SylvexObject>(outer)->QueryInterface(id, object); });
}

}  // namespace sylvex
