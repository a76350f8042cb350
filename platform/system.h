#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/types.h"

namespace sylvex {

struct SystemVersion {
    unsigned platform = 2;  ///< 1 the 95 family, 2 the NT family
    unsigned major = 6;
    unsigned minor = 1;
};

/// Facts about the machine and its pointer.
class System {
public:
    virtual ~System() = default;
    virtual SystemVersion Version() = 0;
    /// A system metric by its platform number (68, 69: drag thresholds in pixels).
    virtual int Metric(int number) = 0;
    /// The default (unnamed) value of a key below the class root, nothing when it cannot be opened.
    virtual std::optional<std::wstring> ClassRootValue(const std::wstring& key) = 0;
    /// The pointer in screen pixels.
    virtual Point CursorPosition() = 0;
    /// Sets the screen's mouse pointer to the default one.
    virtual void ResetPointer() = 0;
    /// Milliseconds since the system started, on the clock that input messages carry; wraps around.
    virtual std::uint32_t Now() = 0;
    /// When the input that is being handled was made, on the same clock.
    virtual std::uint32_t InputTime() = 0;
    /// The host program's name, without folder and extension.
    virtual std::wstring ProgramName() = 0;
};

}  // namespace sylvex
