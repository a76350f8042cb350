#pragma once

#include <string>

#include "diagnostics/trap.h"
#include "platform/system.h"

namespace sylvex {

/// The operating system's name as files' icons depend on it; empty for the NT family above 5.
std::wstring getVersion(const Module& module, System& system);

/// True on the systems where files get icons of their own type.
bool CheckVersion(const Module& module, System& system);

}  // namespace sylvex
