#include <gtest/gtest.h>

#include <vector>

#include "host/form.h"

namespace sylvex::host {
namespace {

/// A child of the form: a window with a place in the form's client area.
struct Part {
    HWND window;
    RECT place;
};

std::vector<Part> PartsOf(HWND form)
{
    std::vector<Part> parts;
    for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place;
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
        parts.push_back({child, place});
    }
    return parts;
}

bool HoldsItsText(const Part& part, const Metrics& metrics)
{
    wchar_t name[16] = {};
    GetClassNameW(part.window, name, 16);
    const bool showsText = lstrcmpiW(name, L"Button") == 0 || lstrcmpiW(name, L"Static") == 0;
    return !showsText || part.place.right - part.place.left >= metrics.TextWidth(WindowText(part.window));
}

/// What is wrong with the places of the form's parts, one line each.
std::wstring FaultsOf(HWND form, const Metrics& metrics)
{
    std::wstring faults;
    RECT client;
    GetClientRect(form, &client);
    const std::vector<Part> parts = PartsOf(form);
    const auto tell = [&](const Part& part, const std::wstring& what) {
        faults += std::to_wstring(GetDlgCtrlID(part.window)) + what + L"\n";
    };
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        RECT common;
        if (IsRectEmpty(&part->place)) tell(*part, L" is empty");
        if (!UnionRect(&common, &client, &part->place) || !EqualRect(&common, &client)) tell(*part, L" is outside");
        if (!HoldsItsText(*part, metrics)) tell(*part, L" is too narrow");
        for (auto other = parts.begin(); other != part; ++other)
            if (IntersectRect(&common, &part->place, &other->place))
                tell(*part, L" lies over " + std::to_wstring(GetDlgCtrlID(other->window)));
    }
    return faults;
}

/// The font of forms as a screen of that many dots per inch has it.
LOGFONTW FontAt(int dotsPerInch)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = MulDiv(font.lfHeight, dotsPerInch, USER_DEFAULT_SCREEN_DPI);
    return font;
}

TEST(HostForm, ItsPartsHaveRoomAtEveryResolution)
{
    for (const int dotsPerInch : {96, 120, 144, 192, 288}) {
        const LOGFONTW font = FontAt(dotsPerInch);
        const Font sameFont(font);
        const Metrics metrics(sameFont.Get());
        const Options options;
        {
            Form form(font, options);
            ASSERT_TRUE(form.Create(SW_HIDE));
            // The smallest that the form takes, a small screen, and more than it needs.
            for (const SIZE size : {SIZE{1, 1}, SIZE{1280, 900}, SIZE{3000, 2000}}) {
                SetWindowPos(form.Handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
                EXPECT_EQ(FaultsOf(form.Handle(), metrics), L"") << dotsPerInch << " dots per inch, " << size.cx;
            }
        }
        // The form has asked its program to end.
        MSG message;
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }
}

}  // namespace
}  // namespace sylvex::host
