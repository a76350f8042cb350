#include <gtest/gtest.h>

#include "platform/text.h"
#include "tests/support/hand.h"

namespace sylvex {
namespace {

/// A tree of folders a (with a1, a2), b and c below t, opened, with dragging on, and a hand at it.
class DragTest : public testing::Test {
protected:
    DragTest()
    {
        scene.desk().Make({L"t\\a\\a1\\x\\f.txt", L"t\\a\\a2\\", L"t\\b\\b1\\", L"t\\c\\"});
        scene.BindList();
        scene.Enumerate();
        scene.control().LetDragDropEnable(true);
        scene.control().LetSelectedItem(&Open(L"t/a/a1"));
        hand = std::make_unique<Hand>(scene);
        scene.Heard();
    }
    ~DragTest() override { hand.reset(); }
    /// The node, with its surroundings in view.
    Node& Open(const std::wstring& path)
    {
        Node& node = scene.At(path);
        node.EnsureVisible();
        return node;
    }
    std::wstring State() { return Scene::Render(scene.At(L"t")); }
    std::wstring PathOf(const std::wstring& name) { return scene.desk().PathOf(name); }
    /// Presses on a node and lets go on another one; gives the messages.
    std::wstring Drop(Node& from, Node& to)
    {
        hand->Drop(from, to);
        return scene.desk().TakeMessages();
    }
    std::wstring MovedMessage(const std::wstring& from, const std::wstring& to)
    {
        return L"[Successful drop of folder " + PathOf(from) + L"\ronto " + PathOf(to) + L"]";
    }
    HandTools& tools() { return *hand->operator->(); }

    Scene scene;
    std::unique_ptr<Hand> hand;
};

TEST_F(DragTest, ADropMovesTheFolderInTheTreeAndOnTheDisk)
{
    Node& a = scene.At(L"t/a");
    Node& b = scene.At(L"t/b");
    a.SetKey(L"a host's own");
    EXPECT_EQ(Drop(a, b), MovedMessage(L"t\\a", L"t\\b"));
    EXPECT_EQ(State(), L"t[-](b[-](b1 a[-](a1[+] a2)) c)");
    EXPECT_EQ(&scene.nodes().Item(L"a host's own"), &a);
    const std::wstring heard = scene.Heard();  // some platforms select at the press
    EXPECT_TRUE(heard.starts_with(L"MouseDown") && heard.ends_with(L"Expand:b MouseUp"));
    EXPECT_TRUE(scene.desk().Has(L"t\\b\\a\\a1\\x\\f.txt"));
    EXPECT_FALSE(scene.desk().Has(L"t\\a"));
    EXPECT_EQ(scene.control().SelectedItem(), &a);
    EXPECT_EQ(scene.control().BuildFullPath(a.Child()), PathOf(L"t\\b\\a\\a1\\"));
    EXPECT_EQ(tools().LeftOver(), "");
    // And once more, into a folder that has never had a child.
    Node& c = Open(L"t/c");
    EXPECT_EQ(Drop(*a.Child(), c), MovedMessage(L"t\\b\\a\\a1", L"t\\c"));
    EXPECT_EQ(State(), L"t[-](b[-](b1 a[-](a2)) c[-](a1[+]))");
    EXPECT_TRUE(scene.desk().Has(L"t\\c\\a1\\x\\f.txt"));
}

TEST_F(DragTest, AFolderThatHasLostItsLastChildShowsNoButton)
{
    Node& b = scene.At(L"t/b");
    b.SetExpanded(true);
    EXPECT_EQ(Drop(*b.Child(), scene.At(L"t/c")), MovedMessage(L"t\\b\\b1", L"t\\c"));
    EXPECT_EQ(State(), L"t[-](a[-](a1[+] a2) b c[-](b1))");
    EXPECT_EQ(Drop(scene.At(L"t/c/b1"), b), MovedMessage(L"t\\c\\b1", L"t\\b"));
    EXPECT_EQ(State(), L"t[-](a[-](a1[+] a2) b[-](b1) c)");
}

TEST_F(DragTest, ADropThatMakesNoSenseIsRefusedInWords)
{
    const std::wstring before = State();
    Node& drive = scene.nodes().Item(L"C:\\");
    struct {
        Node& from;
        Node& to;
        const wchar_t* message;
    } const cases[] = {
        {scene.At(L"t/a"), scene.At(L"t/a"), L"[A folder cannot be dropped onto itself.]"},
        {scene.At(L"t/a/a1"), scene.At(L"t/a"), L"[A folder cannot be dropped onto its parent folder.]"},
        {scene.At(L"t"), scene.At(L"t/a/a2"), L"[A folder cannot be dropped onto a subfolder of itself.]"},
        {drive, *scene.nodes().Item(1).Child(), L"[A File cannot be dropped onto another File.]"},
        {drive, scene.nodes().Item(L"MyComputer"), L"[A folder cannot be dropped onto its parent folder.]"},
    };
    for (const auto& [from, to, message] : cases) {
        EXPECT_EQ(Drop(from, to), message);
        EXPECT_EQ(tools().LeftOver(), "");
    }
    EXPECT_EQ(State(), before);
    EXPECT_TRUE(scene.desk().Has(L"t\\a\\a1\\x\\f.txt"));
}

TEST_F(DragTest, WhatIsNoFolderOnADriveNeverReachesTheDisk)
{
    const std::wstring text = scene.nodes().Item(L"MyComputer").FullPath();
    EXPECT_EQ(Drop(scene.At(L"t/a"), scene.nodes().Item(L"MyComputer")),
              L"[124][Successful drop of folder " + PathOf(L"t\\a") + L"\ronto " + text + L"]");
    EXPECT_TRUE(scene.desk().Has(L"t\\a\\a1\\x\\f.txt"));
    // A whole drive stays where it is.
    Node& drive = scene.nodes().Item(L"C:\\");
    Node& folder = *scene.nodes().Item(L"MyComputer").Child()->LastSibling();
    ASSERT_EQ(folder.Text(), L"a");
    EXPECT_EQ(Drop(drive, folder), L"[116][Successful drop of folder C:\\\ronto " + PathOf(L"t\\a") + L"]");
    EXPECT_TRUE(scene.desk().Has(L"t\\b\\b1"));
}

TEST_F(DragTest, AFailedMoveLeavesAWayToReadTheOldFolderAgain)
{
    scene.desk().Remove(L"t\\c");
    Node& b = scene.At(L"t/b");
    b.SetExpanded(true);
    EXPECT_EQ(Drop(*b.Child(), scene.At(L"t/c")), L"[124]" + MovedMessage(L"t\\b\\b1", L"t\\c"));
    EXPECT_EQ(Scene::Render(b), L"b[+]");
    b.SetExpanded(true);
    EXPECT_EQ(Scene::Render(b), L"b[-](b1)");
}

TEST_F(DragTest, ARowWhoseMoveWasRefusedStandsForItsOwnFolderStill)
{
    scene.desk().Remove(L"t\\c");
    Node& a = scene.At(L"t/a");
    Node& c = scene.At(L"t/c");
    EXPECT_EQ(Drop(a, c), L"[124]" + MovedMessage(L"t\\a", L"t\\c"));
    ASSERT_EQ(a.Parent(), &c);
    // Another folder comes to where the row seems to be.
    scene.desk().Make({L"t\\c\\a\\a1\\stranger\\"});
    Node& b = scene.At(L"t/b");
    EXPECT_EQ(Drop(*a.Child(), b), MovedMessage(L"t\\a\\a1", L"t\\b"));
    EXPECT_TRUE(scene.desk().Has(L"t\\b\\a1\\x\\f.txt"));
    EXPECT_EQ(Drop(a, b), MovedMessage(L"t\\a", L"t\\b"));
    EXPECT_TRUE(scene.desk().Has(L"t\\b\\a\\a2"));
    EXPECT_TRUE(scene.desk().Has(L"t\\c\\a\\a1\\stranger"));
    // Both are again where they seem to be.
    EXPECT_EQ(Drop(*a.Child(), scene.At(L"t")), MovedMessage(L"t\\b\\a\\a2", L"t"));
}

TEST_F(DragTest, AReleaseOverRowsThatHaveMovedSinceDropsNothing)
{
    const std::wstring before = Scene::Render(scene.At(L"t/a"));
    Node& b = scene.At(L"t/b");
    hand->Drag(scene.At(L"t/a"), b);
    // The button is let go while the folder under the pointer is being opened, and heard of afterwards.
    scene.onEvent = [&](const std::wstring& event, Node*) {
        if (event == L"Expand:") tools().ReleaseUnheard();
    };
    tools().Wait(1300);
    scene.onEvent = nullptr;
    EXPECT_TRUE(b.Expanded());
    EXPECT_EQ(tools().LeftOver(), "");
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
    EXPECT_EQ(Scene::Render(scene.At(L"t/a")), before);
    // Once the rows have come to rest a release counts, without another move.
    Node& c = Open(L"t/c");
    scene.desk().Make({L"t\\c\\c1\\"});
    scene.nodes().AddChild(c, L"", 0);
    hand->Drag(scene.At(L"t/b"), c);
    tools().Wait(1500);
    EXPECT_TRUE(c.Expanded());
    tools().Release();
    EXPECT_EQ(scene.desk().TakeMessages(), MovedMessage(L"t\\b", L"t\\c"));
}

TEST_F(DragTest, OnlyAPressOnARowWithTheSameButtonAndARealMoveBeginsADrag)
{
    const std::wstring before = State();
    Node& a = scene.At(L"t/a");
    const Point from = hand->On(a);
    const Point to = hand->On(scene.At(L"t/b"));
    const Rect label = hand->LabelOf(a);
    const auto way = [&](Point start, Point end) {
        tools().Press(start, 1);
        tools().MoveTo(end);
        const bool dragging = scene.control().State().drag.m_himlDrag != 0;
        tools().PressKey(kEscapeKey);
        tools().Release();
        EXPECT_EQ(tools().LeftOver(), "");
        return dragging;
    };
    const Size least = scene.control().State().tree.m_szDrag;
    EXPECT_FALSE(way(from, {from.x + least.cx - 1, from.y - least.cy + 1}));
    EXPECT_TRUE(way(from, {from.x - least.cx, from.y}));
    EXPECT_TRUE(way(from, {from.x, from.y + least.cy}));
    EXPECT_FALSE(way({label.right + 20, from.y}, to)) << "beside the label";
    EXPECT_FALSE(way({label.left - 70, from.y}, to)) << "on the lines";
    EXPECT_FALSE(way(hand->On(scene.nodes().Item(1)), to)) << "a root";
    scene.control().LetDragDropEnable(false);
    EXPECT_FALSE(way(from, to)) << "switched off";
    EXPECT_EQ(State(), before);
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
}

TEST_F(DragTest, ADragEndsCleanlyHoweverItIsInterrupted)
{
    struct {
        const char* what;
        std::function<void()> interrupt;
    } const cases[] = {
        {"Escape", [&] { tools().PressKey(kEscapeKey); }},
        {"Escape in another window", [&] { tools().PressEscapeElsewhere(); }},
        {"capture lost", [&] { tools().LoseCapture(); }},
        {"switched off", [&] { scene.control().LetDragDropEnable(false); }},
        {"read anew", [&] { scene.Enumerate(); }},
        {"emptied", [&] { scene.control().Clear(); }},
        {"emptied behind its back",
         [&] {
             scene.nodes().Clear(), tools().MoveTo({10, 10});
         }},
        {"node removed",
         [&] {
             scene.nodes().Remove(scene.At(L"t/a")), tools().MoveTo({10, 10});
         }},
        {"node put elsewhere",
         [&] {
             scene.At(L"t/a").SetParent(scene.At(L"t/c")), tools().MoveTo({10, 10});
         }},
    };
    for (const auto& [what, interrupt] : cases) {
        scene.Enumerate();
        scene.control().LetDragDropEnable(true);
        scene.control().LetSelectedItem(&Open(L"t/a/a1"));
        hand->Drag(scene.At(L"t/a"), scene.At(L"t/b"));
        EXPECT_NE(scene.control().State().drag.m_himlDrag, 0u) << what;
        EXPECT_NE(tools().LeftOver(), "") << what;
        interrupt();
        EXPECT_EQ(tools().LeftOver(), "") << what;
        tools().Release();
        EXPECT_EQ(tools().LeftOver(), "") << what;
        EXPECT_EQ(scene.desk().TakeMessages(), L"") << what;
        EXPECT_TRUE(scene.desk().Has(L"t\\a\\a1\\x\\f.txt")) << what;
    }
}

TEST_F(DragTest, TheControlMayGoInMidDrag)
{
    hand->Drag(scene.At(L"t/a"), scene.At(L"t/b"));
    scene.DropControl();
    EXPECT_EQ(tools().LeftOver(), "");
}

TEST_F(DragTest, RestingOnAClosedFolderOpensItAfterASecond)
{
    Node& b = scene.At(L"t/b");
    const Point from = hand->On(scene.At(L"t/a"));
    const Point on = hand->On(b);
    tools().Press(from, 1);
    tools().MoveTo({from.x + 20, from.y});
    const int moves = tools().MovesTold();
    tools().MoveTo(on);
    tools().Wait(1300);
    const bool oneMove = tools().MovesTold() == moves + 1;
    EXPECT_FALSE(oneMove && b.Expanded()) << "one move over it is not enough";
    tools().MoveTo({on.x + 1, on.y});
    tools().Wait(700);
    tools().MoveTo({on.x, on.y + 1});
    tools().Wait(600);
    EXPECT_TRUE(b.Expanded()) << "moving on the same folder does not start anew";
    tools().PressKey(kEscapeKey);
    tools().Release();
    EXPECT_EQ(Scene::Render(b), L"b[-](b1)");
    EXPECT_EQ(tools().LeftOver(), "");
}

TEST_F(DragTest, AHostThatEmptiesTheTreeWhileAFolderOpensEndsTheDrag)
{
    hand->Drag(scene.At(L"t/a"), scene.At(L"t/b"));
    scene.onEvent = [&](const std::wstring& event, Node*) {
        if (event == L"Expand:") scene.control().Clear();
    };
    tools().Wait(1300);
    scene.onEvent = nullptr;
    EXPECT_EQ(scene.nodes().Count(), 0);
    EXPECT_EQ(tools().LeftOver(), "");
    tools().Release();
}

TEST_F(DragTest, HoldingNearAnEdgeScrollsUntilTheEnd)
{
    for (int i = 0; i < 25; ++i)
        scene.desk().MakeFolder(L"many\\n" + std::to_wstring(100 + i));
    scene.Enumerate();
    Node& many = scene.At(L"many");
    many.SetExpanded(true);
    many.EnsureVisible();
    Node& first = *many.Child();
    Node& last = *first.LastSibling();
    const Point start = hand->On(first);
    const auto shown = [&](Node& node) {
        if (ErrorOf([&] { hand->LabelOf(node); }) != 0) return false;
        return hand->LabelOf(node).bottom <= 400 && hand->LabelOf(node).top >= 0;
    };
    EXPECT_FALSE(shown(last));
    tools().Press(start, 1);
    tools().MoveTo({start.x + 20, start.y});
    tools().MoveTo({start.x, 390});
    tools().Wait(3000);
    EXPECT_TRUE(shown(last));
    tools().MoveTo({start.x, 3});
    tools().Wait(3000);
    EXPECT_TRUE(shown(scene.nodes().Item(1)));
    tools().PressKey(kEscapeKey);
    tools().Release();
    EXPECT_EQ(tools().LeftOver(), "");
}

TEST_F(DragTest, WhatIsTickedStaysTickedAndTheAncestorsFollow)
{
    scene.Tick(scene.At(L"t/a"), true);
    EXPECT_EQ(State(), L"t[-]~(a[-]x(a1[+]x a2x) b[+] c)");
    Drop(scene.At(L"t/a/a1"), scene.At(L"t/c"));
    EXPECT_EQ(State(), L"t[-]~(a[-]x(a2x) b[+] c[-]x(a1[+]x))");
    EXPECT_EQ(scene.RowTexts(), L"t\\a\\* t\\c\\*");
    Drop(scene.At(L"t/a"), scene.At(L"t/b"));
    EXPECT_EQ(State(), L"t[-]~(b[-]~(b1 a[-]x(a2x)) c[-]x(a1[+]x))");
    EXPECT_EQ(scene.RowTexts(), L"t\\b\\a\\* t\\c\\*");
    // The unticked folder leaves a branch that is wholly ticked then.
    scene.Tick(scene.At(L"t/b/b1"), false);
    Drop(scene.At(L"t/b/b1"), *scene.At(L"t").Parent());
    EXPECT_EQ(State(), L"t[-]x(b[-]x(a[-]x(a2x)) c[-]x(a1[+]x))");
    EXPECT_FALSE(InTreeSetParent());
}

TEST_F(DragTest, AMixedFolderThatLosesItsTickedBranchIsPlainAgain)
{
    for (const bool recursive : {true, false}) {
        scene.control().LetRecursiveCheck(recursive);
        scene.Enumerate();
        scene.desk().Make({L"t\\d\\ticked\\", L"t\\d\\other\\", L"t\\e\\"});
        scene.Tick(Open(L"t/d/ticked"), true);
        EXPECT_TRUE(scene.At(L"t/d").Bold());
        Drop(scene.At(L"t/d/ticked"), scene.At(L"t/e"));
        EXPECT_FALSE(scene.At(L"t/d").Bold());
        EXPECT_TRUE(scene.At(L"t/e").Bold() || scene.At(L"t/e").Checked());
        EXPECT_TRUE(scene.At(L"t").Bold());
        EXPECT_EQ(scene.RowTexts(), recursive ? L"t\\e\\*" : L"t\\e\\ticked\\*");
        scene.desk().Remove(L"t\\d");
        scene.desk().Remove(L"t\\e");
    }
}

}  // namespace
}  // namespace sylvex
