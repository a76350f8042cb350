#pragma once

#include <windows.h>

#include "platform/exception_guard.h"

namespace sylvex {

/// Puts the guard of this platform into force for the whole module, and keeps some stack of the calling thread back
/// for the handling of an overflow. Registers nothing with the process: the guard is
/// a handler of the stack frame that runs the body, so it is gone when the body has ended.
void InstallExceptionGuard(const ExceptionListener& listener);

// What both processors' guards share.

/// Whether an exception that reached the guard is to be converted. Our own language's, notices to debuggers and
/// unwinding are not; those of other languages mean nothing to the frames outside of the guard.
bool IsConverted(const EXCEPTION_RECORD& record) noexcept;

/// The innermost record's code.
DWORD InnermostCode(const EXCEPTION_RECORD& record) noexcept;

/// Whether a stack overflow leaves enough room above `frame` for the report that follows it.
bool HasRoomFor(const EXCEPTION_RECORD& record, const void* frame) noexcept;

/// Whether an address is code or data of this module.
bool IsOwn(const void* address) noexcept;

/// The guard of this processor.
void RunGuarded(void (*run)(void*), void* data);

}  // namespace sylvex

/// Cleans up what the exception left in the processor and throws. Called from where the exception was met.
extern "C" [[noreturn]] void SylvexRaise(DWORD code);
