#include <gtest/gtest.h>

#include "tests/simulated/tree_user.h"
#include "tests/support/desk_simulated.h"
#include "tests/support/scene.h"

namespace sylvex {
namespace {

SimulatedDesktop& DesktopOf(Scene& scene)
{
    return static_cast<SimulatedDesk&>(scene.desk()).desktop;
}

/// What the desktop holds; a leak would make it grow.
std::string Holdings(Scene& scene)
{
    return DesktopOf(scene).Leaks() + " nodes " + std::to_string(scene.nodes().Count());
}

TEST(EnumerateTest, AgainAndAgainHoldsNoMoreThanOnce)
{
    Scene scene;
    scene.desk().Make({L"a\\x\\", L"b\\"});
    scene.BindList();
    scene.Enumerate();
    const std::string once = Holdings(scene);
    SimulatedTree& tree = *DesktopOf(scene).windows.Trees().front();
    for (int i = 0; i < 100; ++i) {
        scene.Tick(scene.At(L"a"), true);
        const int before = tree.CheckPictures();
        scene.control().Enumerate();
        ASSERT_EQ(tree.CheckPictures(), before + 1);
        ASSERT_EQ(Holdings(scene), once);
        ASSERT_EQ(scene.list().RowCount(), 1);  // only a tick or a refresh builds the list anew
    }
    EXPECT_EQ(DesktopOf(scene).boxes.TakeLines().size(), 0u);
}

// As where a company gives everybody a drive of their own.
TEST(EnumerateTest, ADriveMayBeTheDocumentsFolder)
{
    Scene scene;
    DesktopOf(scene).shell.SetSpecialFolder(5, L"C:\\");
    scene.Enumerate();
    EXPECT_EQ(scene.nodes().Item(L"C:\\").Parent()->Key(), L"MyComputer");
    EXPECT_EQ(scene.nodes().Item(1).Child()->Key(), L"");
}

TEST(EnumerateTest, MayComeFromAnyEventAndWhileALabelIsEdited)
{
    const std::pair<std::wstring, std::function<void(TreeUser&, SimulatedTree&)>> cases[] = {
        {L"Expand:", [](TreeUser& user, SimulatedTree& tree) { user.ClickButton(tree.Row(L"a")); }},
        {L"NodeCheck:", [](TreeUser& user, SimulatedTree& tree) { user.ClickCheck(tree.Row(L"a")); }},
        {L"NodeClick:", [](TreeUser& user, SimulatedTree& tree) { user.ClickRow(tree.Row(L"a")); }},
        {L"Collapse:", [](TreeUser& user, SimulatedTree& tree) { user.ClickButton(tree.Row(L"My Computer")); }},
    };
    for (const auto& [during, gesture] : cases) {
        Scene scene;
        scene.desk().Make({L"a\\x\\"});
        scene.BindList();
        scene.Enumerate();
        scene.OpenBase();
        SimulatedTree& tree = *DesktopOf(scene).windows.Trees().front();
        TreeUser user(tree);
        int times = 0;
        scene.onEvent = [&, awaited = during](const std::wstring& event, Node*) {
            if (event == awaited && times++ == 0) scene.control().Enumerate();
        };
        gesture(user, tree);
        scene.onEvent = nullptr;
        EXPECT_GE(times, 1);
        EXPECT_TRUE(scene.nodes().Item(L"MyComputer").Expanded());
        EXPECT_EQ(Scene::Render(scene.At(L"a")), L"a[+]");
    }
    Scene scene;
    scene.desk().Make({L"a\\x\\"});
    scene.Enumerate();
    scene.OpenBase();
    SimulatedTree& tree = *DesktopOf(scene).windows.Trees().front();
    TreeUser user(tree);
    user.ClickRow(tree.Row(L"a"));
    user.BeginLabel(tree.Row(L"a"));
    EXPECT_NE(tree.Editing(), 0u);
    scene.control().Enumerate();
    EXPECT_EQ(tree.Editing(), 0u);
    EXPECT_TRUE(scene.desk().Has(L"a"));
}

}  // namespace
}  // namespace sylvex
