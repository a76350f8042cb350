// What becomes of processor exceptions inside procedures under the trap, without the component around them.

#include <windows.h>

#include <gtest/gtest.h>

#include <float.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <string>

#include "diagnostics/exception_filter.h"
#include "diagnostics/trap.h"
#include "platform/win32/faults/exception_guard.h"
#include "tests/component/faults.h"
#include "tests/simulated/simulated_desktop.h"

namespace sylvex::test {
namespace {

/// Faults in another module's code, whose functions the unwinder does not pass in 32 bits: there the rest of the
/// procedure is left as it is.
bool IsCleanedUp(Fault fault)
{
    constexpr Fault kForeign[] = {Fault::CopyForeign, Fault::RaiseForGood, Fault::RaiseLanguage, Fault::RaiseUnmarked};
    return sizeof(void*) == 8 || std::find(std::begin(kForeign), std::end(kForeign), fault) == std::end(kForeign);
}

class Procedures : public Module {
public:
    Procedures()
    {
        desktop.reporter.Install(L"");
        InstallExceptionFilter(&InstallExceptionGuard);
    }
    ~Procedures() override
    {
        // The other tests are as they would be without a component in this process.
        g_exceptionGuard = &RunUnguarded;
        CurrentErrorState().vantorHasInitialised = false;
    }
    const wchar_t* Name() const override { return L"P"; }
    void DumpVariables(Dump&) const override {}
    Reporter& ReportTo() const override { return Desktop().Get().reporter; }
    MessageBoxes& Boxes() const override { return Desktop().Get().boxes; }

    /// Runs `body` two procedures deep, with things to clean up on the way.
    long Run(const std::function<void()>& body)
    {
        try {
            Trapped(*this, L"Outer", kNone, kNone, [&](int&) {
                const std::shared_ptr<int> outer = Alive();
                Trapped(*this, L"Inner", kNone, kNone, [&](int& line) {
                    const std::shared_ptr<int> inner = Alive();
                    line = 7;
                    body();
                    line = 8;
                });
            });
        } catch (const RuntimeError& error) {
            return error.number;
        }
        return 0;
    }
    std::wstring Reports()
    {
        std::wstring text;
        for (const ErrorReport& report : desktop.reporter.Reports())
            text += report.procedure + L"(" + std::to_wstring(report.line) + L") " + std::to_wstring(report.number) +
                    L" " + report.description + L"; ";
        return text;
    }
    std::shared_ptr<int> Alive()
    {
        ++alive;
        return {&alive, [](int* count) { --*count; }};
    }

    SimulatedDesktop desktop;
    int alive = 0;

private:
    SimulatedDesktop& Desktop() const { return const_cast<SimulatedDesktop&>(desktop); }
};

std::wstring Levels(const wchar_t* told)
{
    return std::wstring(L"Inner(7) ") + told + L"; Outer(1) 65535 Application-defined or object-defined error; ";
}

TEST(ExceptionGuard, FaultsBecomeNumberedErrorsAtEveryLevelAndLeaveNothingBehind)
{
    const struct {
        Fault fault;
        const wchar_t* told;
    } cases[] = {{Fault::Read, L"10005 Access Violation"},
                 {Fault::Write, L"10005 Access Violation"},
                 {Fault::CallNowhere, L"10005 Access Violation"},
                 {Fault::CopyForeign, L"10005 Access Violation"},
                 {Fault::Divide, L"10132 Integer Divide By Zero"},
                 {Fault::Illegal, L"10013 Illegal Instruction"},
                 {Fault::Privileged, L"10134 Privileged Instruction"},
                 {Fault::Breakpoint, L"10003 Breakpoint"},
                 {Fault::FloatDivide, L"10142 Divide By Zero"},
                 {Fault::RaiseForGood, L"10032 Unknown (&HC0000420)"},
                 {Fault::RaiseNested, L"10132 Integer Divide By Zero"},
                 {Fault::RaiseLanguage, L"10099 Unknown (&HE06D7363)"},
                 {Fault::RaiseUnmarked, L"12254 Unknown (&HEEDFADE)"}};
    const unsigned arithmetic = _controlfp(0, 0);
    for (int round = 0; round < 2; ++round) {
        for (const auto& [fault, told] : cases) {
            Procedures procedures;
            EXPECT_EQ(procedures.Run([f = fault] { Commit(f); }), 65535);
            EXPECT_EQ(procedures.Reports(), Levels(told));
            EXPECT_EQ(CurrentErrorState().vantorErrorSource, L"Sylvex");
            EXPECT_EQ(procedures.alive == 0, IsCleanedUp(fault)) << static_cast<int>(fault);
            _controlfp(arithmetic, _MCW_EM);
        }
    }
}

TEST(ExceptionGuard, TheInnermostReportNamesTheFilterAsTheSource)
{
    Procedures procedures;
    procedures.Run([] { Commit(Fault::Read); });
    EXPECT_NE(procedures.desktop.reporter.Reports()[0].variables.find(
                  L"<vantorErrorSource>vantorExceptionFilter</vantorErrorSource>"),
              std::wstring::npos);
}

TEST(ExceptionGuard, AStackOverflowIsReportedWhereThereIsRoomAgain)
{
    for (int round = 0; round < 3; ++round) {
        Procedures procedures;
        EXPECT_EQ(procedures.Run([] { Commit(Fault::OverflowStack); }), 65535);
        EXPECT_EQ(procedures.Reports(), Levels(L"10237 Stack Overflow"));
    }
}

// A procedure that calls itself is reported from where the stack has room, not a thousand times at its end.
TEST(ExceptionGuard, ProceduresAtTheEndOfTheStackAreSkipped)
{
    Procedures procedures;
    const std::function<void(int)> recurse = [&](int depth) {
        Trapped(procedures, L"Recurse", VARIABLES(depth), kNone, [&](int&) { recurse(depth + 1); });
    };
    EXPECT_EQ(procedures.Run([&] { recurse(0); }), 65535);
    const auto& reports = procedures.desktop.reporter.Reports();
    ASSERT_GT(reports.size(), 2u);
    EXPECT_EQ(reports.front().number, 10237);
    EXPECT_EQ(reports.front().procedure, L"Recurse");
    EXPECT_EQ(reports.back().procedure, L"Outer");
}

TEST(ExceptionGuard, AFailingPlaceThatNoCleanUpCoversIsStillAnError)
{
    Procedures procedures;
    const auto noexceptCopy = []() noexcept { Commit(Fault::Read); };
    EXPECT_EQ(procedures.Run([&] { noexceptCopy(); }), 65535);
    EXPECT_EQ(procedures.Reports(), Levels(L"10005 Access Violation"));
}

TEST(ExceptionGuard, LeavesAloneWhatIsNoFault)
{
    // A thread's name, a text for the debugger, a plain status.
    for (const DWORD code : {0x406D1388u, 0x40010006u, 0x000006BAu}) {
        Procedures procedures;
        const DWORD arrived = UnhandledIn([&] { procedures.Run([code] { RaiseException(code, 0, 0, nullptr); }); });
        // Some systems take the notices themselves.
        EXPECT_TRUE(arrived == code || arrived == 0) << std::hex << arrived;
        EXPECT_EQ(procedures.Reports(), L"");
    }
}

TEST(ExceptionGuard, ConvertsOnlyInsideProceduresAndOnlyOnThreadsThatAskedForIt)
{
    Procedures procedures;
    EXPECT_EQ(UnhandledIn([] { Commit(Fault::Read); }), EXCEPTION_ACCESS_VIOLATION);
    procedures.Run([] {});
    EXPECT_EQ(UnhandledIn([] { Commit(Fault::Divide); }), EXCEPTION_INT_DIVIDE_BY_ZERO);
    CurrentErrorState().vantorHasInitialised = false;
    EXPECT_EQ(UnhandledIn([&] { procedures.Run([] { Commit(Fault::Read); }); }), EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(procedures.Reports(), L"");
}

LONG CALLBACK SkipIllegal(EXCEPTION_POINTERS* exception)
{
    if (exception->ExceptionRecord->ExceptionCode != EXCEPTION_ILLEGAL_INSTRUCTION) return EXCEPTION_CONTINUE_SEARCH;
#ifdef __x86_64__
    exception->ContextRecord->Rip += 2;
#else
    exception->ContextRecord->Eip += 2;
#endif
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(ExceptionGuard, HandlersNearerToTheFaultComeFirst)
{
    Procedures procedures;
#ifdef __x86_64__
    DWORD taken = 0;
    EXPECT_EQ(procedures.Run([&] { taken = TryInFrame([] { Commit(Fault::Read); }); }), 0);
    EXPECT_EQ(taken, EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(procedures.Run([&] { taken = TryInFrame([] { Commit(Fault::RaiseLanguage); }); }), 0);
    EXPECT_EQ(taken, 0xE06D7363u);
#endif
    void* const handler = AddVectoredExceptionHandler(1, &SkipIllegal);
    EXPECT_EQ(procedures.Run([] { Commit(Fault::Illegal); }), 0);
    RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(procedures.Reports(), L"");
#ifdef __x86_64__
    // A handler outside the procedure is not asked.
    EXPECT_EQ(TryInFrame([&] { EXPECT_EQ(procedures.Run([] { Commit(Fault::Read); }), 65535); }), 0u);
#endif
}

}  // namespace
}  // namespace sylvex::test
