// Dragging and renaming as the platform sees it: the messages to the tree, the picture that follows the pointer, what
// the shell is asked, and what happens when any of it fails.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dragdrop/disk_operations.h"
#include "dragdrop/drag_tree.h"
#include "tests/simulated/text.h"
#include "tests/support/desk_simulated.h"
#include "tests/support/hand.h"

namespace sylvex {
namespace {

using testing::ElementsAre;

class DragNativeTest : public testing::Test {
protected:
    DragNativeTest()
    {
        scene.desk().Make({L"t\\a\\a1\\x\\", L"t\\b\\", L"t\\c.ZIP", L"t\\list.zip"});
        scene.Enumerate();
        scene.control().LetDragDropEnable(true);
        scene.control().LetSelectedItem(&scene.At(L"t/a/a1"));
    }
    Node& At(const wchar_t* path) { return scene.At(path); }
    ItemHandle ItemOf(const wchar_t* path) { return scene.control().Tree().ItemOf(At(path)); }
    /// How the last drag or rename ended: what the shell was asked, then the boxes.
    std::vector<std::string> Told()
    {
        std::vector<std::string> told(desktop.shell.Operations().begin() + m_operations,
                                      desktop.shell.Operations().end());
        m_operations += static_cast<int>(told.size());
        for (const std::string& line : desktop.boxes.TakeLines())
            told.push_back(line);
        return told;
    }

    Scene scene;
    SimulatedDesktop& desktop = dynamic_cast<SimulatedDesk&>(scene.desk()).desktop;
    ControlState& state = scene.control().State();
    Hand hand{scene};
    DragTree tree{scene.control().Parts(), state.drag};
    WindowHandle window = scene.control().Tree().hWnd();

private:
    int m_operations = 0;
};

TEST_F(DragNativeTest, AWindowTellsWhereItCanStillScroll)
{
    EXPECT_EQ(tree.IsWindowScrollable(window), 0u);
    scene.control().UserControl_Resize({100, 80});
    desktop.windows.Send(window, 0x114, 1, 0);
    EXPECT_EQ(tree.IsWindowScrollable(window), 1u | 4u | 8u);
    for (int line = 0; line < 30; ++line)
        desktop.windows.Send(window, 0x115, 1, 0);
    EXPECT_EQ(tree.IsWindowScrollable(window), 1u | 2u | 4u);
}

TEST_F(DragNativeTest, ThePictureIsHeldWhereItWasGrabbedAndFollowsThePointer)
{
    scene.control().LetFileFilter(L"*.zip");
    desktop.system.SetVersion({2, 5, 1});
    scene.Enumerate();
    struct {
        const wchar_t* path;
        const char* picture;
    } const cases[] = {{L"t/a", "Shell32.dll,3"}, {L"t/c.ZIP", "icon of C:\\Scratch\\t\\c.ZIP"}};
    for (const auto& [path, picture] : cases) {
        const Rect label = hand.LabelOf(At(path));
        const Point start{label.left + 6, label.top + 5};
        hand->Press(start, 1);
        hand->MoveTo({start.x + 4, start.y});
        constexpr int kEdge = SimulatedTree::kBorder;
        const auto face = [&](Point at) {
            return "drag image of " + std::string(picture) + " held at 25,5 shown at " + std::to_string(at.x + kEdge) +
                   "," + std::to_string(at.y + kEdge);
        };
        EXPECT_EQ(desktop.drag.Face(), face(start));
        EXPECT_EQ(desktop.drag.Captured(), window);
        EXPECT_EQ(scene.control().Tree().DropHighlight(), &At(path));
        hand->MoveTo(hand.On(At(L"t/b")));
        EXPECT_EQ(desktop.drag.Face(), face(hand.On(At(L"t/b"))));
        EXPECT_EQ(scene.control().Tree().DropHighlight(), &At(L"t/b"));
        hand->PressKey(kEscapeKey);
        hand->Release();
        EXPECT_EQ(hand->LeftOver(), "");
        EXPECT_EQ(desktop.windows.Trees()[0]->PictureOf(ItemOf(path)), picture) << "the row shows its own again";
    }
}

TEST_F(DragNativeTest, WithoutAPictureThereIsNoDrag)
{
    scene.control().LetImageList(0);
    const Point start = hand.On(At(L"t/a"));
    hand->Press(start, 1);
    hand->MoveTo({start.x + 20, start.y});
    EXPECT_EQ(desktop.drag.Captured(), 0u);
    hand->Release();
    EXPECT_THAT(Told(), ElementsAre());
}

TEST_F(DragNativeTest, TheShellIsAskedOnceAndWhatItAnswersIsTold)
{
    struct {
        FileOperationResult answer;
        std::vector<std::string> boxes;
    } const cases[] = {
        {{0, false}, {}},
        {{5, false}, {"[Host] 5 (16)"}},
        {{1223, true}, {"[Host] 1223 (16)"}},
        {{0, true}, {"[Host] Operation Failed (16)"}},
    };
    for (const auto& [answer, boxes] : cases) {
        scene.Enumerate();
        desktop.shell.AnswerOperation(answer);
        hand.Drop(At(L"t/a"), At(L"t/b"));
        std::vector<std::string> expected{"move C:\\Scratch\\t\\a -> C:\\Scratch\\t\\b (0)"};
        expected.insert(expected.end(), boxes.begin(), boxes.end());
        expected.emplace_back("[Host] Successful drop of folder C:\\Scratch\\t\\a\\ronto C:\\Scratch\\t\\b (0)");
        EXPECT_EQ(Told(), expected);
        EXPECT_EQ(hand->LeftOver(), "");
        if (answer.code == 0 && !answer.aborted) desktop.disk.Move(L"C:\\Scratch\\t\\b\\a", L"C:\\Scratch\\t");
    }
}

TEST_F(DragNativeTest, SuccessThatDidNothingIsAFailureWithANumber)
{
    desktop.shell.Pretend();
    hand.Drop(At(L"t/a"), At(L"t/b"));
    EXPECT_EQ(Told()[1], "[Host] 5 (16)");
    scene.Enumerate();
    hand.Edit(At(L"t/a"));
    hand->Type(L"new");
    EXPECT_EQ(Told()[1], "[Host] 5 (16)");
    desktop.disk.AddFolder(L"D:\\to");
    desktop.disk.AddFile(L"C:\\Scratch\\t\\a\\large", 1000);
    DiskOperations disk(scene.control().Parts());
    for (const auto& [room, told] : {std::pair(999, "[Host] 112 (16)"), {1000, "[Host] 5 (16)"}}) {
        desktop.disk.SetFreeSpace(L'D', static_cast<std::uint64_t>(room));
        disk.WindowsDiskOps(L"C:\\Scratch\\t\\a", L"D:\\to", 4);
        EXPECT_EQ(Told()[1], told);
        EXPECT_FALSE(disk.Done());
    }
}

TEST_F(DragNativeTest, ALinkIsMovedAndRenamedItselfOrNotAtAll)
{
    desktop.disk.Find(L"C:\\Scratch\\t\\a")->attributes |= kAttributeReparse;
    hand.Drop(At(L"t/a"), At(L"t/b"));
    EXPECT_EQ(Told()[0], "link C:\\Scratch\\t\\a -> C:\\Scratch\\t\\b\\a");
    hand.Edit(At(L"t/b/a"));
    hand->Type(L"new");
    EXPECT_THAT(Told(), ElementsAre("link C:\\Scratch\\t\\b\\a -> C:\\Scratch\\t\\b\\new"));
    desktop.disk.AddFolder(L"C:\\Scratch\\t\\new");
    hand.Drop(At(L"t/b/new"), At(L"t"));
    EXPECT_EQ(Told()[0], "[Host] 183 (16)");
    scene.Enumerate();
    desktop.shell.RefuseLinks(50);
    hand.Edit(At(L"t/b/new"));
    hand->Type(L"last");
    EXPECT_EQ(Told().back(), "[Host] 50 (16)");
}

TEST_F(DragNativeTest, ARenameThatTheShellRefusesKeepsTheLabelButACancelDoesNot)
{
    desktop.shell.AnswerOperation({183, false});
    hand.Edit(At(L"t/a"));
    hand->Type(L"b");
    EXPECT_THAT(Told(), ElementsAre("rename C:\\Scratch\\t\\a -> C:\\Scratch\\t\\b (0)", "[Host] 183 (16)"));
    EXPECT_EQ(hand->Label(), L"(closed)");
    EXPECT_EQ(At(L"t").Child()->Text(), L"b");
    scene.Enumerate();
    desktop.shell.AnswerOperation({0, true});
    hand.Edit(At(L"t/a"));
    hand->Type(L"b");
    EXPECT_THAT(Told(), ElementsAre("rename C:\\Scratch\\t\\a -> C:\\Scratch\\t\\b (0)", "[Host] Operation Failed (16)",
                                    "[Host] Error. Enter a valid file name (or Esc). (0)"));
    EXPECT_EQ(desktop.timers.Enabled(), std::vector<int>{100});
    hand->Wait(99);
    EXPECT_EQ(hand->Label(), L"(closed)");
    hand->Wait(1);
    EXPECT_EQ(hand->Label(), L"b");
    EXPECT_TRUE(desktop.timers.Enabled().empty());
    hand->Type(L"c");
    EXPECT_THAT(Told(), ElementsAre("rename C:\\Scratch\\t\\a -> C:\\Scratch\\t\\c (0)"));
}

TEST_F(DragNativeTest, OnlyWholePathsReachTheShell)
{
    DiskOperations disk(scene.control().Parts());
    struct {
        std::wstring source;
        std::wstring dest;
        short flavor;
        const char* told;
    } const cases[] = {
        {L"C:\\Scratch\\t\\a", L"C:\\Scratch\\t\\b", 1, "copy C:\\Scratch\\t\\a -> C:\\Scratch\\t\\b (0)"},
        {L"C:\\Scratch\\t\\b\\a", L"C:\\Scratch\\t\\x", 64, "copy C:\\Scratch\\t\\b\\a -> C:\\Scratch\\t\\x (1)"},
        {L"C:\\Scratch\\t\\x\\", L"C:\\Scratch\\t\\y", 128, "rename C:\\Scratch\\t\\x -> C:\\Scratch\\t\\y (0)"},
        {L"\\\\server\\share\\a", L"C:\\Scratch", 1, "copy \\\\server\\share\\a -> C:\\Scratch (0)"},
        {L"", L"C:\\Scratch", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\t", L"", 4, "[Host] 124 (16)"},
        {L"Desktop", L"C:\\Scratch", 4, "[Host] 124 (16)"},
        {L"C:", L"Renamed", 128, "[Host] 124 (16)"},
        {L"C:Scratch", L"C:\\Scratch\\t", 4, "[Host] 124 (16)"},
        {L"\\Scratch", L"C:\\Scratch\\t", 4, "[Host] 124 (16)"},
        {L"\\\\server", L"C:\\Scratch\\t", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\*", L"C:\\Scratch\\t", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\t\\..", L"C:\\Scratch\\t", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\\\t", L"C:\\Temp", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\ ", L"C:\\Temp", 4, "[Host] 124 (16)"},
        {L"C:/Scratch", L"C:\\Temp", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch", L"C:\\Temp\\a\nb", 4, "[Host] 124 (16)"},
        {std::wstring(L"C:\\a\0C:\\b", 9), L"C:\\Temp", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\t\\gone", L"C:\\gone", 4, "[Host] 124 (16)"},
        {L"C:\\Scratch\\t\\gone", L"C:\\Temp", 4, "[Host] 2 (16)"},
        {L"C:\\", L"C:\\Temp", 4, "[Host] 116 (16)"},
    };
    for (const auto& [source, dest, flavor, expected] : cases) {
        EXPECT_EQ(disk.WindowsDiskOps(source, dest, flavor), 0);
        const auto told = Told();
        ASSERT_FALSE(told.empty()) << Utf8(source);
        EXPECT_EQ(told[0], expected) << Utf8(source);
    }
}

TEST_F(DragNativeTest, TheSameFolderShownTwiceIsKnownForWhatItIs)
{
    desktop.disk.AddFolder(L"C:\\My Documents\\letters\\old");
    scene.Enumerate();
    Node& documents = *scene.nodes().Item(1).Child();
    documents.SetExpanded(true);
    Node& here = *documents.Child();
    here.SetExpanded(true);
    Node& drive = scene.nodes().Item(L"C:\\");
    drive.SetExpanded(true);
    Node& there = *drive.Child();
    ASSERT_EQ(there.Text(), L"My Documents");
    there.SetExpanded(true);
    hand.Drop(here, *there.Child());
    hand.Drop(here, there);
    hand.Drop(there, here);
    EXPECT_THAT(Told(), ElementsAre("[Host] A folder cannot be dropped onto itself. (0)",
                                    "[Host] A folder cannot be dropped onto its parent folder. (0)",
                                    "[Host] A folder cannot be dropped onto a subfolder of itself. (0)"));
    // The documents folder itself may move; it becomes a folder like any other.
    hand.Drop(documents, At(L"t/b"));
    EXPECT_THAT(Told(),
                ElementsAre("move C:\\My Documents -> C:\\Scratch\\t\\b (0)",
                            "[Host] Successful drop of folder C:\\My Documents\\\\ronto C:\\Scratch\\t\\b (0)"));
    EXPECT_EQ(scene.control().BuildFullPath(&here), L"C:\\Scratch\\t\\b\\My Documents\\letters\\");
}

TEST_F(DragNativeTest, WhileTheShellIsAtWorkTheHostMayDoAnything)
{
    const std::function<void()> deeds[] = {
        [&] { scene.control().Clear(); },
        [&] { scene.Enumerate(); },
        [&] { scene.nodes().Remove(At(L"t/b")); },
        [&] { hand.Drag(At(L"t/b"), At(L"t/list.zip")); },
        [&] { desktop.windows.DestroyWindow(window); },
    };
    for (const auto& deed : deeds) {
        scene.Enumerate();
        desktop.shell.WhileNextOperation(deed);
        hand.Drop(At(L"t/a"), At(L"t/b"));
        EXPECT_EQ(hand->LeftOver(), "");
        EXPECT_NE(desktop.disk.Find(L"C:\\Scratch\\t\\b\\a\\a1\\x"), nullptr);
        desktop.disk.Move(L"C:\\Scratch\\t\\b\\a", L"C:\\Scratch\\t");
    }
}

TEST_F(DragNativeTest, AWindowThatGoesInMidDragEndsIt)
{
    hand.Drag(At(L"t/a"), At(L"t/b"));
    EXPECT_NE(hand->LeftOver(), "");
    desktop.windows.DestroyWindow(window);
    EXPECT_EQ(hand->LeftOver(), "");
    EXPECT_EQ(state.drag.m_himlDrag, 0u);
}

}  // namespace
}  // namespace sylvex
