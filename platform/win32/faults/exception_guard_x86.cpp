#ifdef __i386__

#include <unwind.h>

#include "platform/win32/faults/exception_guard.h"
#include "platform/win32/faults/exception_tables.h"

namespace sylvex {

namespace {

struct Registration;
using Handler = EXCEPTION_DISPOSITION(__cdecl*)(EXCEPTION_RECORD*, Registration*, CONTEXT*, void*);

EXCEPTION_DISPOSITION __cdecl OnException(EXCEPTION_RECORD* record, Registration* guard, CONTEXT* context, void*);

Registration* TopOfChain() noexcept
{
    return reinterpret_cast<Registration*>(__readfsdword(0));
}

/// The guard's link in the thread's chain of handlers, whose first two members are the platform's.
struct Registration {
    Registration() noexcept { __writefsdword(0, reinterpret_cast<DWORD>(this)); }
    // Handlers of frames that an exception of ours has passed are dropped with this one.
    ~Registration() { __writefsdword(0, reinterpret_cast<DWORD>(previous)); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

    Registration* previous = TopOfChain();
    Handler handler = &OnException;
    DWORD code = 0;
    void* place[5] = {};
};

/// Leaves all frames inside the guard without clean-up, but for handlers of the platform's own kind, and throws there.
[[noreturn]] void RaiseInGuard(Registration* guard)
{
    // The platform keeps only ebp and esp.
    Registration* target = guard;
    auto unwind = &RtlUnwind;
    asm volatile("pushl $0\n\tpushl $0\n\tpushl $0\n\tpushl %0\n\tcall *%1"
                 : "+a"(target), "+c"(unwind)
                 :
                 : "ebx", "edx", "esi", "edi", "memory", "cc");
    __builtin_longjmp(guard->place, 1);
}

/// What a walk from the place of an exception to its guard has met.
struct Walk {
    _Unwind_Ptr guard;
    bool arrived = false;
    bool gap = false;
};

_Unwind_Reason_Code OnFrame(_Unwind_Context* context, void* data)
{
    Walk& walk = *static_cast<Walk*>(data);
    walk.arrived = _Unwind_GetCFA(context) > walk.guard;
    if (walk.arrived) return _URC_NORMAL_STOP;
    int exact = 0;
    const _Unwind_Ptr place = _Unwind_GetIPInfo(context, &exact) - (exact ? 0 : 1);
    const auto* const table = static_cast<const std::uint8_t*>(_Unwind_GetLanguageSpecificData(context));
    if (table) walk.gap |= CoverageOf(table, place - _Unwind_GetRegionStart(context)) == Coverage::Gap;
    return _URC_NO_REASON;
}

}  // namespace

}  // namespace sylvex

/// Entered as if the instruction at fault had called it.
extern "C" [[noreturn]] void __attribute__((used, fastcall)) SylvexRaiseIfPossible(DWORD code, void* guard)
{
    using namespace sylvex;
    Registration* const registration = static_cast<Registration*>(guard);
    Walk walk{reinterpret_cast<_Unwind_Ptr>(guard)};
    // Other modules' frames, which the unwinder cannot pass, end the walk before the guard.
    _Unwind_Backtrace(&OnFrame, &walk);
    if (walk.arrived && !walk.gap && TopOfChain() == registration) SylvexRaise(code);
    registration->code = code;
    RaiseInGuard(registration);
}

asm(R"(
    .text
    .globl _SylvexRaiseInFrame
    .def _SylvexRaiseInFrame; .scl 2; .type 32; .endef
_SylvexRaiseInFrame:
    .cfi_startproc
    pushl %ebp
    .cfi_def_cfa_offset 8
    .cfi_offset 5, -8
    movl %esp, %ebp
    .cfi_def_cfa_register 5
    andl $-16, %esp
    call @SylvexRaiseIfPossible@8
    ud2
    .cfi_endproc
)");

extern "C" void SylvexRaiseInFrame();

namespace sylvex {

namespace {

/// Whether the exception is a call to an address without code; its return address is then on top of the stack.
bool IsCallToNowhere(const EXCEPTION_RECORD& record, const CONTEXT& context) noexcept
{
    return record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.ExceptionInformation[1] == context.Eip;
}

/// Has the thread continue where the exception was met, with a call to the thrower.
void ContinueInThrower(const EXCEPTION_RECORD& record, Registration* guard, CONTEXT& context) noexcept
{
    if (!IsCallToNowhere(record, context)) {
        // The unwinder takes what it finds for the instruction after a call.
        context.Esp -= sizeof(DWORD);
        *reinterpret_cast<DWORD*>(context.Esp) = context.Eip + 1;
    }
    context.Ecx = InnermostCode(record);
    context.Edx = reinterpret_cast<DWORD>(guard);
    context.Eip = reinterpret_cast<DWORD>(&SylvexRaiseInFrame);
}

EXCEPTION_DISPOSITION __cdecl OnException(EXCEPTION_RECORD* record, Registration* guard, CONTEXT* context, void*)
{
    if (!IsConverted(*record) || !HasRoomFor(*record, guard)) return ExceptionContinueSearch;
    const bool own = IsOwn(reinterpret_cast<const void*>(context->Eip)) || IsCallToNowhere(*record, *context);
    const bool continuable = (record->ExceptionFlags & EXCEPTION_NONCONTINUABLE) == 0;
    if (!own || !continuable || record->ExceptionCode == EXCEPTION_STACK_OVERFLOW) {
        guard->code = InnermostCode(*record);
        RaiseInGuard(guard);
    }
    ContinueInThrower(*record, guard, *context);
    return ExceptionContinueExecution;
}

}  // namespace

void RunGuarded(void (*run)(void*), void* data)
{
    Registration guard;
    if (__builtin_setjmp(guard.place) == 0) {
        run(data);
    } else {
        // The jump brings back none of these; named here, they are kept on the stack for whoever catches.
        asm volatile("" : : : "ebx", "esi", "edi");
        SylvexRaise(guard.code);
    }
}

}  // namespace sylvex

#endif
