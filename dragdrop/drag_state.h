#pragma once

#include <string>

#include "platform/types.h"
#include "widgets/node.h"

namespace sylvex {

/// The variables of dragging and renaming in one control, under the names that reports print.
struct DragState {
    short DragImage = 0;
    std::wstring FullPath, sNodeText;
    NodeRef nodX;
    ImageListHandle m_himlDrag = 0;  ///< not 0 while something is dragged
    ItemHandle m_hitemDrag = 0;
    short m_iButton = 0;
    NodeRef m_nodDrag;
    Point m_ptBtnDown, m_ptHotSpot;
    bool m_DragDropEnable = false;
};

}  // namespace sylvex
