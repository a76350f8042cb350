#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include "tests/component/automation.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {
namespace {

constexpr long kInvalidKey = 35603;
constexpr long kCycle = 35614;

constexpr int kFirst = 0, kLast = 1, kNext = 2, kPrevious = 3, kChild = 4;

/// "a(b c(d)) e": the texts of a node's row of siblings with what is below each.
std::wstring Branches(Value node)
{
    std::wstring text;
    for (; !node.IsNothing(); node = node.Get(L"Next")) {
        text += (text.empty() ? L"" : L" ") + node.Get(L"Text").Text();
        if (node.Get(L"Children").Number() > 0) text += L"(" + Branches(node.Get(L"Child")) + L")";
    }
    return text;
}

// A control's tree with nothing in it, as a host reaches it.
class TreeObjects : public testing::Test {
protected:
    TreeObjects() { nodes.Call(L"Clear"); }

    Value Add(const Value& relative, const Value& relationship, const wchar_t* text,
              const Value& key = Value::Missing())
    {
        return nodes.Call(L"Add", {relative, relationship, key, text});
    }
    Value Root(const wchar_t* text) { return AddNode(nodes, text); }
    Value Child(const Value& parent, const wchar_t* text) { return AddNode(nodes, text, parent); }
    std::wstring Tree()
    {
        if (nodes.Get(L"Count").Number() == 0) return {};
        return Branches(nodes.Get(L"Item", {1}).Get(L"Root").Get(L"FirstSibling"));
    }

    TestReporter reports;
    Value control = MakeControl();
    Value tree = control.Get(L"TreeView");
    Value nodes = tree.Get(L"Nodes");
};

TEST_F(TreeObjects, AddPlacesANodeAsItsRelationshipSays)
{
    const Value b = Root(L"b");
    Root(L"e");
    Add(b, Value::Missing(), L"c");
    Add(2, kPrevious, L"d");
    Add(b, kFirst, L"a");
    Add(b, kLast, L"f");
    Add(b, kChild, L"1", L"first");
    Add(L"first", kNext, L"2");
    EXPECT_EQ(Tree(), L"a b(1 2) c d e f");
}

TEST_F(TreeObjects, AddRefusesWhatItCannotPlace)
{
    const Value node = Add(Value::Missing(), Value::Missing(), L"a", L"key");
    const Value other = MakeControl();
    const Value foreign = NodesOf(other).Get(L"Item", {1});
    const Value gone = Root(L"gone");
    nodes.Call(L"Remove", {gone.Get(L"Index")});
    const Value none = Value::Missing();
    const struct {
        const char* what;
        std::vector<Value> arguments;
        long error;
    } cases[] = {
        {"a key in use", {none, none, L"key", L"x"}, kKeyNotUnique},
        {"a number as key", {none, none, L"12", L"x"}, kInvalidKey},
        {"an unknown relative", {L"nobody", kChild, none, L"x"}, kElementNotFound},
        {"an index beyond the last", {9, kChild, none, L"x"}, kIndexOutOfBounds},
        {"a node of another tree", {foreign, kChild, none, L"x"}, kElementNotFound},
        {"a removed node", {gone, kChild, none, L"x"}, kGone},
        {"an object that is no node", {control, kChild, none, L"x"}, kTypeMismatch},
        {"an unknown relationship", {node, 5, none, L"x"}, kInvalidValue},
        {"an unknown picture", {none, none, none, L"x", L"nopicture"}, kElementNotFound},
        {"a picture number beyond the last", {none, none, none, L"x", none, 999}, kElementNotFound},
    };
    for (const auto& [what, arguments, error] : cases) {
        EXPECT_EQ(ErrorOf([&] { nodes.Call(L"Add", arguments); }), error) << what;
    }
    EXPECT_EQ(Tree(), L"a") << "a refused node must not be there";
    EXPECT_EQ(reports.Take(), L"") << "errors of the tree's own objects are the caller's";
}

TEST_F(TreeObjects, ANodeHasOneObjectWhileItIsHeld)
{
    const Value a = Root(L"a");
    const Value b = Child(a, L"b");
    EXPECT_TRUE(a.Get(L"Child").Is(b));
    EXPECT_TRUE(b.Get(L"Parent").Is(a));
    EXPECT_TRUE(b.Get(L"Root").Is(nodes.Get(L"Item", {1})));
    EXPECT_TRUE(NodesOf(control).Is(nodes));
    for (const wchar_t* const absent : {L"Parent", L"Next", L"Previous"})
        EXPECT_TRUE(a.Get(absent).IsNothing());
    EXPECT_TRUE(b.Get(L"Child").IsNothing());
    EXPECT_TRUE(tree.Get(L"SelectedItem").IsNothing());
}

TEST_F(TreeObjects, PropertiesOfANodeReachItsTree)
{
    const Value a = Add(Value::Missing(), Value::Missing(), L"a", L"k");
    const Value b = Child(a, L"b");
    // A lone child without children would be taken for a placeholder.
    Child(a, L"b2");
    EXPECT_EQ(b.Get(L"FullPath").Text(), L"a\\b");
    a.Put(L"Text", L"A");
    a.Put(L"Key", L"K");
    EXPECT_EQ(nodes.Get(L"Item", {L"K"}).Get(L"Text").Text(), L"A");
    EXPECT_EQ(ErrorOf([&] { b.Put(L"Key", L"K"); }), kKeyNotUnique);
    EXPECT_EQ(V_VT(&a.Get(L"Image").Raw()), VT_EMPTY);
    a.Put(L"Image", L"cl");
    EXPECT_EQ(a.Get(L"Image").Text(), L"cl");
    a.Put(L"Image", 2);
    EXPECT_EQ(a.Get(L"Image").Number(), 2);
    EXPECT_EQ(ErrorOf([&] { a.Put(L"Image", L"nopicture"); }), kElementNotFound);
    for (const wchar_t* const flag : {L"Checked", L"Bold", L"Expanded", L"Selected", L"Sorted"}) {
        EXPECT_FALSE(a.Get(flag).Flag());
        a.Put(flag, true);
        EXPECT_TRUE(a.Get(flag).Flag());
    }
    EXPECT_TRUE(control.Get(L"SelectedItem").Is(a));
    const Value c = Root(L"c");
    b.Set(L"Parent", c);
    EXPECT_EQ(Tree(), L"A(b2) c(b)");
    EXPECT_EQ(ErrorOf([&] { c.Set(L"Parent", b); }), kCycle);
    EXPECT_EQ(ErrorOf([&] { c.Set(L"Parent", Value::Nothing()); }), kObjectNotSet);
}

TEST_F(TreeObjects, TagKeepsAnyValue)
{
    const Value node = Root(L"a");
    EXPECT_EQ(V_VT(&node.Get(L"Tag").Raw()), VT_EMPTY);
    node.Put(L"Tag", L"text");
    EXPECT_EQ(node.Get(L"Tag").Text(), L"text");
    EventLog object(control);
    object.Disconnect();
    node.Set(L"Tag", &object);
    EXPECT_EQ(node.Get(L"Tag").Object(), &object);
    nodes.Call(L"Clear");
    EXPECT_EQ(object.References(), 0) << "a tag goes with its node";
}

TEST_F(TreeObjects, WhatIsGoneSaysSo)
{
    const Value a = Root(L"a");
    const Value b = Child(a, L"b");
    const Value alive = Root(L"c");
    nodes.Call(L"Remove", {a.Get(L"Index")});
    Value other = MakeControl();
    const Value otherTree = other.Get(L"TreeView");
    const Value otherNodes = otherTree.Get(L"Nodes");
    const Value met = otherNodes.Each().front();
    other = Value();
    const std::function<void()> uses[] = {
        [&] { a.Get(L"Text"); },
        [&] { b.Put(L"Expanded", true); },
        [&] { b.Call(L"EnsureVisible"); },
        [&] { tree.Set(L"SelectedItem", a); },
        [&] { tree.Set(L"DropHighlight", b); },
        [&] { otherTree.Get(L"Visible"); },
        [&] { otherNodes.Get(L"Count"); },
        [&] { met.Get(L"Text"); },
        [&] { alive.Set(L"Parent", met); },
    };
    for (const auto& use : uses)
        EXPECT_EQ(ErrorOf(use), kGone) << &use - uses;
    EXPECT_EQ(nodes.Get(L"Count").Number(), 1);
}

TEST_F(TreeObjects, EnumeratorStandsChangesMeanwhile)
{
    const auto walk = [&](const std::wstring& at, const std::function<void(const Value&)>& change) {
        nodes.Call(L"Clear");
        for (const wchar_t* const text : {L"a", L"b", L"c", L"d"})
            Root(text);
        const auto items = nodes.Enumerator();
        std::wstring met;
        for (Value item; items->Next(1, &item.Raw(), nullptr) == S_OK; item = Value()) {
            met += item.Get(L"Text").Text();
            if (at.find(met.back()) != at.npos) change(item);
        }
        return met;
    };
    EXPECT_EQ(walk(L"abcd", [&](auto& node) { nodes.Call(L"Remove", {node.Get(L"Index")}); }), L"abcd");
    EXPECT_EQ(walk(L"b", [&](auto&) { nodes.Call(L"Remove", {1}); }), L"abcd");
    EXPECT_EQ(walk(L"a", [&](auto&) { nodes.Call(L"Clear"); }), L"a");
    EXPECT_EQ(walk(L"d", [&](auto&) { Root(L"e"); }), L"abcde");
}

TEST_F(TreeObjects, TheHostsPicturesAreShownUntilTheTreeIsLoadedAgain)
{
    const HIMAGELIST pictures = ImageList_Create(16, 16, ILC_COLOR32, 0, 1);
    ImageList_SetImageCount(pictures, 20);
    const LONGLONG number = reinterpret_cast<LONG_PTR>(pictures);
    const Value own = tree.Get(L"ImageList");
    const Value node = Root(L"a");
    const auto take = [&](int picture) { return ErrorOf([&] { node.Put(L"Image", picture); }); };
    EXPECT_EQ(take(20), kElementNotFound);
    tree.Put(L"ImageList", number);
    EXPECT_EQ(take(20), 0);
    EXPECT_EQ(take(21), kElementNotFound);
    const auto shown = [&] {
        return reinterpret_cast<HIMAGELIST>(SendMessageW(WindowOf(control), TVM_GETIMAGELIST, TVSIL_NORMAL, 0));
    };
    EXPECT_EQ(shown(), pictures);
    for (const Value& none : {Value(0x7FFF0001), Value(number + 1), Value(number + (1LL << 32)), Value(L"pictures")})
        EXPECT_EQ(ErrorOf([&] { tree.Put(L"ImageList", none); }), kTypeMismatch);
    EXPECT_EQ(shown(), pictures);
    tree.Put(L"ImageList", own);
    EXPECT_NE(shown(), pictures);
    EXPECT_NE(shown(), nullptr);
    control.Put(L"ImageList", static_cast<double>(number));
    EXPECT_EQ(shown(), pictures);
    control.Call(L"Enumerate");
    EXPECT_EQ(V_VT(&tree.Get(L"ImageList").Raw()), VT_EMPTY);
    ImageList_Destroy(pictures);
}

TEST_F(TreeObjects, HitTestTakesTheUnitsOfTheEvents)
{
    const Value a = Root(L"a");
    const Value b = Root(L"b");
    const HWND window = WindowOf(tree);
    SetWindowPos(window, nullptr, 0, 0, 200, 200, SWP_NOMOVE | SWP_NOZORDER);
    // In the middle of the second row, in pixels; without a container the unit is the twip.
    const int height = static_cast<int>(SendMessageW(window, 0x1100 + 28 /* TVM_GETITEMHEIGHT */, 0, 0));
    const HDC screen = GetDC(nullptr);
    const double twips = 1440.0 / GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    EXPECT_TRUE(tree.Call(L"HitTest", {30 * twips, height * 1.5 * twips}).Is(b));
    EXPECT_TRUE(tree.Call(L"HitTest", {30 * twips, 190 * twips}).IsNothing());
}

}  // namespace
}  // namespace sylvex::test
