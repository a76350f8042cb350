#pragma once

#include <windows.h>

namespace sylvex {

/// Whether a key message for a window of the control is the tree's (`editing`: the label's edit box's) own, rather than
/// one that the container may use first.
bool BelongsToTree(const MSG& message, bool editing);

/// The keys held down, as a container's TranslateAccelerator takes them: 1 shift, 2 control, 4 alt.
DWORD PressedModifiers();

}  // namespace sylvex
