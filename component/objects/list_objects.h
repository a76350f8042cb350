#pragma once

#include <memory>

#include "component/border/border.h"
#include "widgets/window_list.h"

#include "SylvexControl_h.h"

namespace sylvex {

/// The automation object of a list given by its window, the same one while anybody holds it. It and the objects of its
/// rows and columns may be held beyond all: members of a removed row or column raise 35605, and those of a list whose
/// window has gone 398.
ComPtr<IListView> ListObject(const std::shared_ptr<WindowListView>& list);

/// The list behind an object that ListObject() made; null for any other.
std::shared_ptr<WindowListView> ListBehind(IUnknown* object);

}  // namespace sylvex
