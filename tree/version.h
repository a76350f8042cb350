#pragma once

#include <string>

#include "platform/platform.h"

namespace sylvex {

/// The operating system's name as files' icons depend on it; empty for the NT family above 5.
std::wstring getVersion(Platform& platform);

/// True on the systems where files get icons of their own type.
bool CheckVersion(Platform& platform);

}  // namespace sylvex
