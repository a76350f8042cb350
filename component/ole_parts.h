#pragma once

#include "component/control_core.h"

namespace sylvex {

/// What a container needs of the control: embedding, in-place activation, drawing, saving. A part of the control's
/// object: implements its interfaces and finds them itself, and works on Core().
class OleParts : public ControlPart {
public:
    /// The interface with this identifier, without a reference added; null when it is none of these.
    void* Find(const IID&) { return nullptr; }
};

}  // namespace sylvex
