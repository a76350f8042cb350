#pragma once

#include <windows.h>

#include <functional>

namespace sylvex::test {

/// Ways to fail that end a program when nobody minds them.
enum class Fault {
    Read,
    Write,
    CallNowhere,
    Divide,
    Illegal,
    Privileged,
    Breakpoint,
    FloatDivide,
    CopyForeign,
    RaiseForGood,
    RaiseNested,
    RaiseLanguage,
    RaiseUnmarked,
    OverflowStack,
};

/// Commits the fault in the calling thread. Returns when somebody made execution go on behind it.
void Commit(Fault fault);

/// An address at which nothing may be read, written or run.
void* Nowhere();

/// Runs `body` below a frame with a handler that takes every exception; gives the code of the one it took, or 0.
/// There is none in 32 bits.
DWORD TryInFrame(const std::function<void()>& body);

/// Runs `body` as a host with a crash handler of its own does: gives the code of the exception that got as far as the
/// process's unhandled-exception filter, 0 when none did.
DWORD UnhandledIn(const std::function<void()>& body);

}  // namespace sylvex::test
