#include <gtest/gtest.h>

#include "tests/support/scene.h"

namespace sylvex {
namespace {

class TreeTest : public testing::Test {
protected:
    Scene scene;
    std::wstring PathOf(const std::wstring& name) { return scene.control().BuildFullPath(&scene.At(name)); }
};

TEST_F(TreeTest, ANewControlShowsOnePlaceholderNodeThatNamesIt)
{
    ASSERT_EQ(scene.nodes().Count(), 1);
    Node& node = scene.nodes().Item(1);
    EXPECT_EQ(node.Text(), L"Sylvex + [ *.zip ]");
    EXPECT_EQ(node.Key(), L"Sylvex");
    EXPECT_EQ(node.Image(), ImageName(L"cl"));
    EXPECT_EQ(
        scene.control().Parts().ImageList1.Keys(),
        (std::vector<std::wstring>{L"dt", L"hd", L"ram", L"cl", L"mc", L"cd", L"f35", L"op", L"rte", L"cp", L"new"}));
}

TEST_F(TreeTest, EnumerateLoadsTheRootsOnceAndOpensDownToTheFirstFixedDrive)
{
    for (int again = 0; again < 3; ++again) {
        scene.Enumerate();
        Node& desktop = scene.nodes().Item(1);
        EXPECT_EQ(desktop.Key(), L"Desktop");
        EXPECT_EQ(desktop.Text(), L"Desktop");
        EXPECT_TRUE(desktop.Expanded());
        EXPECT_EQ(desktop.Children(), 2);
        EXPECT_EQ(desktop.Child()->Next()->Key(), L"MyComputer");
        EXPECT_TRUE(scene.nodes().Item(L"MyComputer").Expanded());
        EXPECT_EQ(scene.nodes().Item(L"C:\\").Children(), 1);
        EXPECT_EQ(scene.control().State().tree.m_cxyAutoScroll, 32);
    }
}

TEST_F(TreeTest, FoldersComeBeforeFilesEachGroupInTextOrderWithoutDotNames)
{
    scene.desk().Make({L"b\\", L"A\\", L"z.txt", L"a.TXT", L".git\\", L".profile", L"\u0391\u03B8\u03AE\u03BD\u03B1\\",
                       L"\u4E2D\u6587.txt"});
    scene.Enumerate();
    EXPECT_EQ(scene.RenderBase().substr(scene.RenderBase().find(L'(')),
              L"(A b \u0391\u03B8\u03AE\u03BD\u03B1 a.TXT z.txt \u4E2D\u6587.txt)");
    Node& folder = scene.At(L"b");
    EXPECT_EQ(folder.Image(), ImageName(L"cl"));
    EXPECT_EQ(folder.ExpandedImage(), ImageName(L"op"));
    EXPECT_EQ(folder.Key(), L"");
    EXPECT_EQ(scene.At(L"z.txt").Image(), ImageName(L"new"));
}

TEST_F(TreeTest, AFolderShowsAButtonForASubfolderOrAFileThatThePatternsMatch)
{
    scene.desk().Make({L"sub\\x\\", L"zip\\a.ZIP", L"other\\a.txt", L"dot\\.x\\", L"empty\\"});
    scene.control().LetFileFilter(L"*.zip;q?.doc");
    scene.Enumerate();
    EXPECT_EQ(scene.RenderBase().substr(scene.RenderBase().find(L'(')), L"(dot empty other sub[+] zip[+])");
    scene.desk().Make({L"other\\QX.doc"});
    scene.Enumerate();
    EXPECT_EQ(scene.At(L"other").Children(), 1);
    EXPECT_EQ(Scene::Render(scene.At(L"zip")), L"zip[+]");
}

TEST_F(TreeTest, AFolderIsReadWhenFirstOpenedAndAgainOnlyWhileItHoldsOneChildlessChild)
{
    scene.desk().Make({L"one\\only\\", L"two\\x\\", L"two\\y\\"});
    scene.Enumerate();
    for (const wchar_t* name : {L"one", L"two"}) {
        scene.At(name).SetExpanded(true);
        scene.At(name).SetExpanded(false);
    }
    scene.desk().Make({L"one\\new\\", L"two\\new\\"});
    for (const wchar_t* name : {L"one", L"two"})
        scene.At(name).SetExpanded(true);
    EXPECT_EQ(Scene::Render(scene.At(L"one")), L"one[-](new only)");
    EXPECT_EQ(Scene::Render(scene.At(L"two")), L"two[-](x y)");
}

TEST_F(TreeTest, AFolderThatIsEmptyOrGoneWhenOpenedHasNoChildren)
{
    scene.desk().Make({L"gone\\x\\", L"emptied\\x\\"});
    scene.Enumerate();
    Node& gone = scene.At(L"gone");
    Node& emptied = scene.At(L"emptied");
    EXPECT_EQ(gone.Children() + emptied.Children(), 2);
    scene.desk().Remove(L"gone");
    scene.desk().Remove(L"emptied\\x");
    gone.SetExpanded(true);
    emptied.SetExpanded(true);
    EXPECT_EQ(Scene::Render(gone), L"gone");
    EXPECT_EQ(Scene::Render(emptied), L"emptied");
}

TEST_F(TreeTest, PathsOfFoldersEndInASeparatorAndThoseOfListedFilesDoNot)
{
    scene.desk().Make({L"d\\a.zip", L"d\\b.txt", L"d\\c.zip\\", L"d\\sub\\x\\"});
    scene.control().LetFileFilter(L"*.Zip");
    scene.Enumerate();
    const std::wstring base = scene.desk().Base() + L"\\d\\";
    EXPECT_EQ(PathOf(L"d"), base);
    EXPECT_EQ(PathOf(L"d/a.zip"), base + L"a.zip");
    EXPECT_EQ(PathOf(L"d/b.txt"), base + L"b.txt\\");
    EXPECT_EQ(PathOf(L"d/c.zip"), base + L"c.zip");
    EXPECT_EQ(PathOf(L"d/sub"), base + L"sub\\");
    Sylvex& control = scene.control();
    EXPECT_EQ(control.BuildFullPath(&scene.nodes().Item(L"C:\\")), L"C:\\");
    EXPECT_EQ(control.BuildFullPath(&scene.nodes().Item(1)), L"Desktop\\");
    EXPECT_EQ(control.BuildFullPath(&scene.nodes().Item(L"MyComputer")), L"Desktop\\My Computer\\");
}

TEST_F(TreeTest, AFolderOfAListedTypeShowsWhatIsInIt)
{
    scene.desk().Make({L"d.zip\\a\\deep\\", L"d.zip\\b.txt", L"d.zip.other.txt"});
    scene.control().LetFileFilter(L"*.zip");
    scene.Enumerate();
    scene.At(L"d.zip").SetExpanded(true);
    EXPECT_EQ(Scene::Render(scene.At(L"d.zip")), L"d.zip[-](a[+] b.txt)");
    scene.At(L"d.zip/a").SetExpanded(true);
    EXPECT_EQ(Scene::Render(scene.At(L"d.zip/a")), L"a[-](deep)");
}

// To the user's language some of these are the same.
TEST_F(TreeTest, AFolderIsReadToItsEndWhateverTheNamesAre)
{
    scene.desk().Make({L"d\\stra\u00DFe\\", L"d\\strasse\\", L"d\\\u00E4\\", L"d\\a\u0308\\", L"d\\z\\"});
    scene.Enumerate();
    scene.At(L"d").SetExpanded(true);
    EXPECT_EQ(scene.At(L"d").Children(), 5);
}

TEST_F(TreeTest, NodesBelowMyDocumentsResolveToItsPath)
{
    scene.Enumerate();
    const std::wstring documents = scene.control().State().tree.m_MyDocs;
    Node& node = *scene.nodes().Item(1).Child();
    EXPECT_EQ(node.Text(), documents.substr(3));
    EXPECT_EQ(scene.control().BuildFullPath(&node), documents + L"\\");
    EXPECT_EQ(scene.control().BuildFullPath(&scene.nodes().AddChild(node, L"Letters", 0)), documents + L"\\Letters\\");
}

TEST_F(TreeTest, AHostMayEmptyTheTreeInsideTheExpandEvent)
{
    scene.desk().Make({L"d\\x\\"});
    scene.Enumerate();
    Node& node = scene.At(L"d");
    scene.onEvent = [&](const std::wstring& event, Node*) {
        if (event == L"Expand:") scene.control().Clear();
    };
    EXPECT_EQ(ErrorOf([&] { node.SetExpanded(true); }), 65535);
    scene.onEvent = nullptr;
    scene.Enumerate();
    EXPECT_EQ(scene.At(L"d").Children(), 1);
}

TEST_F(TreeTest, TextHelpersKeepTheirEdges)
{
    FolderTree& helpers = scene.control().Folders();
    EXPECT_EQ(helpers.GetExt(L"Setup.ZIP"), L"zip");
    EXPECT_EQ(helpers.GetExt(L"archive."), L"");
    EXPECT_EQ(helpers.GetExt(L"noext"), L"");
    EXPECT_EQ(helpers.GetExt(L".profile"), L"profile");
    EXPECT_EQ(helpers.StripNull(std::wstring(L"ab\0cd", 5)), L"ab");
    EXPECT_EQ(helpers.StripNull(std::wstring(L"\0cd", 3)), L"");
    EXPECT_EQ(helpers.StripNull(L"  a b  "), L"a b");
    EXPECT_EQ(helpers.QualifyPath(L"C:\\"), L"C:\\");
    EXPECT_EQ(helpers.QualifyPath(L""), L"\\");
}

TEST(LikePatternTest, StarsAndQuestionMarksMatchWithoutLetterCase)
{
    const auto desk = MakeDesk();
    Regional& regional = desk->Get().regional;
    const auto like = [&](const wchar_t* text, const wchar_t* pattern) { return LikePattern(regional, text, pattern); };
    EXPECT_TRUE(like(L"a.ZIP", L"*.zip"));
    EXPECT_TRUE(like(L"abcabd", L"*ab?"));
    EXPECT_TRUE(like(L"", L"**"));
    EXPECT_FALSE(like(L"", L"?"));
    EXPECT_FALSE(like(L"a", L""));
    EXPECT_FALSE(like(L"a.zipx", L"*.zip"));
    EXPECT_TRUE(like(L"\u0391.txt", L"\u03B1*"));
}

TEST(FileSystemTest, PatternsAreReadAsThePlatformReadsThem)
{
    const auto desk = MakeDesk();
    struct {
        const wchar_t* pattern;
        const wchar_t* name;
        bool matches;
    } const cases[] = {
        {L"*.*", L"README", true},         {L"*", L"a.b.c", true},
        {L"Doc*.*", L"doc2.old", true},    {L"Doc*.*", L"My Documents", false},
        {L"*.txt", L"A.B.TXT", true},      {L"*.txt", L"b.txt.zip", false},
        {L"a?.txt", L"ab.txt", true},      {L"a?.txt", L"abc.txt", false},
        {L"\u00C4*", L"\u00E4pfel", true}, {L"abc", L"ABC", true},
        {L"abc\\", L"abc", false},
    };
    int folder = 0;
    for (const auto& [pattern, name, matches] : cases) {
        const std::wstring place = L"p" + std::to_wstring(++folder) + L"\\";
        desk->MakeFile(place + name);
        const auto search = desk->Get().files.Search(desk->PathOf(place + pattern));
        bool found = false;
        for (bool more = search != nullptr; more; more = search->Next())
            found = found || search->Entry().name == name;
        EXPECT_EQ(found, matches) << testing::PrintToString(pattern) << testing::PrintToString(name);
    }
    for (const std::wstring& nothing :
         {desk->PathOf(L""), desk->PathOf(L"none"), desk->PathOf(L"none\\*"), std::wstring()})
        EXPECT_EQ(desk->Get().files.Search(nothing), nullptr);
}

}  // namespace
}  // namespace sylvex
