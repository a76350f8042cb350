#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "tests/simulated/simulated_desktop.h"
#include "tests/support/scene.h"
#include "widgets/nodes.h"
#include "widgets/order_index.h"

namespace sylvex {
namespace {

TEST(OrderIndex, AgreesWithAPlainListThroughRandomChanges)
{
    OrderIndex order;
    std::vector<bool> filled;
    std::mt19937 random(7);
    for (int step = 0; step < 4000; ++step) {
        const bool add = filled.empty() || random() % 3 == 0;
        if (add) {
            const bool on = random() % 2 == 0;
            ASSERT_EQ(order.Append(on), filled.size());
            filled.push_back(on);
        } else {
            const std::uint32_t slot = random() % filled.size();
            filled[slot] ? order.Empty(slot) : order.Fill(slot);
            filled[slot] = !filled[slot];
        }
        std::uint32_t position = 0;
        if (step % 50 != 0) continue;
        for (std::uint32_t slot = 0; slot < filled.size(); ++slot) {
            if (!filled[slot]) continue;
            ++position;
            ASSERT_EQ(order.PositionOf(slot), position);
            ASSERT_EQ(order.SlotAt(position), slot);
        }
        ASSERT_EQ(order.Count(), position);
    }
}

/// A tree of its own, without the control around it.
class NodesTest : public testing::Test, private TreeViewEvents {
protected:
    SimulatedDesktop desktop;
    TreeView tree{desktop.Get(), *this, desktop.windows.NewWindow()};
    Nodes& nodes = tree.GetNodes();

    Node& Add(Node* relative, Relationship relationship, const std::wstring& text, const std::wstring& key = {})
    {
        return nodes.Add(relative, relationship, key, text);
    }
    std::wstring Order(Node* first)
    {
        std::wstring texts;
        for (; first != nullptr; first = first->Next())
            texts += first->Text();
        return texts;
    }

private:
    void TV_Expand(Node&) override {}
    void TV_Collapse(Node&) override {}
    void TV_NodeClick(Node&) override {}
    void TV_NodeCheck(Node&) override {}
    void TV_DblClick() override {}
    void TV_KeyDown(short&, short) override {}
    void TV_KeyPress(short&) override {}
    void TV_KeyUp(short&, short) override {}
    void TV_MouseDown(short, short, Point) override {}
    void TV_MouseMove(short, short, Point) override {}
    void TV_MouseUp(short, short, Point) override {}
    void TV_BeforeLabelEdit(bool&) override {}
    void TV_AfterLabelEdit(bool&, const std::wstring&) override {}
};

TEST_F(NodesTest, AKeyIsFreeAgainWhenItsNodeGoesOrTakesAnother)
{
    nodes.Remove(Add(nullptr, Relationship::Last, L"a", L"k"));
    Add(nullptr, Relationship::Last, L"b", L"k").SetKey(L"m");
    EXPECT_EQ(nodes.Find(L"k"), nullptr);
    EXPECT_NE(nodes.Find(L"m"), nullptr);
}

TEST_F(NodesTest, SortingKeepsTheOrderOfEqualTexts)
{
    Node& root = Add(nullptr, Relationship::Last, L"root");
    root.SetSorted(true);
    for (const wchar_t* text : {L"b", L"a", L"B"})
        Add(&root, Relationship::Child, text);
    EXPECT_EQ(Order(root.Child()), L"abB");
    EXPECT_EQ(ErrorOf([&] { root.SetParent(root); }), 35614);
}

TEST_F(NodesTest, DeferredPlaceholdersLookAsIfTheyHadBeenThereFromTheStart)
{
    int asked = 0;
    nodes.SetPlaceholderQuestion([&](Node& node) {
        ++asked;
        return node.Text() != L"empty";
    });
    Node& root = Add(nullptr, Relationship::Last, L"root");
    for (const wchar_t* text : {L"x", L"empty", L"y"})
        nodes.DeferPlaceholder(nodes.AddChild(root, text, 0));
    Node& last = nodes.AddChild(root, L"last", 0);
    EXPECT_EQ(&nodes.Item(1), &root);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(root.Child()->Children(), 1);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(last.Index(), 7);
    EXPECT_EQ(nodes.Count(), 7);
    EXPECT_EQ(nodes.Item(3).Parent(), root.Child());
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(root.Child()->Next()->Children(), 0);
}

TEST_F(NodesTest, PlaceholdersAreAskedForBeforeTheirPathsChange)
{
    std::wstring asked;
    nodes.SetPlaceholderQuestion([&](Node& node) {
        asked += node.FullPath() + L" ";
        return false;
    });
    Node& root = Add(nullptr, Relationship::Last, L"root");
    Node& a = nodes.AddChild(root, L"a", 0);
    for (Node* const parent : {&a, &root, &root})
        nodes.DeferPlaceholder(nodes.AddChild(*parent, L"x", 0));
    nodes.SetPathSeparator(L"\\");
    EXPECT_EQ(asked, L"") << "the separator is the same";
    a.SetTextAlone(L"b");
    EXPECT_EQ(std::exchange(asked, L""), L"root\\a\\x ");
    a.Next()->SetTextAlone(L"y");
    EXPECT_EQ(std::exchange(asked, L""), L"root\\x ");
    nodes.SetPathSeparator(L"/");
    EXPECT_EQ(asked, L"root\\x ");
    EXPECT_EQ(root.LastSibling(), &root);
}

TEST_F(NodesTest, AFailingPlaceholderQuestionIsAskedAgain)
{
    bool fail = true;
    nodes.SetPlaceholderQuestion([&](Node&) -> bool {
        if (fail) throw OutOfMemory();
        return true;
    });
    Node& root = Add(nullptr, Relationship::Last, L"root");
    nodes.DeferPlaceholder(root);
    EXPECT_EQ(ErrorOf([&] { nodes.Count(); }), 7);
    fail = false;
    EXPECT_EQ(nodes.Count(), 2);
}

TEST_F(NodesTest, PlaceholdersKeepTheirIndicesWhenMostOfTheNodesGo)
{
    nodes.SetPlaceholderQuestion([](Node&) { return true; });
    Node& junk = Add(nullptr, Relationship::Last, L"junk");
    Node& folder = Add(nullptr, Relationship::Last, L"folder");
    nodes.DeferPlaceholder(folder);
    Node& last = Add(nullptr, Relationship::Last, L"last");
    for (int i = 0; i < 5000; ++i)
        nodes.AddChild(junk, L"", 0);
    nodes.Remove(junk);
    EXPECT_EQ(nodes.Count(), 3);
    EXPECT_EQ(&nodes.Item(2), folder.Child());
    EXPECT_EQ(&nodes.Item(3), &last);
    EXPECT_EQ(last.Index(), 3);
}

TEST_F(NodesTest, ReferencesOutliveTheirNodeAndAnswerWithAnError)
{
    Node& a = Add(nullptr, Relationship::Last, L"a");
    Node& b = Add(&a, Relationship::Child, L"b");
    const NodeRef one(&b);
    const NodeRef two(one);
    nodes.Remove(a);
    EXPECT_EQ(one.IfAlive(), nullptr);
    EXPECT_EQ(ErrorOf([&] { one.Get(); }), 35605);
    EXPECT_EQ(ErrorOf([&] { (*two).Text(); }), 35605);
    EXPECT_EQ(NodeRef().Get(), nullptr);
}

/// A host's object that does something when it is let go of.
struct LastWords final : Object {
    explicit LastWords(std::function<void()> words) : spoken(std::move(words)) {}
    ~LastWords() override { spoken(); }
    std::function<void()> spoken;
};

// A host may do anything when a tag of its own is let go of.
TEST_F(NodesTest, TagsAreLetGoOfOnceTheTreeIsInOrder)
{
    Node& root = Add(nullptr, Relationship::Last, L"r", L"root");
    Node& branch = Add(&root, Relationship::Child, L"b");
    Node& leaf = Add(&branch, Relationship::Child, L"l", L"leaf");
    int told = 0;
    const auto addAnother = [&] {
        ++told;
        EXPECT_EQ(nodes.Count(), told);
        Add(&nodes.Item(L"root"), Relationship::Child, L"n");
    };
    for (Node* node : {&branch, &leaf})
        node->SetTag(std::make_shared<LastWords>(addAnother));
    nodes.Remove(branch);
    EXPECT_EQ(Order(root.Child()), L"nn");
    root.SetTag(std::make_shared<LastWords>([&] {
        EXPECT_EQ(nodes.Count(), 0);
        Add(nullptr, Relationship::Last, L"new");
    }));
    nodes.Clear();
    EXPECT_EQ(nodes.Item(1).Text() + std::to_wstring(told), L"new2");
}

TEST_F(NodesTest, SortingIsByTextWithoutLetterCaseAndStable)
{
    Node& root = Add(nullptr, Relationship::Last, L"root");
    for (const wchar_t* text : {L"b", L"C", L"a", L"B"})
        nodes.AddChild(root, text, 0);
    root.SetSorted(true);
    EXPECT_EQ(Order(root.Child()), L"abBC");
    Add(&root, Relationship::Child, L"bb");
    EXPECT_EQ(Order(root.Child()), L"abBbbC");
    root.SetSorted(false);
    Add(&root, Relationship::Child, L"0");
    EXPECT_EQ(Order(root.Child()), L"abBbbC0");
    EXPECT_EQ(root.Child()->LastSibling()->Previous()->Text(), L"C");
}

TEST_F(NodesTest, RowsExistOnlyBelowOpenedNodesAndFollowTheModel)
{
    Node& a = Add(nullptr, Relationship::Last, L"a");
    Node& b = Add(&a, Relationship::Child, L"b");
    Add(&b, Relationship::Child, L"c");
    const SimulatedTree& window = *desktop.windows.Trees().front();
    EXPECT_EQ(window.RowCount(), 1);
    b.EnsureVisible();
    EXPECT_EQ(window.RowCount(), 2);
    b.SetExpanded(true);
    Add(&b, Relationship::First, L"b0");
    nodes.AddChild(b, L"d", 0);
    EXPECT_EQ(window.RowCount(), 5);
    b.SetSorted(true);
    EXPECT_EQ(window.RowCount(), 5);
    EXPECT_TRUE(b.Expanded());
    nodes.Remove(b);
    EXPECT_EQ(window.RowCount(), 2);
    tree.DetachWindow();
    Add(&a, Relationship::Child, L"e").EnsureVisible();
    tree.AttachWindow(desktop.windows.NewWindow());
    EXPECT_EQ(desktop.windows.Trees().back()->RowCount(), 3);
}

TEST_F(NodesTest, VeryDeepBranchesAreFreedWithoutTheStack)
{
    Node* node = &Add(nullptr, Relationship::Last, L"a");
    for (int depth = 0; depth < 200000; ++depth)
        node = &nodes.AddChild(*node, L"a", 0);
    EXPECT_EQ(nodes.Count(), 200001);
    nodes.Remove(*nodes.Item(1).Child());
    EXPECT_EQ(nodes.Count(), 1);
}

}  // namespace
}  // namespace sylvex
