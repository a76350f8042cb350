#pragma once

#include "component/border/border.h"

#include <ocidl.h>
#include <olectl.h>

namespace sylvex {

/// The control's own face, which the tree covers entirely while it has a window.
struct Surface {
    /// A system colour's index with the highest bit set, or red, green and blue from the lowest byte up.
    OLE_COLOR backColor = 0x8000000F;
    /// Empty: no picture.
    ComPtr<IPictureDisp> picture;

    /// Fills `place` (device units) with the colour and draws the picture, in its own size, from its upper left corner.
    void Paint(HDC device, const RECT& place) const;
};

}  // namespace sylvex
