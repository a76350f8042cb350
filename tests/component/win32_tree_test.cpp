#include "platform/win32/com_object.h"
#include "platform/win32/handles.h"
#include "tests/component/test_control.h"
#include "tests/component/tree_window_fixture.h"
#include "tests/support/scene.h"

namespace sylvex::test {
namespace {

constexpr UINT kTicked = INDEXTOSTATEIMAGEMASK(2);

TEST_F(TreeWindowTest, ABoxIsFlippedOnceByEachPressAndByTheSpaceBar)
{
    tree->Apply(TreeSetting::Checkboxes, 1);
    const auto row = Add(0, 1, L"row");
    tree->Refresh();
    Click(On(row, TVHT_ONITEMSTATEICON));
    EXPECT_EQ(diary.Take(), "down1 box:1 up1");
    EXPECT_EQ(NativeState(row) & (TVIS_STATEIMAGEMASK | TVIS_SELECTED), kTicked) << "and selects nothing";
    // The second press of a double click flips once more.
    Click(On(row, TVHT_ONITEMSTATEICON));
    EXPECT_EQ(diary.Take(), "double box:1 up1");
    EXPECT_NE(NativeState(row) & TVIS_STATEIMAGEMASK, kTicked);
    tree->Select(row);
    diary.Take();
    Key(VK_SPACE);
    EXPECT_EQ(diary.Take(), "key32 box:1 char32 keyup32");
    EXPECT_EQ(NativeState(row) & TVIS_STATEIMAGEMASK, kTicked);
    // Pressed on one box and let go on another: neither.
    const auto other = Add(0, 2, L"other");
    tree->Refresh();
    MoveTo(On(row, TVHT_ONITEMSTATEICON));
    Button(MOUSEEVENTF_LEFTDOWN);
    MoveTo(On(other, TVHT_ONITEMSTATEICON));
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(diary.Take(), "down1 drag1 up1");
}

TEST_F(TreeWindowTest, AReleaseIsToldEvenOutsideTheWindow)
{
    const auto row = Add(0, 1, L"row");
    tree->Refresh();
    const auto place = On(row, TVHT_ONITEMLABEL);
    MoveTo(place);
    Buttons({MOUSEEVENTF_LEFTDOWN});
    MoveTo({place.x + 20, place.y + 20});
    MoveTo({700, 700});
    Buttons({MOUSEEVENTF_LEFTUP});
    EXPECT_EQ(diary.Take(), "down1 chosen:1 drag1 up1");
    EXPECT_EQ(GetCapture(), nullptr);
    MoveTo(place);
    // The tree waits in a loop of its own for the end of the press, and keeps it to itself.
    Buttons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
    EXPECT_EQ(diary.Take(), "down2 up2");
}

TEST_F(TreeWindowTest, OnlyAClickOnTheSelectedRowIsAClick)
{
    const auto first = Add(0, 1, L"first");
    const auto second = Add(0, 2, L"second");
    tree->Select(second);
    tree->Refresh();
    EXPECT_EQ(diary.Take(), "selected:2");
    Click(On(first, TVHT_ONITEMLABEL));
    EXPECT_EQ(diary.Take(), "down1 chosen:1 up1");
    Wait(GetDoubleClickTime() + 50);
    diary.edits = false;
    Click(On(first, TVHT_ONITEMLABEL));
    EXPECT_EQ(diary.Take(), "down1 click:1 up1");
}

TEST_F(TreeWindowTest, RowsThatASmallerFontBringsIntoViewAreMarked)
{
    tree->Apply(TreeSetting::Checkboxes, 1);
    for (ItemData n = 1; n < 200; ++n)
        Add(0, n, L"row");
    const auto setFont = [&](int units) {
        tree->SetFont(std::make_shared<ComObject>(NewFont(L"Tahoma", units).Get()));
        tree->Refresh();
    };
    setFont(24);
    const auto before = tree->VisibleCount();
    diary.marksAsked = 0;
    setFont(8);
    UpdateWindow(Tree());
    ASSERT_GT(tree->VisibleCount(), before);
    EXPECT_GE(diary.marksAsked, tree->VisibleCount());
}

TEST_F(TreeWindowTest, OpeningByTheUserIsAskedOnceAndToldOnce)
{
    const auto row = Add(0, 1, L"row", ExpandButton::Ask);
    diary.onWord = [&](const std::string& word) {
        if (word == "opening:1" && diary.expands) Add(row, 2, L"child");
    };
    tree->Refresh();
    diary.expands = false;
    Click(On(row, TVHT_ONITEMBUTTON));
    EXPECT_EQ(diary.Take(), "down1 opening:1 up1");
    EXPECT_FALSE(NativeState(row) & TVIS_EXPANDED);
    diary.expands = true;
    Wait(GetDoubleClickTime() + 50);
    Click(On(row, TVHT_ONITEMBUTTON));
    EXPECT_EQ(diary.Take(), "down1 opening:1 open:1 up1");
    EXPECT_TRUE(NativeState(row) & TVIS_EXPANDED);
}

TEST_F(TreeWindowTest, OpeningByAMessageIsAskedEveryTimeAndOurOwnNever)
{
    const auto row = Add(0, 1, L"row", ExpandButton::Yes);
    Add(row, 2, L"child");
    tree->Expand(row, true);
    tree->Expand(row, false);
    EXPECT_EQ(diary.Take(), "");
    const auto order = [&](UINT action) { return Send(TVM_EXPAND, action, static_cast<LPARAM>(row)); };
    EXPECT_TRUE(order(TVE_EXPAND));
    EXPECT_FALSE(order(TVE_EXPAND));
    EXPECT_TRUE(order(TVE_TOGGLE));
    EXPECT_EQ(diary.Take(), "opening:1 open:1 closing:1 closed:1");
    diary.expands = false;
    EXPECT_FALSE(order(TVE_EXPAND));
    EXPECT_EQ(diary.Take(), "opening:1");
}

TEST_F(TreeWindowTest, TheStarKeyOpensTheRowAndNothingBelow)
{
    const auto row = Add(0, 1, L"row", ExpandButton::Yes);
    const auto child = Add(row, 2, L"child", ExpandButton::Yes);
    Add(child, 3, L"grandchild");
    tree->Select(row);
    diary.Take();
    Key(VK_MULTIPLY);
    EXPECT_EQ(diary.Take(), "key106 opening:1 open:1 char42 keyup106");
    EXPECT_FALSE(NativeState(child) & TVIS_EXPANDED);
}

TEST_F(TreeWindowTest, TheTreeDoesNothingMoreWithARowThatAnEventHasTakenAway)
{
    ItemHandle row = 0;
    std::string fatal = "closing:2 click:2";
    diary.onWord = [&](const std::string& word) {
        if (fatal.find(word) != fatal.npos) tree->Delete(std::exchange(row, 0));
    };
    const auto after = [&](const std::function<void()>& act) {
        tree->Delete(0);
        const auto parent = Add(0, 1, L"parent", ExpandButton::Yes);
        row = Add(parent, 2, L"row", ExpandButton::Yes);
        Add(row, 3, L"child");
        tree->Expand(row, true);
        tree->Expand(parent, true);
        tree->Select(row);
        tree->Refresh();
        diary.Take();
        act();
        EXPECT_EQ(row, 0u);
        return diary.Take();
    };
    EXPECT_EQ(after([&] { Key(VK_SUBTRACT); }), "key109 closing:2 selected:1 char45 keyup109");
    EXPECT_EQ(after([&] { Key(VK_LEFT); }), "key37 closing:2 selected:1 keyup37");
    EXPECT_EQ(after([&] { Click(On(row, TVHT_ONITEMBUTTON)); }), "down1 closing:2 selected:1 up1");
    EXPECT_EQ(after([&] { Click(On(row, TVHT_ONITEMLABEL)); }), "down1 click:2 selected:1 up1");
    Wait(GetDoubleClickTime() + 50);
    fatal = "closing:2";
    diary.edits = false;
    EXPECT_EQ(after([&] {
                  MoveTo(On(row, TVHT_ONITEMICON | TVHT_ONITEMLABEL));
                  Buttons({MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP});
                  Buttons({MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP});
              }),
              "down1 click:2 up1 double closing:2 selected:1 up1");
}

TEST_F(TreeWindowTest, MarksAreAskedForTheRowsInViewAlone)
{
    constexpr int kRows = 100000;
    tree->Apply(TreeSetting::Checkboxes, 1);
    const auto row = Add(0, 1, L"row", ExpandButton::Yes);
    tree->SetRedraw(false);
    ItemHandle last = 0;
    for (int n = 2; n < kRows; ++n)
        last = Add(row, static_cast<ItemData>(n), L"file");
    tree->Expand(row, true);
    tree->SetRedraw(true);
    tree->Refresh();
    const auto screen = tree->VisibleCount() + 2;
    EXPECT_LE(diary.marksAsked, screen);

    diary.marksAsked = 0;
    InvalidateRect(Tree(), nullptr, TRUE);
    UpdateWindow(Tree());
    EXPECT_EQ(diary.marksAsked, 0) << "a paint alone asks nothing";

    for (int n = 1; n < kRows; ++n)
        diary.marks[static_cast<ItemData>(n)] = {true, n % 2 == 0, -1};
    diary.marksAsked = 0;
    tree->MarksChanged();
    Wait();
    EXPECT_LE(diary.marksAsked, screen);
    EXPECT_GT(diary.marksAsked, 10);
    diary.marksAsked = 0;
    EXPECT_EQ(NativeState(last) & TVIS_STATEIMAGEMASK, kTicked) << "a reader gets the mark of a row out of view";
    EXPECT_EQ(diary.marksAsked, 1);
    tree->EnsureVisible(last);
    UpdateWindow(Tree());
    EXPECT_LE(diary.marksAsked, screen + 1);
}

TEST_F(TreeWindowTest, ReadersSeeTheModelAndWritersOfAMarkAskForAFlip)
{
    tree->Apply(TreeSetting::Checkboxes, 1);
    const auto row = Add(0, 1, L"row");
    diary.marks[1] = {false, true, -1};
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_STATE;
    item.hItem = HandleOf<HTREEITEM>(row);
    item.stateMask = TVIS_BOLD;
    Send(TVM_GETITEMW, 0, ParameterOf(&item));
    EXPECT_TRUE(item.state & TVIS_BOLD);
    item.state = kTicked | TVIS_CUT;
    item.stateMask = TVIS_STATEIMAGEMASK | TVIS_BOLD | TVIS_CUT;
    Send(TVM_SETITEMW, 0, ParameterOf(&item));
    Send(TVM_SETITEMW, 0, ParameterOf(&item));
    EXPECT_EQ(diary.Take(), "box:1");
    EXPECT_EQ(NativeState(row) & (TVIS_STATEIMAGEMASK | TVIS_BOLD | TVIS_CUT), kTicked | TVIS_BOLD | TVIS_CUT);
}

TEST_F(TreeWindowTest, BoxesCanBeTakenAwayAndPutBack)
{
    const auto row = Add(0, 1, L"row");
    diary.marks[1] = {true, false, -1};
    const auto boxWidth = [&] {
        tree->Refresh();
        return PlaceOf(HandleOf<HTREEITEM>(row), true).left;
    };
    const auto without = boxWidth();
    for (int round = 0; round < 2; ++round) {
        tree->Apply(TreeSetting::Checkboxes, 1);
        EXPECT_GT(boxWidth(), without);
        EXPECT_EQ(NativeState(row) & TVIS_STATEIMAGEMASK, kTicked);
        tree->Apply(TreeSetting::Checkboxes, 0);
        EXPECT_EQ(boxWidth(), without);
        EXPECT_EQ(NativeState(row) & TVIS_STATEIMAGEMASK, 0u);
    }
}

TEST_F(TreeWindowTest, LabelsAreEditedOnlyAsTheSettingSays)
{
    const auto row = Add(0, 1, L"row");
    tree->Select(row);
    tree->Apply(TreeSetting::LabelEdit, 1);
    Key(VK_F2);
    Click(On(row, TVHT_ONITEMLABEL));
    Wait(GetDoubleClickTime() + 100);
    EXPECT_EQ(diary.Take().find("edit"), std::string::npos);
    tree->EditLabel(row);
    EXPECT_EQ(diary.Take(), "edit:1");
    tree->CancelEdit();
    EXPECT_EQ(diary.Take(), "abandoned");
    // Nor by a drag.
    tree->Apply(TreeSetting::LabelEdit, 0);
    const auto place = On(row, TVHT_ONITEMLABEL);
    MoveTo(place);
    Button(MOUSEEVENTF_LEFTDOWN);
    for (const int away : {10, 40})
        MoveTo({place.x + away, place.y + away});
    Button(MOUSEEVENTF_LEFTUP);
    Wait(GetDoubleClickTime() + 100);
    EXPECT_EQ(diary.Take().find("edit"), std::string::npos);
}

TEST_F(TreeWindowTest, ATypedLabelIsTakenOrRefused)
{
    const auto row = Add(0, 1, L"row");
    for (const bool keeps : {true, false}) {
        diary.keepsLabel = keeps;
        tree->SetText(row, L"row");
        tree->Select(row);
        Key(VK_F2);
        Key('X');
        // Also while nothing repaints.
        tree->SetRedraw(false);
        Key(VK_RETURN);
        tree->SetRedraw(true);
        EXPECT_EQ(RowText(HandleOf<HTREEITEM>(row)), keeps ? L"x" : L"row");
        EXPECT_NE(diary.Take().find("edit:1 typed:x"), std::string::npos);
    }
}

TEST_F(TreeWindowTest, HidingKeepsTheFocusAndRepaintingShowsNoHiddenTree)
{
    ASSERT_EQ(GetFocus(), Tree());
    tree->SetVisible(false);
    tree->SetVisible(true);
    EXPECT_EQ(GetFocus(), Tree());
    tree->SetVisible(false);
    tree->SetRedraw(false);
    tree->SetRedraw(true);
    EXPECT_FALSE(IsWindowVisible(Tree()));
    tree->SetRedraw(false);
    tree->SetVisible(true);
    tree->SetRedraw(true);
    EXPECT_TRUE(IsWindowVisible(Tree()));
    // The host's freeze lasts beyond a change of our own.
    Send(WM_SETREDRAW, FALSE, 0);
    tree->SetRedraw(false);
    tree->SetRedraw(true);
    Add(0, 1, L"row");
    tree->Refresh();
    EXPECT_EQ(GetUpdateRect(Tree(), nullptr, FALSE), FALSE);
    Send(WM_SETREDRAW, TRUE, 0);
    EXPECT_NE(GetUpdateRect(Tree(), nullptr, FALSE), FALSE);
}

TEST_F(TreeWindowTest, AWindowThatIsGoneAnswersWithAnError)
{
    DestroyWindow(form);
    EXPECT_EQ(tree->Handle(), 0u);
    EXPECT_EQ(sylvex::ErrorOf([&] { tree->VisibleCount(); }), 398);
}

}  // namespace
}  // namespace sylvex::test
