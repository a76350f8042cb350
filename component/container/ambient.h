#pragma once

#include "component/container/control_core.h"

namespace sylvex {

/// Whether the container wants no answer to keys and mouse now (as while a program stands at a breakpoint); false when
/// it does not say.
bool IsUserInterfaceDead(const ControlCore& core);

/// A copy of the container's ambient font, or of the system's when it has none: a control that changes its font must
/// not change its container's.
ComPtr<IFontDisp> CopyOfAmbientFont(const ControlCore& core);

}  // namespace sylvex
