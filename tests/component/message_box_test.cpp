#include <windows.h>

// The module's procedure has the name that this macro changes.
#undef MessageBox

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "diagnostics/message_box.h"
#include "platform/win32/win32_platform.h"

namespace sylvex::test {
namespace {

constexpr const wchar_t* kCaption = L"Sylvex box under test";

RECT PlaceOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

POINT MiddleOf(const RECT& place)
{
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

HWND CheckIn(HWND box)
{
    return GetDlgItem(box, 0x5001);
}

void CALLBACK CloseAtOnce(HWND form, UINT, UINT_PTR timer, DWORD)
{
    KillTimer(form, timer);
    if (const HWND box = FindWindowW(L"#32770", kCaption)) EndDialog(box, IDOK);
}

void Press(BYTE key)
{
    for (const DWORD flags : {0u, static_cast<unsigned>(KEYEVENTF_KEYUP)})
        keybd_event(key, 0, flags, 0);
}

/// A real box over a real form, with hands that act while it is open.
class RealMessageBox : public testing::Test {
protected:
    RealMessageBox() : m_form(MakeForm({200, 150, 800, 600})) {}
    ~RealMessageBox() override { DestroyWindow(m_form); }

    static HWND MakeForm(const RECT& place)
    {
        const HWND form = CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE, place.left,
                                          place.top, place.right - place.left, place.bottom - place.top, nullptr,
                                          nullptr, GetModuleHandleW(nullptr), nullptr);
        SetForegroundWindow(form);
        return form;
    }
    /// Shows a box; the steps run one after another while it is open, 80 ms apart, and it is closed behind the last.
    int Show(HWND owner, bool centred, const std::wstring& check, std::vector<std::function<void(HWND)>> steps = {},
             const std::wstring& caption = kCaption, const std::wstring& text = L"Some text of the box")
    {
        std::size_t step = 0;
        const auto hands = m_platform.Get().timers.Create([&] {
            const HWND box = FindWindowW(L"#32770", caption.c_str());
            if (!box) return;
            if (step < steps.size()) return steps[step++](box);
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        });
        hands->SetInterval(80);
        hands->SetEnabled(true);
        const int result =
            m_module.MessageBox(reinterpret_cast<WindowHandle>(owner), text, kBoxOk, caption, centred, check, m_ticked);
        EXPECT_EQ(step, steps.size());
        return result;
    }
    /// Whether a timer of the module is still set for this window.
    static bool TimersLeft(HWND window)
    {
        const BOOL centring = KillTimer(window, 0x5001);
        const BOOL reading = KillTimer(window, 0x5003);
        return centring || reading;
    }

    Win32Platform m_platform;
    MManipulateMsgBox m_module{m_platform.Get()};
    HWND m_form;
    bool m_ticked = true;
};

TEST_F(RealMessageBox, IsCentredOverItsOwnerButStaysOnTheScreenAndLeavesNoTimer)
{
    const HWND child = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 20, 40, 200, 300, m_form, nullptr,
                                       GetModuleHandleW(nullptr), nullptr);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(m_form, MONITOR_DEFAULTTONEAREST), &screen);
    const RECT& area = screen.rcWork;
    const HWND beyond = MakeForm({area.right - 100, area.bottom - 60, area.right + 400, area.bottom + 200});
    for (const HWND owner : {m_form, child, beyond, HWND{nullptr}}) {
        RECT box{};
        EXPECT_EQ(Show(owner, true, L"", {[&](HWND shown) {
                           box = PlaceOf(shown);
                           EXPECT_EQ(CheckIn(shown), nullptr);
                           EXPECT_FALSE((owner == m_form || owner == child) && IsWindowEnabled(m_form));
                       }}),
                  IDOK);
        EXPECT_FALSE(m_ticked);
        EXPECT_FALSE(TimersLeft(owner));
        if (owner == beyond) {
            EXPECT_TRUE(box.left >= area.left && box.top >= area.top);
            EXPECT_TRUE(box.right <= area.right && box.bottom <= area.bottom);
            continue;
        }
        const POINT middle = MiddleOf(owner ? PlaceOf(owner) : area);
        EXPECT_NEAR(MiddleOf(box).x, middle.x, 1);
        EXPECT_NEAR(MiddleOf(box).y, middle.y, 1);
    }
    DestroyWindow(beyond);
}

TEST_F(RealMessageBox, TheCheckBoxIsReachedAndTickedByTheKeyboard)
{
    RECT room{};
    const int result =
        Show(m_form, true, L"&Do not tell me again, whatever happens to the folders in this tree",
             {[&](HWND box) {
                  const HWND check = CheckIn(box);
                  ASSERT_NE(check, nullptr);
                  EXPECT_EQ(GetWindowLongPtrW(check, GWL_STYLE), 0x50010003);
                  EXPECT_EQ(SendMessageW(check, WM_GETFONT, 0, 0), SendMessageW(box, WM_GETFONT, 0, 0));
                  const RECT place = PlaceOf(check);
                  GetClientRect(box, &room);
                  MapWindowPoints(box, nullptr, reinterpret_cast<POINT*>(&room), 2);
                  EXPECT_TRUE(place.left >= room.left && place.right <= room.right && place.bottom <= room.bottom);
                  EXPECT_GE(place.top, PlaceOf(GetDlgItem(box, IDOK)).bottom);
                  Press(VK_TAB);
              },
              [&](HWND box) {
                  EXPECT_EQ(GetFocus(), CheckIn(box));
                  // Faster than any timer: the box closes with the tick.
                  Press(VK_SPACE);
                  Press(VK_RETURN);
              }});
    EXPECT_EQ(result, IDOK);
    EXPECT_TRUE(m_ticked);
    EXPECT_FALSE(TimersLeft(m_form));
}

TEST_F(RealMessageBox, AnotherCheckBoxBeginsUntickedAndMayBeTickedTwice)
{
    const auto flip = [](HWND box) { SendMessageW(CheckIn(box), BM_CLICK, 0, 0); };
    Show(m_form, true, L"Check", {flip});
    EXPECT_TRUE(m_ticked);
    Show(m_form, true, L"Check", {flip, flip});
    EXPECT_FALSE(m_ticked);
    Show(m_form, false, L"Check", {[](HWND box) { EXPECT_EQ(CheckIn(box), nullptr); }});
    EXPECT_FALSE(m_ticked);
}

TEST_F(RealMessageBox, LeavesNoTimerWhenItClosesAtOnceOrItsOwnerGoes)
{
    const UINT_PTR closer = SetTimer(m_form, 1, 0, &CloseAtOnce);
    Show(m_form, true, L"Check");
    KillTimer(m_form, closer);
    EXPECT_FALSE(TimersLeft(m_form));
    const HWND form = MakeForm({300, 300, 700, 600});
    Show(form, true, L"Check", {[&](HWND) { DestroyWindow(form); }});
    EXPECT_FALSE(IsWindow(form));
    EXPECT_EQ(FindWindowW(L"#32770", kCaption), nullptr);
}

TEST_F(RealMessageBox, NeverMistakesAnotherWindowForTheBox)
{
    // A host's own dialog with the title that the box gets from the host's name.
    const HWND form = CreateWindowExW(0, L"#32770", kCaption, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                      nullptr, GetModuleHandleW(nullptr), nullptr);
    const RECT before = PlaceOf(form);
    Win32BoxTools tools;
    EXPECT_EQ(tools.FindBox(reinterpret_cast<WindowHandle>(form), kCaption), 0u);
    EXPECT_EQ(tools.FindBox(0, kCaption), 0u);
    const RECT after = PlaceOf(form);
    EXPECT_TRUE(EqualRect(&before, &after));
    DestroyWindow(form);
}

TEST_F(RealMessageBox, AMinimisedOwnerComesBackAndAVeryLongTextHasItsButtonInSight)
{
    ShowWindow(m_form, SW_MINIMIZE);
    const auto look = [&](HWND box) {
        EXPECT_FALSE(IsIconic(m_form));
        const POINT middle = MiddleOf(PlaceOf(GetDlgItem(box, IDOK)));
        EXPECT_TRUE(middle.x >= 0 && middle.x < GetSystemMetrics(SM_CXSCREEN)) << middle.x;
        EXPECT_TRUE(middle.y >= 0 && middle.y < GetSystemMetrics(SM_CYSCREEN)) << middle.y;
    };
    for (const std::size_t length : {400u, 40'000u})
        Show(m_form, true, L"", {look}, kCaption, std::wstring(length, L'm'));
    ShowWindow(m_form, SW_MAXIMIZE);
    Show(m_form, true, L"", {[&](HWND) { EXPECT_TRUE(IsZoomed(m_form)); }});
}

TEST_F(RealMessageBox, ATimerGivesWayToAnotherOfItsNumberAndComesBack)
{
    const auto pump = [] {
        const DWORD end = GetTickCount() + 100;
        MSG message;
        while (GetTickCount() < end)
            if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    };
    for (const WindowHandle owner : {reinterpret_cast<WindowHandle>(m_form), WindowHandle{0}}) {
        int outerTicks = 0;
        int innerTicks = 0;
        Win32BoxTools tools;
        auto outer = tools.Arm(owner, 0x5003, 0, [&] { ++outerTicks; });
        auto inner = tools.Arm(owner, 0x5003, 0, [&] { ++innerTicks; });
        pump();
        EXPECT_GT(innerTicks, 0);
        EXPECT_TRUE(owner == 0 || outerTicks == 0);
        inner.reset();
        const int before = outerTicks;
        pump();
        EXPECT_GT(outerTicks, before);
        outer.reset();
        pump();
        EXPECT_FALSE(TimersLeft(m_form));
    }
}

TEST(RealNetwork, LocalPathsAnswerAndOthersAreAskedForAShortTime)
{
    Win32Network network;
    EXPECT_TRUE(network.Answers(L"C:\\windows"));
    EXPECT_TRUE(network.Answers(L""));
    EXPECT_TRUE(network.Answers(L"\\\\?\\C:\\windows"));
    const DWORD begin = GetTickCount();
    network.Answers(L"\\\\no-such-server\\share\\x");
    EXPECT_LT(GetTickCount() - begin, 2000u);
}

}  // namespace
}  // namespace sylvex::test
