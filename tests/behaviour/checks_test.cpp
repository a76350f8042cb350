#include <gtest/gtest.h>

#include "tests/support/scene.h"

namespace sylvex {
namespace {

/// A tree of folders a (with a1, a2), b and c, opened and unticked, with a list bound.
class ChecksTest : public testing::Test {
protected:
    ChecksTest()
    {
        scene.desk().Make({L"t\\a\\a1\\", L"t\\a\\a2\\", L"t\\b\\", L"t\\c\\"});
        scene.BindList();
        scene.Enumerate();
        scene.At(L"t/a/a1");
        scene.Heard();
    }
    std::wstring State() { return Scene::Render(scene.At(L"t")); }
    void Tick(const std::wstring& path, bool checked = true) { scene.Tick(scene.At(L"t/" + path), checked); }
    Scene scene;
};

TEST_F(ChecksTest, ATickRunsDownAndMakesTheAncestorsMixed)
{
    Tick(L"a");
    EXPECT_EQ(State(), L"t[-]~(a[-]x(a1x a2x) b c)");
    EXPECT_TRUE(scene.nodes().Item(L"MyComputer").Bold());
    EXPECT_TRUE(scene.nodes().Item(1).Bold());
    Tick(L"a/a1", false);
    EXPECT_EQ(State(), L"t[-]~(a[-]~(a1 a2x) b c)");
}

TEST_F(ChecksTest, AncestorsFollowWhenAllSiblingsAgree)
{
    Tick(L"a");
    Tick(L"b");
    Tick(L"c");
    EXPECT_EQ(State(), L"t[-]x(a[-]x(a1x a2x) bx cx)");
    Tick(L"a", false);
    Tick(L"b", false);
    Tick(L"c", false);
    EXPECT_EQ(State(), L"t[-](a[-](a1 a2) b c)");
    EXPECT_FALSE(scene.nodes().Item(1).Bold());
}

TEST_F(ChecksTest, WithoutRecursionATickStandsForOneFolder)
{
    scene.control().LetRecursiveCheck(false);
    Tick(L"b");
    EXPECT_EQ(State(), L"t[-]~(a[-](a1 a2) bx c)");
    Tick(L"c");
    EXPECT_EQ(State(), L"t[-]~(a[-](a1 a2) bx cx)");
    Tick(L"a");
    // All siblings agree now, so the node itself is shown mixed; its childless children follow.
    EXPECT_EQ(State(), L"t[-]~(a[-]x~(a1x a2x) bx cx)");
}

TEST_F(ChecksTest, ATickedFolderThatIsReadAgainIsFoundInTheList)
{
    scene.desk().Make({L"p\\Only\\"});
    for (const wchar_t* const filter : {L"*", L"*.txt|*.Doc", L""}) {
        scene.control().LetRecursiveCheck(false);
        scene.control().LetBuildFileListFilter(filter);
        scene.Enumerate();
        scene.Tick(scene.At(L"p/Only"), true);
        Node& parent = scene.At(L"p");
        parent.SetExpanded(false);
        parent.SetExpanded(true);
        EXPECT_TRUE(parent.Child()->Checked());
    }
}

TEST_F(ChecksTest, WithoutRecursionAChildWithChildrenKeepsItsMarks)
{
    scene.control().LetRecursiveCheck(false);
    scene.Tick(scene.At(L"t"), true);
    EXPECT_FALSE(scene.At(L"t/a").Checked());
    EXPECT_TRUE(scene.At(L"t/b").Checked());
}

TEST_F(ChecksTest, ChildrenLoadedLaterTakeTheStateOfATickedOrUntickedParent)
{
    scene.desk().Make({L"late\\x\\", L"late\\y\\"});
    scene.Enumerate();
    Node& late = scene.At(L"late");
    scene.Tick(late, true);
    late.SetExpanded(true);
    EXPECT_EQ(Scene::Render(late), L"late[-]x(xx yx)");
}

TEST_F(ChecksTest, ATickOnARootLeavesTheListAsItIsUntilADeeperPass)
{
    Tick(L"b");
    EXPECT_EQ(scene.list().RowCount(), 1);
    scene.Tick(scene.nodes().Item(1), false);
    EXPECT_TRUE(InTreeSetParent());
    EXPECT_EQ(scene.list().RowCount(), 1);
    EXPECT_EQ(State(), L"t[-](a[-](a1 a2) b c)");
    Tick(L"b");
    EXPECT_FALSE(InTreeSetParent());
    EXPECT_EQ(scene.list().RowCount(), 1);
    Tick(L"b", false);
    EXPECT_EQ(scene.list().RowCount(), 0);
}

TEST_F(ChecksTest, EveryHandledTickIsHeardOnceAndAnswersFalse)
{
    Node& node = scene.At(L"t/b");
    EXPECT_FALSE(scene.control().CheckNodeSelective(&node));
    EXPECT_EQ(scene.Heard(), L"NodeCheck:b");
    EXPECT_TRUE(scene.list().Visible());
    EXPECT_EQ(ErrorOf([&] { scene.control().CheckNodeSelective(nullptr); }), 65535);
}

TEST(ChecksWithoutAList, MarksAreWrittenAndTheMissingListIsAnError)
{
    Scene scene;
    scene.desk().Make({L"a\\", L"b\\"});
    scene.Enumerate();
    Node& node = scene.At(L"a");
    scene.Heard();
    EXPECT_EQ(ErrorOf([&] { scene.Tick(node, true); }), 65535);
    EXPECT_TRUE(node.Checked());
    EXPECT_EQ(scene.Heard(), L"");
    EXPECT_TRUE(scene.OpenBase().Bold());
}

TEST_F(ChecksTest, ADeferredPlaceholderIsMarkedAsIfItHadBeenThere)
{
    scene.desk().Make({L"p\\q\\r\\"});
    scene.Enumerate();
    Node& p = scene.At(L"p");
    p.SetExpanded(true);
    scene.Tick(p, true);
    EXPECT_TRUE(scene.At(L"p/q").Child()->Checked());
}

}  // namespace
}  // namespace sylvex
