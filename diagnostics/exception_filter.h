#pragma once

#include <cstdint>

#include "platform/exception_guard.h"

namespace sylvex {

/// Raises the run-time error that an exception with this code becomes.
[[noreturn]] void vantorExceptionFilter(std::uint32_t code);

/// Has the platform convert the exceptions that happen in procedures of the control on the calling thread: `install`
/// puts the platform's guard into force for a listener. A second call on the same thread does nothing.
void InstallExceptionFilter(void (*install)(const ExceptionListener& listener));

}  // namespace sylvex
