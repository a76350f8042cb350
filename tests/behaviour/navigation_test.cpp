#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/scene.h"

namespace sylvex {
namespace {

/// A control with a list; rows are added by hand, as a host may.
class NavigationTest : public testing::Test {
protected:
    Scene scene;
    Sylvex& control = scene.control();

    void Start()
    {
        scene.BindList();
        scene.Enumerate();
    }
    std::wstring PathOf(const std::wstring& name) { return scene.desk().PathOf(name); }
    /// Makes a row of that text the only one, and selects it.
    void SelectRow(const std::wstring& text, const std::wstring& type = L"File")
    {
        scene.list().ClearRows();
        scene.list().InsertRow(0, text, -1);
        scene.list().SetCell(0, control.ReqListView()->SubItemIndex(L"typ"), type);
        scene.list().SelectRow(0, true);
    }
    void SelectFolderRow(const std::wstring& text) { SelectRow(text, control.State().list.sFolder); }
    /// The path of the selected node below the scratch folder; "-" for no selection.
    std::wstring Selected()
    {
        Node* node = control.SelectedItem();
        if (node == nullptr) return L"-";
        const std::wstring path = control.BuildFullPath(node);
        const std::wstring base = PathOf(L"");
        return path.starts_with(base) ? path.substr(base.size()) : path;
    }
    std::wstring GoTo(const std::wstring& row)
    {
        control.LetSelectedItem(nullptr);
        SelectRow(row);
        control.SetNode();
        return Selected();
    }
};

TEST_F(NavigationTest, PathSelectsALoadedNodeWhateverTheLetterCaseAndOpensWhatHidesIt)
{
    scene.desk().Make({L"d\\Sub\\x\\", L"d\\other\\", L"d\\\u0424\u0430\u0439\u043B\\"});
    scene.Enumerate();
    Node& d = scene.At(L"d");
    d.SetExpanded(true);
    d.SetExpanded(false);
    Node& computer = scene.nodes().Item(L"MyComputer");
    computer.SetExpanded(false);
    scene.Heard();
    control.LetPath(PathOf(L"D\\SUB"));
    EXPECT_EQ(Selected(), L"d\\Sub\\");
    EXPECT_TRUE(d.Expanded() && computer.Expanded());
    EXPECT_EQ(scene.Heard(), L"changed:Path Expand:" + computer.Text() + L" Expand:d");
    EXPECT_EQ(control.Path(), PathOf(L"D\\SUB"));
    control.LetPath(PathOf(L"d\\\u0444\u0410\u0419\u041B"));
    EXPECT_EQ(Selected(), L"d\\\u0424\u0430\u0439\u043B\\");
}

TEST_F(NavigationTest, PathOfAFolderThatIsNotLoadedIsKeptUntilItIs)
{
    scene.desk().Make({L"d\\sub\\"});
    scene.Enumerate();
    control.LetPath(PathOf(L"d\\sub"));
    EXPECT_EQ(Selected(), L"-");
    EXPECT_EQ(control.Path(), PathOf(L"d\\sub"));
    scene.At(L"d").SetExpanded(true);
    control.SetNodeVisible();
    EXPECT_EQ(Selected(), L"d\\sub\\");
}

TEST_F(NavigationTest, ValuesThatNameNothingChangeNothing)
{
    scene.desk().Make({L"d\\sub\\"});
    Start();
    scene.At(L"d");
    control.LetPath(PathOf(L"d"));
    scene.Heard();
    for (const std::wstring& value :
         {std::wstring(), std::wstring(L"C:\\"), PathOf(L"d\\"), PathOf(L"gone"), std::wstring(40'000, L'x'),
          PathOf(std::wstring(40'000, L'x')), L"\"" + PathOf(L"d") + L"\"", std::wstring(L"no such thing"),
          std::wstring(L"\\\\no-such-server\\share\\x"), std::wstring(L"\\\\"), std::wstring(L":")}) {
        const auto begin = std::chrono::steady_clock::now();
        control.LetPath(value);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
        EXPECT_EQ(control.Path(), PathOf(L"d")) << value.size();
        EXPECT_EQ(Selected(), L"d\\");
    }
    EXPECT_EQ(scene.Heard(), L"");
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
}

TEST_F(NavigationTest, WritingPathRebuildsTheBoundList)
{
    scene.desk().Make({L"a\\", L"b\\"});
    Start();
    scene.Tick(scene.At(L"a"), true);
    scene.list().InsertRow(0, L"left by the host", -1);
    control.LetPath(PathOf(L"gone"));
    EXPECT_EQ(scene.list().RowCount(), 2);
    control.LetPath(PathOf(L"b"));
    EXPECT_EQ(scene.RowTexts(), L"a\\*");
    EXPECT_TRUE(scene.list().Visible());
}

TEST_F(NavigationTest, TheOnlyChildOfAClosedFolderIsFoundAlthoughOpeningReadsItAnew)
{
    scene.desk().Make({L"one\\only\\"});
    scene.Enumerate();
    Node& one = scene.At(L"one");
    one.SetExpanded(true);
    one.SetExpanded(false);
    control.LetPath(PathOf(L"one\\only"));
    EXPECT_EQ(Selected(), L"one\\only\\");
    EXPECT_EQ(control.SelectedItem(), one.Child());
    one.SetExpanded(false);
    EXPECT_TRUE(one.Child()->EnsureVisible());
    EXPECT_TRUE(one.Expanded());
    one.SetExpanded(false);
    control.LetSelectedItem(one.Child());
    EXPECT_EQ(Selected(), L"one\\only\\");
}

TEST_F(NavigationTest, SetNodeFollowsTheRowOfAFileAndOfAFolder)
{
    scene.desk().Make({L"t\\a\\deep\\f.txt", L"t\\a\\deep\\g\\", L"t\\ab\\x\\"});
    Start();
    EXPECT_EQ(GoTo(PathOf(L"T\\A\\Deep\\F.TXT")), L"t\\a\\deep\\f.txt\\");
    EXPECT_EQ(GoTo(PathOf(L"t\\a\\deep")), L"t\\a\\deep\\");
    EXPECT_EQ(GoTo(PathOf(L"t\\ab\\*")), L"t\\ab\\");
    EXPECT_EQ(GoTo(scene.desk().Base()), L"");
    for (const wchar_t* pattern : {L"*", L"*.txt", L""}) {
        SelectFolderRow(PathOf(L"t\\a\\") + pattern);
        control.SetNode();
        EXPECT_EQ(Selected(), L"t\\a\\");
    }
    SelectFolderRow(L"C:\\*");
    control.SetNode();
    EXPECT_EQ(Selected(), L"C:\\");
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
}

TEST_F(NavigationTest, APathThatHasGoneIsToldOnceByTheDeepestLevel)
{
    scene.desk().Make({L"t\\a\\x\\", L"t\\b\\"});
    Start();
    EXPECT_EQ(GoTo(PathOf(L"t\\a\\gone\\deeper\\*")), L"-");
    EXPECT_TRUE(scene.At(L"t").Expanded());
    EXPECT_EQ(scene.desk().TakeMessages(),
              L"[" + PathOf(L"t\\a\\gone\\deeper\\*") + L" is not present on current FileSystem!]");
    // A separator alone at the end leads into the folder.
    EXPECT_EQ(GoTo(PathOf(L"t\\a\\")), L"-");
    EXPECT_EQ(scene.desk().TakeMessages(), L"[" + PathOf(L"t\\a\\") + L" is not present on current FileSystem!]");
    EXPECT_EQ(GoTo(PathOf(L"t\\b")), L"t\\b\\");
}

TEST_F(NavigationTest, ADescentEndsWhereAllChildrenHaveTheirParentsPath)
{
    scene.desk().Make({L"t\\a\\"});
    Start();
    control.LetPathSeparator(L"/");
    const std::wstring row = PathOf(L"t\\a");
    const std::wstring told = L"[" + row + L" is not present on current FileSystem!]";
    EXPECT_EQ(GoTo(row), L"-");
    EXPECT_EQ(scene.desk().TakeMessages(), told);
    control.SetNodeChecked(true, false);
    EXPECT_EQ(scene.desk().TakeMessages(), told);
}

TEST_F(NavigationTest, ATreeMayBeDeeperThanTheStack)
{
    constexpr int kLevels = 12'000;
    Start();
    Node* deepest = &scene.nodes().Add(nullptr, Relationship::Last, {}, L"a");
    Node& top = *deepest;
    for (int level = 0; level < kLevels; ++level) {
        // An only child without children would be taken for a placeholder.
        scene.nodes().AddChild(*deepest, L"b", 0);
        deepest = &scene.nodes().AddChild(*deepest, L"a", 0);
    }
    const NodeRef bottom(deepest);
    control.LetSelectedItem(&*bottom);
    EXPECT_EQ(control.SelectedItem(), deepest);
    EXPECT_TRUE(deepest->Parent()->Expanded());
    scene.Tick(top, true);
    EXPECT_TRUE(deepest->Checked());
    scene.nodes().Remove(*top.Child()->Next());
    EXPECT_EQ(bottom.IfAlive(), nullptr);
    EXPECT_EQ(top.Children(), 1);
}

TEST_F(NavigationTest, RowsThatAreNoPathsLeadNowhere)
{
    Start();
    const std::wstring huge(40'000, L'y');
    for (const std::wstring& text : {std::wstring(), std::wstring(L"*"), std::wstring(L"hello"), std::wstring(L"\\"),
                                     std::wstring(L"\\\\server\\share\\x"), std::wstring(L"Q:\\x"), huge})
        EXPECT_EQ(GoTo(text), L"-");
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
    EXPECT_EQ(GoTo(L"C:"), L"-");
    EXPECT_EQ(scene.desk().TakeMessages(), L"[C: is not present on current FileSystem!]");
    EXPECT_EQ(GoTo(PathOf(huge)), L"-");
    EXPECT_EQ(scene.desk().TakeMessages(), L"[" + PathOf(huge) + L" is not present on current FileSystem!]");
    scene.list().ClearRows();
    control.SetNode();
    EXPECT_EQ(Selected(), L"-");
}

TEST_F(NavigationTest, FilesOfListedTypesAreFoundBesideNamesThatBeginLikeThem)
{
    scene.desk().Make({L"d\\a.zip", L"d\\a.zip.bak", L"d\\folder.zip\\x\\"});
    control.LetFileFilter(L"*.zip");
    Start();
    EXPECT_EQ(GoTo(PathOf(L"d\\a.zip")), L"d\\a.zip");
    EXPECT_EQ(GoTo(PathOf(L"d\\a.zip.bak")), L"d\\a.zip.bak\\");
    EXPECT_EQ(GoTo(PathOf(L"d\\folder.zip\\*")), L"d\\folder.zip");
    control.LetPath(PathOf(L"d\\a.zip"));
    EXPECT_EQ(Selected(), L"d\\a.zip");
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
}

TEST_F(NavigationTest, LongPathsInOtherScriptsAreFollowed)
{
    std::wstring name = L"t";
    for (int level = 0; level < 5; ++level)
        name += L"\\" + std::wstring(70, L'\u03B1') + std::to_wstring(level);
    scene.desk().MakeFolder(name);
    Start();
    EXPECT_EQ(GoTo(PathOf(name)), name + L"\\");
    control.LetSelectedItem(nullptr);
    control.LetPath(PathOf(name));
    EXPECT_EQ(Selected(), name + L"\\");
}

// ---- ticking by path

class CheckByPathTest : public NavigationTest {
protected:
    void SetUp() override
    {
        scene.desk().Make({L"t\\a\\x\\", L"t\\b\\", L"t\\f.doc"});
        Start();
    }
    std::wstring State() { return Scene::Render(scene.At(L"t")); }
};

TEST_F(CheckByPathTest, TheRowsNodeGetsTheMarkAndTheListIsRebuiltWhenAsked)
{
    SelectRow(PathOf(L"t\\a"));
    control.SetNodeChecked(true);
    EXPECT_EQ(State(), L"t[-]~(a[+]x b f.doc)");
    EXPECT_EQ(scene.RowTexts(), L"t\\a");
    EXPECT_FALSE(control.State().navigation.InSetNodeChecked);
    scene.Heard();
    control.SetNodeChecked(false, true);
    EXPECT_EQ(State(), L"t[-](a[+] b f.doc)");
    EXPECT_EQ(scene.list().RowCount(), 0);
    EXPECT_EQ(scene.Heard(), L"NodeCheck:a");
}

TEST_F(CheckByPathTest, APatternStandsForItsFolder)
{
    for (const wchar_t* row : {L"t\\a\\*.doc", L"t\\a\\*", L"t\\a\\?.*x"}) {
        SelectRow(PathOf(row));
        control.SetNodeChecked(true);
        EXPECT_TRUE(scene.At(L"t/a").Checked());
        SelectRow(PathOf(row));
        control.SetNodeChecked(false);
        EXPECT_FALSE(scene.At(L"t/a").Checked());
    }
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
}

TEST_F(CheckByPathTest, ADriveIsTickedOnlyWhenThatChangesIt)
{
    SelectRow(L"C:\\*.doc");
    scene.Heard();
    control.SetNodeChecked(false);
    EXPECT_EQ(scene.Heard(), L"");
    control.SetNodeChecked(true);
    EXPECT_TRUE(scene.nodes().Item(L"C:\\").Checked());
    EXPECT_EQ(scene.Heard(), L"NodeCheck:" + scene.nodes().Item(L"C:\\").Text());
}

TEST_F(CheckByPathTest, WhatIsNotThereIsToldAndTheFlagIsReset)
{
    const std::wstring gone = PathOf(L"t\\a\\x\\gone");
    SelectRow(gone);
    control.SetNodeChecked(true);
    EXPECT_EQ(scene.desk().TakeMessages(), L"[" + gone + L" is not present on current FileSystem!]");
    EXPECT_FALSE(control.State().navigation.InSetNodeChecked);
    EXPECT_TRUE(scene.At(L"t/a").Expanded());
    for (const wchar_t* const text : {L"hello", L"", L"Q:\\x", L"?"}) {
        SelectRow(text);
        control.SetNodeChecked(true);
    }
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
    EXPECT_EQ(State(), L"t[-](a[-](x) b f.doc)");
}

TEST_F(CheckByPathTest, TheFlagStaysWhenNoRowIsSelectedAndAfterAnError)
{
    control.SetNodeChecked(true);
    EXPECT_TRUE(control.State().navigation.InSetNodeChecked);
    control.SetNodeChecked(true, true);
    EXPECT_FALSE(control.State().navigation.InSetNodeChecked);
    SelectRow(L"C:");
    EXPECT_EQ(ErrorOf([&] { control.SetNodeChecked(true); }), 65535);
    EXPECT_TRUE(control.State().navigation.InSetNodeChecked);
}

/// The marks of children that load below a ticked, an unticked and a mixed parent; a row names the first child.
TEST_F(CheckByPathTest, ChildrenThatLoadTakeRowsAndParentsIntoAccount)
{
    scene.desk().Make({L"p\\leaf\\", L"p\\tree\\x\\"});
    for (int of = 0; of < 12; ++of) {
        const bool recursive = of % 2 != 0;
        const bool row = of / 2 % 2 != 0;
        const bool checked = of / 4 == 1;
        const bool bold = of / 4 == 2;
        scene.Enumerate();
        Node& p = scene.At(L"p");
        control.LetRecursiveCheck(recursive);
        SelectRow(row ? PathOf(L"P\\leaf") : L"other");
        p.WriteMarks(checked, bold);
        scene.At(L"t");
        p.SetExpanded(true);
        const std::wstring shown = Scene::Render(p);
        // Without recursion a node whose siblings share its mark is shown mixed itself.
        const bool leaf = checked || (bold && row);
        const bool tree = checked && recursive;
        EXPECT_EQ(shown.substr(shown.find(L'(')),
                  std::wstring(leaf ? L"(leafx" : L"(leaf") + (tree ? L" tree[+]x)" : L" tree[+])"));
        EXPECT_EQ(p.Checked(), checked);
    }
}

}  // namespace
}  // namespace sylvex
