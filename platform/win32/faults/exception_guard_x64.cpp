#ifdef __x86_64__

#include "platform/win32/faults/exception_guard.h"
#include "platform/win32/faults/exception_tables.h"

// clang-format off
asm(R"(
    .text

    # void SylvexRunGuarded(void (*run)(void*), void* data)
    .globl SylvexRunGuarded
    .def SylvexRunGuarded; .scl 2; .type 32; .endef
    .seh_proc SylvexRunGuarded
SylvexRunGuarded:
    subq $40, %rsp
    .seh_stackalloc 40
    .seh_endprologue
    movq %rcx, %rax
    movq %rdx, %rcx
    call *%rax
    nop
    addq $40, %rsp
    ret
    # Where the stack is unwound to when no nearer frame can throw. The code is in the high half of rax.
    .globl SylvexRaiseInGuard
SylvexRaiseInGuard:
    shrq $32, %rax
    movl %eax, %ecx
    call SylvexRaise
    ud2
    .seh_handler SylvexExceptionHandler, @except
    .seh_endproc

    # Entered by unwinding, with the stack of the frame that is to throw. The code is in the high half of rax, in the
    # low half the distance in this module of the place that seems to call.
    .globl SylvexRaiseInFrame
    .def SylvexRaiseInFrame; .scl 2; .type 32; .endef
    .seh_proc SylvexRaiseInFrame
SylvexRaiseInFrame:
    movl %eax, %edx
    leaq __ImageBase(%rip), %rcx
    addq %rcx, %rdx
    pushq %rdx
    pushq %rbp
    .seh_pushreg %rbp
    movq %rsp, %rbp
    .seh_setframe %rbp, 0
    .seh_endprologue
    andq $-16, %rsp
    subq $32, %rsp
    shrq $32, %rax
    movl %eax, %ecx
    call SylvexRaise
    ud2
    .seh_endproc
)");
// clang-format on

extern "C" {
extern const IMAGE_DOS_HEADER __ImageBase;
void SylvexRunGuarded(void (*run)(void*), void* data);
void SylvexRaiseInGuard();
void SylvexRaiseInFrame();
/// The handler of every C++ frame of this module; only its address is wanted.
void __gxx_personality_seh0();
}

namespace sylvex {

namespace {

/// A frame that can throw, and how it is made to: the address to unwind to, and what is handed over there.
struct Thrower {
    void* frame;
    void (*entry)();
    DWORD64 place;
};

DWORD64 ModuleStart() noexcept
{
    return reinterpret_cast<DWORD64>(&__ImageBase);
}

/// Walks from the exception out to the guard.
class Walk {
public:
    Walk(const CONTEXT& exception, void* guard)
        : m_context(exception), m_guard{guard, &SylvexRaiseInGuard, 0}, m_nearest(m_guard)
    {
    }

    /// The nearest frame from which an exception passes every frame up to the guard. Frames inside of it are left
    /// without clean-up: those of other modules (an exception of ours may mean anything to them) and those whose
    /// tables would end the program.
    Thrower Nearest() noexcept
    {
        while (m_context.Rsp < reinterpret_cast<DWORD64>(m_guard.frame) && Step())
            m_called = true;
        return m_nearest;
    }

private:
    bool Step() noexcept
    {
        const DWORD64 place = m_context.Rip;
        DWORD64 module = 0;
        RUNTIME_FUNCTION* const function = RtlLookupFunctionEntry(place, &module, nullptr);
        if (!function) {
            // As the platform does: code without tables keeps nothing on the stack, such as a call that went nowhere.
            m_nearest = m_guard;
            m_context.Rip = *reinterpret_cast<const DWORD64*>(m_context.Rsp);
            m_context.Rsp += sizeof(DWORD64);
            return true;
        }
        void* table = nullptr;
        DWORD64 frame = 0;
        const auto handler =
            RtlVirtualUnwind(UNW_FLAG_EHANDLER, module, place, function, &m_context, &table, &frame, nullptr);
        if (reinterpret_cast<void*>(frame) == m_guard.frame) return false;
        if (module != ModuleStart()) {
            m_nearest = m_guard;
        } else if (reinterpret_cast<void (*)()>(handler) == &__gxx_personality_seh0) {
            Consider(place - module - function->BeginAddress, place - module, table, frame);
        }
        return true;
    }

    void Consider(DWORD64 offset, DWORD64 place, const void* table, DWORD64 frame) noexcept
    {
        // A call is left at the instruction after it, an instruction at fault at itself. The unwinder takes what it
        // finds for the former.
        const DWORD64 before = m_called ? 1 : 0;
        const Coverage coverage = CoverageOf(static_cast<const std::uint8_t*>(table), offset - before);
        if (coverage == Coverage::Gap) {
            m_nearest = m_guard;
        } else if (coverage == Coverage::Handled && m_nearest.frame == m_guard.frame) {
            m_nearest = {reinterpret_cast<void*>(frame), &SylvexRaiseInFrame, place + 1 - before};
        }
    }

    CONTEXT m_context;
    Thrower m_guard;
    Thrower m_nearest;
    bool m_called = false;
};

// Where the stack has overflowed there is no room to unwind it: the guard keeps no register, so the registers of its
// caller, which the platform has found already, are its own.
void ContinueInGuard(CONTEXT& context, const CONTEXT& caller, void* guard, DWORD64 handedOver) noexcept
{
    const DWORD flags = context.ContextFlags;
    context = caller;
    context.ContextFlags = flags;
    context.Rsp = reinterpret_cast<DWORD64>(guard);
    context.Rip = reinterpret_cast<DWORD64>(&SylvexRaiseInGuard);
    context.Rax = handedOver;
}

// A frame of its own, so that its contexts take no room from the handling of a stack overflow.
[[gnu::noinline]] Thrower NearestThrower(const CONTEXT& exception, void* guard) noexcept
{
    return Walk(exception, guard).Nearest();
}

}  // namespace

void RunGuarded(void (*run)(void*), void* data)
{
    SylvexRunGuarded(run, data);
}

}  // namespace sylvex

extern "C" EXCEPTION_DISPOSITION SylvexExceptionHandler(EXCEPTION_RECORD* record, void* guard, CONTEXT* context,
                                                        DISPATCHER_CONTEXT* dispatcher)
{
    using namespace sylvex;
    if (!IsConverted(*record) || !HasRoomFor(*record, guard)) return ExceptionContinueSearch;
    const DWORD64 code = DWORD64{InnermostCode(*record)} << 32;
    if (record->ExceptionCode == EXCEPTION_STACK_OVERFLOW) {
        ContinueInGuard(*context, *dispatcher->ContextRecord, guard, code);
        return ExceptionContinueExecution;
    }
    const Thrower thrower = NearestThrower(*context, guard);
    const DWORD64 handedOver = code | thrower.place;
    // Runs the clean-up of the frames that are left, as far as they heed the platform's own unwinding.
    RtlUnwindEx(thrower.frame, reinterpret_cast<void*>(thrower.entry), nullptr, reinterpret_cast<void*>(handedOver),
                dispatcher->ContextRecord, dispatcher->HistoryTable);
    return ExceptionContinueSearch;
}

#endif
