#pragma once

namespace sylvex {

/// What the component does when it starts on a thread; called before any other procedure of the control. Raises
/// nothing on later calls and does nothing then.
void Main();

}  // namespace sylvex
