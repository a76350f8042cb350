#pragma once

#include <unknwn.h>
#include <windows.h>

namespace sylvex {

class ControlCore;

/// A part of the control's object that works on what all its parts share; the object answers these.
class ControlPart {
protected:
    ~ControlPart() = default;
    /// Not to be called while the object is being made or destroyed.
    virtual ControlCore& Core() = 0;
    /// The object as the world knows it, not counted.
    virtual IUnknown* Identity() = 0;
};

}  // namespace sylvex
