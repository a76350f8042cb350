#include <gtest/gtest.h>

#include <set>

#include "navigation/path_search.h"
#include "tests/simulated/text.h"
#include "tests/support/desk_simulated.h"
#include "tests/support/scene.h"

namespace sylvex {
namespace {

/// The rule without any short cut: every node's path from the root, in index order.
Node* FirstByRule(Scene& scene, FolderTree& tree, const std::wstring& path)
{
    const std::wstring wanted = Folded(tree.QualifyPath(path));
    for (int i = 1; i <= scene.nodes().Count(); ++i) {
        Node& node = scene.nodes().Item(i);
        if (Folded(tree.QualifyPath(tree.BuildFullPath(&node))) == wanted) return &node;
    }
    return nullptr;
}

/// Every node's own path, with and without its end and in capitals, and a few that no node has.
std::set<std::wstring> PathsOf(Scene& scene, FolderTree& tree)
{
    std::set<std::wstring> paths{L"",        L"\\", L"C:",          L"C:\\\\", L"Q:\\",
                                 L"desktop", L"a",  L"C:\\none\\a", L":",      L"D:\\"};
    for (int i = 1; i <= scene.nodes().Count(); ++i) {
        std::wstring path = tree.BuildFullPath(&scene.nodes().Item(i));
        paths.insert(path);
        for (wchar_t& c : path)
            if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - 32);
        paths.insert(path);
        paths.insert(path.substr(0, path.find_last_not_of(L'\\') + 1));
        paths.insert(path + L"\\");
    }
    return paths;
}

/// Nodes as folders give them, and with texts that only a host would choose.
void Furnish(Scene& scene)
{
    scene.desk().Make(
        {L"a\\a\\a\\", L"a\\b.zip", L"b.zip\\a\\", L"Desktop\\My Documents\\a\\", L"\u0424\\\u0444\u0424\\"});
    scene.Enumerate();
    scene.OpenBase();
    for (const wchar_t* const name : {L"a", L"a/a", L"b.zip", L"Desktop", L"Desktop/My Documents", L"\u0424"})
        scene.At(name).SetExpanded(true);
    Nodes& nodes = scene.nodes();
    Node& desktop = nodes.Item(1);
    nodes.AddChild(nodes.AddChild(desktop, L"My Documents", 0), L"a", 0);
    Node& other = nodes.AddChild(desktop, L"My Desktop", 0);
    nodes.AddChild(other, L"My Documents\\a", 0);
    nodes.AddChild(nodes.AddChild(other, L"My Documents", 0), L"b", 0);
    Node& odd = nodes.AddChild(scene.At(L"a"), L"x\\y", 0);
    for (const wchar_t* const text : {L"a", L"z:\\a", L":", L"tail\\", L"", L"C:", L"(E:)\\a\\b"})
        nodes.AddChild(nodes.AddChild(odd, text, 0), L"a", 0);
    nodes.Add(nullptr, Relationship::Last, {}, L"");
    nodes.AddChild(nodes.Add(nullptr, Relationship::Last, {}, L":a"), L"a", 0);
}

TEST(PathSearchTest, FindsTheNodeThatTheRuleFinds)
{
    for (const wchar_t* const documents :
         {L"C:\\My Documents", L"E:\\", L"", L"C:\\users\\me\\docs", L"\\\\server\\share\\docs"}) {
        for (const wchar_t* const separator : {L"\\", L"/"}) {
            Scene scene;
            static_cast<SimulatedDesk&>(scene.desk()).desktop.shell.SetSpecialFolder(5, documents);
            scene.control().LetFileFilter(L"*.zip");
            Furnish(scene);
            scene.control().LetPathSeparator(separator);
            FolderTree& tree = scene.control().Folders();
            PathSearch search(scene.control().Parts(), tree);
            for (const std::wstring& path : PathsOf(scene, tree))
                EXPECT_EQ(search.First(path), FirstByRule(scene, tree, path)) << Utf8(path) << " / " << Utf8(documents);
        }
    }
}

TEST(PathSearchTest, LooksIntoNoFolderThatNobodyHasOpened)
{
    Scene scene;
    scene.desk().Make({L"d\\a\\x\\", L"d\\b\\x\\", L"d\\c1\\", L"d\\c2\\", L"d\\c3\\"});
    scene.Enumerate();
    scene.At(L"d").SetExpanded(true);
    FolderTree& tree = scene.control().Folders();
    SimulatedDisk& disk = static_cast<SimulatedDesk&>(scene.desk()).desktop.disk;
    const int before = disk.Searches();
    EXPECT_NE(PathSearch(scene.control().Parts(), tree).First(scene.desk().PathOf(L"d\\b")), nullptr);
    EXPECT_EQ(PathSearch(scene.control().Parts(), tree).First(scene.desk().PathOf(L"d\\c")), nullptr);
    EXPECT_EQ(disk.Searches(), before);
    scene.control().LetPath(scene.desk().PathOf(L"d\\b"));
    EXPECT_EQ(scene.control().SelectedItem(), &scene.At(L"d/b"));
    EXPECT_EQ(disk.Searches(), before + 1) << "whether the path exists, and nothing else";
}

TEST(PathSearchTest, ADescentIsAsDeepAsItsPath)
{
    Scene scene;
    std::wstring path = scene.desk().PathOf(L"t");
    for (int level = 0; level < 3000; ++level)
        path += L"\\a";
    static_cast<SimulatedDesk&>(scene.desk()).desktop.disk.AddFolder(path);
    scene.BindList();
    scene.Enumerate();
    const auto goTo = [&](const std::wstring& row) {
        scene.list().ClearRows();
        scene.list().InsertRow(0, row, -1);
        scene.list().SelectRow(0, true);
        return ErrorOf([&] { scene.control().SetNode(); }) + ErrorOf([&] { scene.control().SetNodeChecked(true); });
    };
    EXPECT_EQ(goTo(path), 0);
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
    EXPECT_EQ(scene.control().BuildFullPath(scene.control().SelectedItem()), path + L"\\");
    EXPECT_TRUE(scene.control().SelectedItem()->Checked());
}

TEST(PathSearchTest, AServerThatDoesNotAnswerIsNotAskedForFiles)
{
    Scene scene;
    SimulatedDesktop& desktop = static_cast<SimulatedDesk&>(scene.desk()).desktop;
    desktop.network.Silence(L"C:\\Scratch\\far");
    scene.desk().Make({L"far\\a\\"});
    const int before = desktop.disk.Searches();
    scene.control().LetPath(scene.desk().PathOf(L"far\\a"));
    EXPECT_EQ(scene.control().Path(), L"");
    EXPECT_EQ(desktop.disk.Searches(), before);
}

}  // namespace
}  // namespace sylvex
