#include "platform/win32/faults/exception_guard.h"

#include <malloc.h>

#include <cstddef>
#include <cstdlib>

// The linker's name for the first byte of this module.
extern "C" const IMAGE_DOS_HEADER __ImageBase;

namespace sylvex {

namespace {

std::atomic<const ExceptionListener*> g_listener = nullptr;

constexpr ULONG kRoomForHandling = 32 * 1024;

// A report calls other people's code, and without a reporter it opens a message box.
constexpr ULONG kRoomForReports = 128 * 1024;

/// Where the block of address space begins that holds an address: a thread's whole stack, or a module.
const std::byte* BlockOf(const void* address) noexcept
{
    MEMORY_BASIC_INFORMATION block{};
    VirtualQuery(address, &block, sizeof(block));
    return static_cast<const std::byte*>(block.AllocationBase);
}

/// The exceptions of languages whose codes do not say that they are errors.
bool IsUnmarkedError(DWORD code) noexcept
{
    return code == 0x0EEDFADE || code == 0x0EEDFACE || code == 0x0EEFFACE;
}

bool IsForDebugger(DWORD code) noexcept
{
    return (code == EXCEPTION_BREAKPOINT || code == EXCEPTION_SINGLE_STEP) && IsDebuggerPresent();
}

}  // namespace

void InstallExceptionGuard(const ExceptionListener& listener)
{
    // So that a stack overflow finds room to be handled on this thread. No more than asked for before is no change.
    ULONG guaranteed = kRoomForHandling;
    SetThreadStackGuarantee(&guaranteed);
    g_listener = &listener;
    g_exceptionGuard = &RunGuarded;
}

bool IsConverted(const EXCEPTION_RECORD& record) noexcept
{
    constexpr DWORD kUnwindOrBroken = EXCEPTION_UNWINDING | EXCEPTION_EXIT_UNWIND | EXCEPTION_STACK_INVALID;
    constexpr DWORD kWarningOrError = 0x80000000;
    const DWORD code = record.ExceptionCode;
    if ((record.ExceptionFlags & kUnwindOrBroken) != 0) return false;
    // Our language's exceptions, and notices such as a thread's name or a debugger's text, are no errors by their
    // codes.
    if ((code & kWarningOrError) == 0 && !IsUnmarkedError(code)) return false;
    if (code == STATUS_LONGJUMP || code == STATUS_UNWIND_CONSOLIDATE || IsForDebugger(code)) return false;
    return g_listener.load()->wanted();
}

DWORD InnermostCode(const EXCEPTION_RECORD& record) noexcept
{
    const EXCEPTION_RECORD* innermost = &record;
    while (innermost->ExceptionRecord)
        innermost = innermost->ExceptionRecord;
    return innermost->ExceptionCode;
}

bool HasRoomFor(const EXCEPTION_RECORD& record, const void* frame) noexcept
{
    if (record.ExceptionCode != EXCEPTION_STACK_OVERFLOW) return true;
    return static_cast<const std::byte*>(frame) - BlockOf(frame) > static_cast<std::ptrdiff_t>(kRoomForReports);
}

bool IsOwn(const void* address) noexcept
{
    return BlockOf(address) == reinterpret_cast<const std::byte*>(&__ImageBase);
}

}  // namespace sylvex

void SylvexRaise(DWORD code)
{
    // A floating-point exception stays pending until it is cleared; string instructions may have run backwards.
    asm volatile("fnclex\n\tcld");
    // The page that told of the overflow is a plain page now.
    if (code == EXCEPTION_STACK_OVERFLOW) _resetstkoflw();
    sylvex::g_listener.load()->raise(code);
    std::abort();
}
