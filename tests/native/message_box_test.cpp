#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnostics/message_box.h"
#include "tests/simulated/simulated_desktop.h"

namespace sylvex {
namespace {

using testing::ElementsAre;

class MessageBoxTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    MManipulateMsgBox module{desktop.Get()};
    WindowHandle owner = desktop.windows.NewWindow();
    bool ticked = true;

    MessageBoxTest() { desktop.boxTools.Place(owner, {400, 300, 900, 700}); }
    int Show(bool centred, const std::wstring& check, const std::wstring& caption = L"Title")
    {
        return module.MessageBox(owner, L"Text", kBoxOk, caption, centred, check, ticked);
    }
};

TEST_F(MessageBoxTest, ACentredBoxIsMovedOverItsOwnerAndLeavesNoTimer)
{
    desktop.boxes.Answer(4);
    desktop.boxes.WhileNextOpen([&] { desktop.boxTools.TickTimers(); });
    EXPECT_EQ(Show(true, L""), 4);
    EXPECT_EQ(desktop.boxTools.BoxPlace(), (Rect{500, 425, 800, 575}));
    EXPECT_FALSE(ticked);
    EXPECT_THAT(desktop.boxTools.TakeLines(), ElementsAre("restore", "timer 20483 every 0", "timer 20481 every 10"));
    EXPECT_EQ(desktop.boxTools.Timers(), 0);
    EXPECT_THAT(desktop.boxes.Lines(), ElementsAre("[Title] Text (0)"));
}

TEST_F(MessageBoxTest, WithoutCentringTheBoxStaysAndHasNoCheckBox)
{
    desktop.boxes.WhileNextOpen([&] {
        desktop.boxTools.TickTimers();
        EXPECT_FALSE(desktop.boxTools.CheckText());
    });
    Show(false, L"Never again", L"");
    EXPECT_EQ(desktop.boxTools.BoxPlace(), (Rect{0, 0, 300, 150}));
    EXPECT_FALSE(ticked);
    EXPECT_THAT(desktop.boxTools.TakeLines(), ElementsAre("restore", "timer 20483 every 0"));
    EXPECT_THAT(desktop.boxes.Lines(), ElementsAre("[Host] Text (0)"));
}

TEST_F(MessageBoxTest, TheCheckBoxKeepsTheStateThatTheBoxClosedWith)
{
    for (const int clicks : {0, 1, 2}) {
        desktop.boxes.WhileNextOpen([&] {
            desktop.boxTools.TickTimers();
            EXPECT_EQ(desktop.boxTools.CheckText(), L"&Never again");
            for (int i = 0; i < clicks; ++i)
                EXPECT_TRUE(desktop.boxTools.ClickCheck());
            // The last click is closer to the end than any tick.
        });
        Show(true, L"&Never again");
        EXPECT_EQ(ticked, clicks == 1);
        EXPECT_EQ(desktop.boxTools.BoxPlace(), (Rect{500, 410, 800, 590}));
    }
    EXPECT_EQ(desktop.boxTools.Timers(), 0);
}

TEST_F(MessageBoxTest, BoxesMayCloseAtOnceNestOrLoseTheirOwner)
{
    Show(true, L"x");
    EXPECT_FALSE(ticked);
    desktop.boxes.WhileNextOpen([&] {
        desktop.boxTools.TickTimers();
        desktop.boxTools.ClickCheck();
        bool inner = true;
        desktop.boxes.WhileNextOpen([&] { desktop.boxTools.TickTimers(); });
        module.MessageBox(owner, L"Inner", kBoxOk, L"Title", true, L"y", inner);
        EXPECT_FALSE(inner);
    });
    Show(true, L"x");
    EXPECT_TRUE(ticked);
    desktop.boxes.WhileNextOpen([&] {
        desktop.windows.DestroyWindow(owner);
        desktop.boxTools.TickTimers();
    });
    Show(true, L"x");
    EXPECT_EQ(desktop.boxTools.Timers(), 0);
}

TEST_F(MessageBoxTest, FailuresAreReportedAndLeaveNoTimer)
{
    desktop.reporter.Install(L"");
    for (int call = 1;; ++call) {
        const std::size_t before = desktop.reporter.Reports().size();
        desktop.boxes.WhileNextOpen([&] { desktop.boxTools.TickTimers(); });
        desktop.gate.FailCall(call);
        try {
            Show(true, L"x");
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
