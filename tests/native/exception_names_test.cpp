#include <gtest/gtest.h>

#include "diagnostics/exception_filter.h"
#include "diagnostics/exception_names.h"
#include "diagnostics/trap.h"

namespace sylvex {
namespace {

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
