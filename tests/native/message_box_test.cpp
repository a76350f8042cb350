#include <gtest/gtest.h>

#include "diagnostics/message_box.h"
#include "tests/simulated/simulated_desktop.h"

namespace sylvex {
namespace {

TEST(MessageBoxTest, FailuresAreReportedAndLeaveNoTimer)
{
    SimulatedDesktop desktop;
    MManipulateMsgBox module{desktop.Get()};
    const WindowHandle owner = desktop.windows.NewWindow();
    bool ticked = true;
    desktop.reporter.Install(L"");
    for (int call = 1;; ++call) {
        const std::size_t before = desktop.reporter.Reports().size();
        desktop.boxes.WhileNextOpen([&] { desktop.boxTools.TickTimers(); });
        desktop.gate.FailCall(call);
        try {
            module.MessageBox(owner, L"Text", kBoxOk, L"Title", true, L"x", ticked);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number, kPassedOn);
        }
        desktop.gate.FailNone();
        EXPECT_EQ(desktop.boxTools.Timers(), 0) << call;
        if (desktop.gate.Failed().empty()) break;
        if (desktop.gate.Failed() == "Reporter::Report") continue;
        ASSERT_EQ(desktop.reporter.Reports().size(), before + 1) << desktop.gate.Failed();
        EXPECT_EQ(desktop.reporter.Reports().back().module, L"MManipulateMsgBox");
        EXPECT_NE(desktop.reporter.Reports().back().variables.find(L"<m_sPrompt>Text</m_sPrompt>"), std::wstring::npos);
    }
}

TEST(CentredCornerTest, KeepsABoxOnTheScreenAndItsButtonsInSight)
{
    const Rect area{-1280, 40, 0, 1024};
    const auto corner = [&](Size box, Rect over) { return CentredCorner(box, over, area); };
    EXPECT_EQ(corner({300, 150}, {-900, 300, -500, 700}), (Point{-850, 425}));
    EXPECT_EQ(corner({300, 150}, {-1400, 0, -1270, 60}), (Point{-1280, 40}));
    EXPECT_EQ(corner({300, 150}, {-60, 1000, 200, 1200}), (Point{-300, 874}));
    EXPECT_EQ(corner({1480, 1184}, {-60, 1000, 200, 1200}), (Point{-1380, -160}));
}

}  // namespace
}  // namespace sylvex
