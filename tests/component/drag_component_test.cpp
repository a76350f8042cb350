// Dragging in the real component, placed in a container, with the system's own mouse, keyboard, boxes and shell.

#include <algorithm>
#include <cmath>
#include <tuple>

#include "tests/component/hand_at_component.h"

namespace sylvex::test {
namespace {

using DragInComponent = HandAtComponent;

TEST_F(DragInComponent, AFolderMovesAndTheHostHearsTheMouse)
{
    EventLog events(control);
    std::vector<std::tuple<std::wstring, int, long, long>> heard;
    const HDC screen = GetDC(nullptr);
    const float twips = 1440.0f / static_cast<float>(GetDeviceCaps(screen, LOGPIXELSX));
    ReleaseDC(nullptr, screen);
    for (const wchar_t* name : {L"MouseDown", L"MouseMove", L"MouseUp"}) {
        events.On(name, [&, name](std::vector<VARIANT*>& arguments) {
            heard.emplace_back(name, *V_I2REF(arguments[0]), std::lround(*V_R4REF(arguments[2]) / twips),
                               std::lround(*V_R4REF(arguments[3]) / twips));
        });
    }
    POINT start = On(L"a");
    POINT end = On(L"b");
    DragTo(L"a", L"b");
    EXPECT_EQ(GetCapture(), Tree());
    EXPECT_NE(ImageList_GetDragImage(nullptr, nullptr), nullptr);
    EXPECT_EQ(Send(TVM_GETNEXTITEM, TVGN_DROPHILITE, 0), reinterpret_cast<LRESULT>(Row(L"b")));
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(LeftOver(), "");
    EXPECT_EQ(boxes.Take(), MovedMessage(base + L"\\a", base + L"\\b"));
    EXPECT_TRUE(Has(L"b\\a\\inner"));
    EXPECT_FALSE(Has(L"a"));
    const Value selected = control.Get(L"TreeView").Get(L"SelectedItem");
    EXPECT_EQ(control.Call(L"BuildFullPath", {selected}).Text(), base + L"\\b\\a\\");
    for (POINT* point : {&start, &end})
        ScreenToClient(Tree(), point);
    const auto has = [&](const wchar_t* name, LONG x, LONG y) {
        return std::find(heard.begin(), heard.end(), std::tuple(std::wstring(name), 1, x, y)) != heard.end();
    };
    EXPECT_TRUE(has(L"MouseDown", start.x, start.y));
    EXPECT_TRUE(has(L"MouseMove", end.x, end.y));
    EXPECT_TRUE(has(L"MouseUp", end.x + 1, end.y));
    EXPECT_EQ(reports.Take(), L"");
    EXPECT_EQ(Ticks(), 0);
}

TEST_F(DragInComponent, AnotherButtonInBetweenEndsCleanly)
{
    const auto before = ContentsOf(base);
    MoveTo(On(L"a"));
    Button(MOUSEEVENTF_LEFTDOWN);
    // Together, since the tree itself waits for the release.
    Buttons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
    MoveTo(On(L"b"));
    EXPECT_EQ(ImageList_GetDragImage(nullptr, nullptr), nullptr);
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(LeftOver(), "");
    EXPECT_EQ(boxes.Take(), L"");
    EXPECT_EQ(ContentsOf(base), before);
    DragTo(L"a", L"b");
    Buttons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(LeftOver(), "");
    EXPECT_EQ(Ticks(), 0);
    EXPECT_NE(Has(L"a\\inner"), Has(L"b\\a\\inner"));
}

TEST_F(DragInComponent, NothingIsLeftOfADragWhoseControlGoes)
{
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"hidden", [&] { embedded.Do(OLEIVERB_HIDE); }},
        {"closed", [&] { embedded.object->Close(OLECLOSE_NOSAVE); }},
        {"its form closed", [&] { container.DestroyForm(); }},
    };
    const auto before = ContentsOf(base);
    for (const auto& [what, interrupt] : cases) {
        embedded.Do(OLEIVERB_UIACTIVATE);
        Load();
        DragTo(L"a", L"b");
        EXPECT_NE(LeftOver(), "") << what;
        interrupt();
        EXPECT_EQ(LeftOver(), "") << what;
        EXPECT_EQ(Ticks(), 0) << what;
        Button(MOUSEEVENTF_LEFTUP);
        EXPECT_EQ(boxes.Take(), L"") << what;
        EXPECT_EQ(ContentsOf(base), before) << what;
    }
}

}  // namespace
}  // namespace sylvex::test
