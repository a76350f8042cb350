#include <gtest/gtest.h>

#include "diagnostics/exception_filter.h"
#include "diagnostics/exception_names.h"
#include "diagnostics/trap.h"

namespace sylvex {
namespace {

TEST(ExceptionNamesTest, KnownCodesHaveNamesAndUnknownOnesTheirDigits)
{
    EXPECT_EQ(ExceptionName(0x80000001), L"Guard Page Violation");
    EXPECT_EQ(ExceptionName(0xC0000005), L"Access Violation");
    EXPECT_EQ(ExceptionName(0xC000008E), L"Divide By Zero");
    EXPECT_EQ(ExceptionName(0xC0000094), L"Integer Divide By Zero");
    EXPECT_EQ(ExceptionName(0xC000013A), L"Control-C Exit");
    EXPECT_EQ(ExceptionName(0xE06D7363), L"Unknown (&HE06D7363)");
    EXPECT_EQ(ExceptionName(0x0000000C), L"Unknown (&HC)");
    EXPECT_EQ(ExceptionName(0), L"Unknown (&H0)");
}

TEST(ExceptionNamesTest, TheFilterRaisesTheNumberTheNameAndItsOwnSource)
{
    const struct {
        std::uint32_t code;
        long number;
    } cases[] = {
        {0xC0000005, 10005}, {0xC0000094, 10132}, {0xC00000FD, 10237}, {0x80000003, 10003}, {0xE06D7363, 10099}};
    for (const auto& [code, number] : cases) {
        try {
            vantorExceptionFilter(code);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number, number);
            EXPECT_EQ(error.description, ExceptionName(code));
            EXPECT_EQ(error.source, L"vantorExceptionFilter");
        }
    }
}

int g_installed = 0;
const ExceptionListener* g_listener = nullptr;

TEST(ExceptionNamesTest, IsInstalledOncePerThreadAndWantedOnlyThere)
{
    const auto install = [](const ExceptionListener& listener) {
        ++g_installed;
        g_listener = &listener;
    };
    const bool before = CurrentErrorState().vantorHasInitialised;
    CurrentErrorState().vantorHasInitialised = false;
    InstallExceptionFilter(install);
    EXPECT_TRUE(g_listener->wanted());
    InstallExceptionFilter(install);
    EXPECT_EQ(g_installed, 1);
    CurrentErrorState().vantorHasInitialised = false;
    EXPECT_FALSE(g_listener->wanted());
    CurrentErrorState().vantorHasInitialised = before;
}

TEST(GuardedTest, GivesWhatTheBodyGives)
{
    int counter = 4;
    int& same = Guarded([&]() -> int& { return ++counter; });
    EXPECT_EQ(&same, &counter);
    EXPECT_EQ(*Guarded([&] { return std::make_unique<int>(counter); }), 5);
    EXPECT_THROW(Guarded([]() -> std::wstring { throw ElementNotFound(); }), RuntimeError);
}

}  // namespace
}  // namespace sylvex
