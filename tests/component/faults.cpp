#include "tests/component/faults.h"

#include <excpt.h>
#include <float.h>

#include <cstddef>
#include <cstring>

namespace {
DWORD g_taken = 0;
}

extern "C" [[gnu::used]] LONG TakeException(EXCEPTION_POINTERS* exception, void*)
{
    g_taken = exception->ExceptionRecord->ExceptionCode;
    return EXCEPTION_EXECUTE_HANDLER;
}

namespace sylvex::test {
namespace {

// What the compiler must not see through.
volatile int g_zero = 0;
volatile double g_noughts = 0;

[[gnu::noinline]] int Overflow(int depth)
{
    volatile char room[4096];
    room[0] = static_cast<char>(depth);
    return depth < 0 ? room[0] : Overflow(depth + 1) + room[0];
}

// The platform keeps the room that was asked for (SetThreadStackGuarantee) below the page that tells of an overflow.
// Where a stack is committed to its end from the start, that page is laid where the platform would have it.
void LayGuardAsPromised()
{
    ULONG promised = 0;
    SetThreadStackGuarantee(&promised);  // of nothing: asks
    MEMORY_BASIC_INFORMATION stack{};
    VirtualQuery(&promised, &stack, sizeof(stack));
    char* const end = static_cast<char*>(stack.AllocationBase);
    const auto* const thread = reinterpret_cast<const NT_TIB*>(NtCurrentTeb());
    if (static_cast<char*>(thread->StackLimit) - end > static_cast<std::ptrdiff_t>(promised)) return;
    constexpr std::size_t kPage = 4096;
    DWORD before = 0;
    VirtualProtect(end + kPage + promised, 1, PAGE_READWRITE | PAGE_GUARD, &before);
}

void RaiseNested()
{
    EXCEPTION_RECORD inner{};
    inner.ExceptionCode = EXCEPTION_INT_DIVIDE_BY_ZERO;
    EXCEPTION_RECORD middle{};
    middle.ExceptionCode = EXCEPTION_INVALID_HANDLE;
    middle.ExceptionRecord = &inner;
    EXCEPTION_RECORD outer{};
    outer.ExceptionCode = EXCEPTION_ACCESS_VIOLATION;
    outer.ExceptionRecord = &middle;
    // The documented call takes no record.
    const auto raise = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlRaiseException");
    reinterpret_cast<void(WINAPI*)(EXCEPTION_RECORD*)>(reinterpret_cast<void*>(raise))(&outer);
}

void DivideFloat()
{
    const unsigned before = _controlfp(0, 0);
    _controlfp(before & ~static_cast<unsigned>(_EM_ZERODIVIDE), _MCW_EM);
    g_noughts = 1 / g_noughts;
}

// The macros of the handler go on in the plain section.
[[gnu::noinline, gnu::section(".text")]] void CallInFrame(const std::function<void()>& body)
{
#ifdef __x86_64__
    __try1(TakeException);
    body();
    __except1;
#else
    body();
#endif
}

void* g_place[5];
DWORD g_unhandled = 0;

LONG CALLBACK OnUnhandled(EXCEPTION_POINTERS* exception)
{
    g_unhandled = exception->ExceptionRecord->ExceptionCode;
    __builtin_longjmp(g_place, 1);
}

}  // namespace

void* Nowhere()
{
    static void* const page = VirtualAlloc(nullptr, 0x10000, MEM_RESERVE, PAGE_NOACCESS);
    return static_cast<char*>(page) + 0x100;
}

void Commit(Fault fault)
{
    char copy[64];
    switch (fault) {
        case Fault::Read:
            g_zero = *static_cast<volatile int*>(Nowhere());
            break;
        case Fault::Write:
            *static_cast<volatile int*>(Nowhere()) = 1;
            break;
        case Fault::CallNowhere:
            reinterpret_cast<void (*)()>(Nowhere())();
            break;
        case Fault::Divide:
            g_zero = 1 / g_zero;
            break;
        case Fault::Illegal:
            asm volatile("ud2");
            break;
        case Fault::Privileged:
            asm volatile("hlt");
            break;
        case Fault::Breakpoint:
            asm volatile("int3");
            break;
        case Fault::FloatDivide:
            DivideFloat();
            break;
        case Fault::CopyForeign:
            lstrcpynA(copy, static_cast<const char*>(Nowhere()), sizeof(copy));
            std::memmove(copy, Nowhere(), sizeof(copy) - static_cast<std::size_t>(g_zero));
            g_zero = copy[0];
            break;
        case Fault::RaiseForGood:
            RaiseException(0xC0000420, EXCEPTION_NONCONTINUABLE, 0, nullptr);
            break;
        case Fault::RaiseNested:
            RaiseNested();
            break;
        case Fault::RaiseLanguage:
            RaiseException(0xE06D7363, EXCEPTION_NONCONTINUABLE, 0, nullptr);
            break;
        case Fault::RaiseUnmarked:
            RaiseException(0x0EEDFADE, EXCEPTION_NONCONTINUABLE, 0, nullptr);
            break;
        case Fault::OverflowStack:
            LayGuardAsPromised();
            g_zero = Overflow(0);
            break;
    }
}

DWORD TryInFrame(const std::function<void()>& body)
{
    g_taken = 0;
    CallInFrame(body);
    return g_taken;
}

DWORD UnhandledIn(const std::function<void()>& body)
{
    g_unhandled = 0;
    const auto before = SetUnhandledExceptionFilter(&OnUnhandled);
#ifdef __i386__
    const DWORD chain = __readfsdword(0);
#endif
    if (__builtin_setjmp(g_place) == 0) body();
#ifdef __i386__
    __writefsdword(0, chain);
#endif
    SetUnhandledExceptionFilter(before);
    return g_unhandled;
}

}  // namespace sylvex::test
