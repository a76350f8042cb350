#pragma once

#include <string_view>

#include "component/com.h"
#include "control/sylvex.h"

#include <ocidl.h>

namespace sylvex {

/// What the OLE parts of the control ask of the object that they are parts of.
class OleOwner {
public:
    virtual ~OleOwner() = default;

    /// The identity that the world knows; not counted.
    virtual IUnknown* Identity() = 0;
    /// The control, which is made with its hidden window on the first call; raises what its construction raises.
    virtual Sylvex& Control() = 0;

    /// The control's surface: a child window (WS_CHILD) that the tree fills, below a hidden window of the control's own
    /// until it is placed. Made anew when it has gone together with a container's window.
    virtual HWND Surface() = 0;
    /// Moves the surface below a container's window. Null: hides it and takes it back below the hidden window.
    virtual void PlaceBelow(HWND parent) = 0;

    virtual OLE_COLOR SurfaceColor() = 0;
    /// Stores without notices to the container; likewise the writers below.
    virtual void SetSurfaceColor(OLE_COLOR color) = 0;
    /// The surface's picture, empty when there is none.
    virtual ComPtr<IPictureDisp> SurfacePicture() = 0;
    virtual void SetSurfacePicture(IPictureDisp* picture) = 0;
    /// The tree's font; never empty, the system's own when none was set.
    virtual ComPtr<IFontDisp> TreeFont() = 0;
    /// Null: the system's own font.
    virtual void SetTreeFont(IFontDisp* font) = 0;
    /// The tree's mouse icon, empty when there is none.
    virtual ComPtr<IPictureDisp> TreeMouseIcon() = 0;
    virtual void SetTreeMouseIcon(IPictureDisp* picture) = 0;

    /// True: the control raises no events until the matching call with false; these nest.
    virtual void FreezeEvents(bool freeze) = 0;
};

}  // namespace sylvex
