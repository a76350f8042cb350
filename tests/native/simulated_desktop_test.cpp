// What the other tests take for granted about the simulated desktop.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/text.h"
#include "platform/simulated/wildcards.h"
#include "tests/support/desk_simulated.h"

namespace sylvex {
namespace {

using testing::ElementsAre;

std::string Listed(FileSystem& files, const std::wstring& pattern)
{
    std::string names;
    for (auto search = files.Search(pattern); search != nullptr;) {
        names += Utf8(search->Entry().name) + (search->Entry().IsDirectory() ? "\\ " : " ");
        if (!search->Next()) break;
    }
    return names;
}

TEST(SimulatedDisk, ReadsPatternsAsThePlatformDoes)
{
    struct {
        const wchar_t* pattern;
        const wchar_t* name;
        bool matches;
    } const cases[] = {
        {L"*.*", L"README", true},
        {L"*", L"a.b.c", true},
        {L"Documents*.*", L"documents", true},
        {L"Documents*.*", L"Documents2.old", true},
        {L"Documents*.*", L"My Documents", false},
        {L"*.txt", L"A.B.TXT", true},
        {L"*.txt", L"a.txt2", false},
        {L"a?.txt", L"ab.txt", true},
        {L"a?.txt", L"a.txt", true},
        {L"a?.txt", L"abc.txt", false},
        {L"*.", L"README", true},
        {L"*.", L"a.txt", false},
        {L"\u00C4*", L"\u00E4pfel", true},
    };
    for (const auto& [pattern, name, matches] : cases) {
        EXPECT_EQ(Wildcards(pattern).Matches(name), matches) << Utf8(pattern) << " on " << Utf8(name);
    }
}

TEST(SimulatedDisk, ListsDotsFirstBelowARootAndThenEntriesAsMade)
{
    SimulatedDesk desk;
    desk.Make({L"b\\", L"z.txt", L"A\\"});
    EXPECT_EQ(Listed(desk.Get().files, L"c:\\SCRATCH\\*.*"), ".\\ ..\\ b\\ z.txt A\\ ");
    EXPECT_EQ(Listed(desk.Get().files, L"C:\\My Documents*.*"), "My Documents\\ ");
    EXPECT_EQ(desk.desktop.disk.Listings(L"C:\\Scratch\\"), 1);
    EXPECT_EQ(desk.desktop.disk.OpenSearches(), 0);
}

TEST(SimulatedDisk, FindsNothingWhereThePlatformFindsNothing)
{
    SimulatedDesk desk;
    desk.MakeFile(L"locked\\a.txt");
    desk.desktop.disk.Find(desk.PathOf(L"locked"))->readable = false;
    for (const wchar_t* const pattern : {L"C:\\", L"C:\\Scratch\\", L"C:\\Scratch\\none", L"C:\\Scratch\\locked\\*.*",
                                         L"A:\\*.*", L"Z:\\*.*", L"Scratch", L"D:\\*.*"}) {
        EXPECT_EQ(desk.Get().files.Search(pattern), nullptr) << Utf8(pattern);
    }
    EXPECT_NE(desk.Get().files.Search(L"C:\\Scratch\\LOCKED"), nullptr);
}

TEST(SimulatedDisk, AnEntryStaysReadableWhenItIsRemovedDuringTheListing)
{
    SimulatedDesk desk;
    const std::wstring path = desk.MakeFile(L"a.txt", 7);
    const auto search = desk.Get().files.Search(path);
    desk.Remove(L"a.txt");
    EXPECT_EQ(search->Entry().name, L"a.txt");
    EXPECT_FALSE(desk.Has(L"a.txt"));
}

TEST(SimulatedShell, OperationsChangeTheDiskOnlyWhenTheyAreNotRefused)
{
    SimulatedDesk desk;
    desk.Make({L"from\\x.txt", L"to\\"});
    Shell& shell = desk.Get().shell;
    const std::wstring from = desk.PathOf(L"from");
    const std::wstring to = desk.PathOf(L"to");
    desk.desktop.shell.AnswerOperation({0, true});
    EXPECT_TRUE(shell.Operate(1, 0, from, to).aborted);
    EXPECT_TRUE(desk.Has(L"from\\x.txt"));
    EXPECT_NE(shell.Operate(1, 0, to, desk.PathOf(L"to\\deeper")).code, 0);
    EXPECT_NE(shell.Operate(1, 0, from, L"relative").code, 0);
    EXPECT_EQ(shell.Operate(1, 0, from, to).code, 0);
    EXPECT_EQ(shell.Operate(4, 0, to, desk.PathOf(L"TO")).code, 0);
    EXPECT_TRUE(desk.Has(L"to\\from\\x.txt"));
    EXPECT_FALSE(desk.Has(L"from"));
    EXPECT_EQ(desk.desktop.shell.Operations()[3], "move C:\\Scratch\\from -> C:\\Scratch\\to (0)");
}

TEST(SimulatedDesktop, TellsWhatWasNotGivenBack)
{
    SimulatedDesktop desktop;
    Platform& platform = desktop.Get();
    const ImageListHandle list = platform.images.Create();
    {
        const OwnedIcon icon = platform.shell.IconInFile(L"SHELL32.DLL", 60);
        EXPECT_EQ(platform.images.Add(list, icon.Get()), 0);
        EXPECT_EQ(desktop.Leaks(), "icons 1, image lists 1");
        platform.shell.DestroyIcon(icon.Get());
    }
    EXPECT_FALSE(platform.shell.IconInFile(L"Shell32.dll", 61));
    EXPECT_EQ(platform.images.Add(list, 12345), -1);
    EXPECT_THAT(desktop.images.Pictures(list), ElementsAre("SHELL32.DLL,60"));
    platform.images.Destroy(list);
    EXPECT_EQ(desktop.Leaks(), "icons freed twice 1");
}

TEST(SimulatedDesktop, FailsTheChosenCallOnce)
{
    SimulatedDesktop desktop;
    desktop.gate.FailCall(2, TypeMismatch());
    desktop.Get().system.Version();
    EXPECT_THROW(desktop.Get().shell.SpecialFolder(5), RuntimeError);
    EXPECT_EQ(desktop.Get().shell.SpecialFolder(5), L"C:\\My Documents");
    EXPECT_EQ(desktop.gate.Failed(), "Shell::SpecialFolder");
    EXPECT_EQ(desktop.gate.Calls(), 3);
}

TEST(SimulatedRegional, FormatsAndOrders)
{
    SimulatedDesktop desktop;
    Regional& regional = desktop.Get().regional;
    EXPECT_EQ(regional.Number(1023, 0), L"1,023");
    EXPECT_EQ(regional.Number(-1234567.125, 2), L"-1,234,567.13");
    EXPECT_EQ(regional.Number(0.9765625, 3), L"0.977");
    EXPECT_EQ(regional.ShortDate({46342.75}) + L" " + regional.LongTime({46342.75}), L"16/11/2026 18:00:00");
    EXPECT_EQ(regional.ShortDate({-0.25}) + L" " + regional.LongTime({-0.25}), L"30/12/1899 06:00:00");
    EXPECT_EQ(regional.Narrow(L"a\u00E9\u0416"), "a\xE9?");
    const auto key = [&](const wchar_t* text) {
        std::string bytes;
        regional.AppendSortKey(text, bytes);
        return bytes;
    };
    for (const auto& [left, right] : {std::pair{L"a.TXT", L"A.txt"}, {L"ab", L"abc"}, {L"b", L"\u0416"}}) {
        EXPECT_EQ(regional.Compare(left, right), key(left).compare(key(right)) < 0 ? -1 : 0) << Utf8(left);
    }
}

TEST(SimulatedTimers, TickInTheOrderOfTheirTime)
{
    SimulatedDesktop desktop;
    std::string ticks;
    std::unique_ptr<Timer> once;
    const auto slow = desktop.Get().timers.Create([&] { ticks += "slow "; });
    once = desktop.Get().timers.Create([&] {
        ticks += "once ";
        once.reset();
    });
    const auto fast = desktop.Get().timers.Create([&] { ticks += std::to_string(desktop.timers.Now()) + " "; });
    slow->SetInterval(200);
    once->SetInterval(150);
    fast->SetInterval(100);
    for (Timer* const timer : {slow.get(), once.get(), fast.get()})
        timer->SetEnabled(true);
    EXPECT_THAT(desktop.timers.Enabled(), ElementsAre(200, 150, 100));
    desktop.timers.Advance(99);
    EXPECT_EQ(ticks, "");
    desktop.timers.Advance(301);
    EXPECT_EQ(ticks, "100 once slow 200 300 slow 400 ");
}

TEST(SimulatedBoxes, AnswerInTurnAndLetThingsHappenMeanwhile)
{
    SimulatedDesktop desktop;
    MessageBoxes& boxes = desktop.Get().boxes;
    desktop.boxes.Answer(4);
    desktop.boxes.WhileNextOpen([&] { boxes.Show(0, L"inner", L"Title", 0); });
    EXPECT_EQ(boxes.Show(7, L"first\r\nsecond", L"", 21), 1);
    EXPECT_THAT(desktop.boxes.TakeLines(), ElementsAre("[Host] first\\r\\nsecond (21)", "[Title] inner (0)"));
}

/// A listener that logs what it is told and answers from its fields.
class Logger : public TreeWindowListener {
public:
    bool Expanding(ItemData item, bool expand) override
    {
        Log(expand ? "expanding" : "collapsing", item);
        if (onExpanding) onExpanding();
        return true;
    }
    void Expanded(ItemData item, bool expand) override { Log(expand ? "expanded" : "collapsed", item); }
    bool HasChildren(ItemData) override { return true; }
    RowMarks Marks(ItemData item) override { return marks[item]; }
    void CheckClicked(ItemData item) override { Log("check", item); }
    void Selected(ItemData item, bool byUser) override { Log(byUser ? "user selected" : "selected", item); }
    void Clicked(ItemData item) override { Log("clicked", item); }
    void DoubleClicked() override { log += "double; "; }
    void KeyDown(short& key, short) override { Log("down", static_cast<ItemData>(key)); }
    void KeyPress(short& character) override
    {
        Log("press", static_cast<ItemData>(character));
        character = 0;
    }
    void KeyUp(short& key, short) override { Log("up", static_cast<ItemData>(key)); }
    void MouseDown(short button, short, Point) override { Log("mouse down", static_cast<ItemData>(button)); }
    void MouseMove(short button, short, Point) override { Log("mouse move", static_cast<ItemData>(button)); }
    void MouseUp(short button, short, Point) override { Log("mouse up", static_cast<ItemData>(button)); }
    bool LabelEditing(ItemData item) override
    {
        Log("editing", item);
        return true;
    }
    bool LabelEdited(ItemData item, const std::optional<std::wstring>& text) override
    {
        Log(text ? "edited to " + Utf8(*text) : "abandoned", item);
        return text && *text != L"refused";
    }
    std::string Take() { return std::exchange(log, {}); }

    std::map<ItemData, RowMarks> marks;
    std::function<void()> onExpanding;
    std::string log;

private:
    void Log(const std::string& what, ItemData item) { log += what + " " + std::to_string(item) + "; "; }
};

/// A tree with the row "Desktop" (1), below it "Documents" (2) and "Computer" (3), which has "C:" (4) inside.
class SimulatedTreeTest : public testing::Test {
protected:
    SimulatedTreeTest()
    {
        const auto look = [](const wchar_t* text, ExpandButton button) { return ItemLook{text, 0, -1, button}; };
        desktopRow = window->Insert(0, 0, 1, look(L"Desktop", ExpandButton::Yes));
        computer = window->Insert(desktopRow, 0, 3, look(L"Computer", ExpandButton::Yes));
        documents = window->Insert(desktopRow, kFirstRow, 2, look(L"Documents", ExpandButton::No));
        drive = window->Insert(computer, 0, 4, look(L"C:", ExpandButton::Ask));
        window->Expand(desktopRow, true);
        window->Apply(TreeSetting::Checkboxes, 1);
        window->Apply(TreeSetting::LineStyle, 1);
        window->SetImageList(images);
    }
    ~SimulatedTreeTest() override { platform.images.Destroy(images); }

    std::intptr_t Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
    {
        return platform.windows.Send(window->Handle(), message, wParam, lParam);
    }
    std::intptr_t Next(std::uintptr_t flag, ItemHandle item)
    {
        return Send(0x110A, flag, static_cast<std::intptr_t>(item));
    }

    SimulatedDesktop desktop;
    Platform& platform = desktop.Get();
    Logger listener;
    WindowHandle host = desktop.windows.NewWindow();
    std::unique_ptr<TreeWindow> window = platform.windows.CreateTree(host, listener);
    SimulatedTree& tree = *desktop.windows.Trees().front();
    TreeUser user{tree};
    ImageListHandle images = platform.images.Create();
    ItemHandle desktopRow = 0, documents = 0, computer = 0, drive = 0;
};

TEST_F(SimulatedTreeTest, RendersWhatTheWindowShows)
{
    listener.marks = {{1, {false, true, 5}}, {2, {true, false, 6}}};
    EXPECT_EQ(tree.Render(),
              "[-] *mixed* Desktop #5\n"
              "  [x] Documents #6\n"
              "  [+] [ ] Computer #0\n");
    window->Expand(computer, true);
    window->Select(drive);
    window->Apply(TreeSetting::Checkboxes, 0);
    window->SetRedraw(false);
    EXPECT_EQ(tree.Outline(),
              "(frozen)\n"
              "[-] *Desktop*\n"
              "  Documents\n"
              "  [-] Computer\n"
              "    [+] C: <selected>\n");
}

TEST_F(SimulatedTreeTest, PaintsMarksAnewOnlyWhenToldThatTheyChanged)
{
    tree.Render();
    listener.marks[2].checked = true;
    const int asked = tree.MarksAsked();
    EXPECT_THAT(tree.Outline(), testing::HasSubstr("[ ] Documents"));
    EXPECT_EQ(tree.MarksAsked(), asked);
    window->MarksChanged();
    EXPECT_THAT(tree.Outline(), testing::HasSubstr("[x] Documents"));
}

TEST_F(SimulatedTreeTest, HitTestTellsThePartsOfARow)
{
    const auto hit = [&](int x, int y) {
        const TreeHit found = window->HitTest({x, y});
        return std::pair(found.data, found.flags);
    };
    using Hit = std::pair<ItemData, unsigned>;
    // "Computer" is the third row of the second level: button, box, icon, label of 8 * 7 + 4 pixels.
    const int left = 2 * 19;
    EXPECT_EQ(hit(left - 20, 32), Hit(3, 8));
    EXPECT_EQ(hit(left - 1, 32), Hit(3, 0x10));
    EXPECT_EQ(hit(left, 47), Hit(3, 0x40));
    EXPECT_EQ(hit(left + 16, 47), Hit(3, 2));
    EXPECT_EQ(hit(left + 35, 47), Hit(3, 4));
    EXPECT_EQ(hit(left + 34 + 60, 47), Hit(3, 4));
    EXPECT_EQ(hit(left + 35 + 60, 47), Hit(3, 0x20));
    EXPECT_EQ(hit(left - 1, 31), Hit(2, 8)) << "no button on this row";
    EXPECT_EQ(hit(10, 48), Hit(0, 1));
    EXPECT_EQ(hit(-1, -1), Hit(0, 0x900));
    window->Move({0, 0, 50, 20});
    EXPECT_EQ(hit(50, 20), Hit(0, 0x600));
    window->EnsureVisible(computer);
    EXPECT_EQ(hit(left, 0), Hit(3, 0x40)) << "scrolled two rows";
}

TEST_F(SimulatedTreeTest, TheUserActsThroughTheListener)
{
    user.ClickCheck(documents);
    EXPECT_EQ(listener.Take(), "mouse down 1; check 2; mouse up 1; ");
    user.ClickButton(computer);
    EXPECT_EQ(listener.Take(), "mouse down 1; expanding 3; expanded 3; mouse up 1; ");
    user.ClickRow(drive);
    EXPECT_EQ(listener.Take(), "mouse down 1; user selected 4; mouse up 1; ");
    user.BeginLabel(drive);
    user.TypeLabel(L"refused");
    EXPECT_EQ(listener.Take(), "mouse down 1; clicked 4; mouse up 1; editing 4; edited to refused 4; ");
    EXPECT_EQ(tree.Find(drive)->text, L"C:");
    user.PressKey(27);
    EXPECT_EQ(listener.Take(), "down 27; press 27; up 27; ");
    EXPECT_THAT(user.Received(), ElementsAre("key 27")) << "the listener swallowed the character";
    user.DragTo(documents, computer);
    user.Release();
    EXPECT_EQ(listener.Take(), "mouse down 1; mouse move 1; mouse move 1; mouse move 1; mouse up 1; ");
    EXPECT_EQ(desktop.system.CursorPosition(), tree.ToScreen(user.MiddleOf(computer)));
    user.ClickButton(desktopRow);
    EXPECT_EQ(listener.Take(), "mouse down 1; collapsing 1; selected 1; collapsed 1; mouse up 1; ");
    window->SetVisible(false);
    user.PressKey('A');
    EXPECT_EQ(listener.Take(), "");
}

TEST_F(SimulatedTreeTest, RowsMayComeAndGoWhileTheListenerIsAsked)
{
    listener.onExpanding = [&] { window->Delete(computer); };
    user.ClickButton(computer);
    EXPECT_EQ(listener.Take(), "mouse down 1; expanding 3; mouse up 1; ");
    EXPECT_EQ(tree.RowCount(), 2);
    EXPECT_THROW(window->SetText(drive, L"stale"), std::logic_error);
    window->Select(documents);
    window->Delete(desktopRow);
    EXPECT_EQ(listener.Take(), "selected 2; selected 0; ");
    EXPECT_EQ(tree.Render(), "");
}

TEST_F(SimulatedTreeTest, RawMessagesWalkTheRows)
{
    EXPECT_EQ(Next(0, 0), static_cast<std::intptr_t>(desktopRow));
    EXPECT_EQ(Next(4, desktopRow), static_cast<std::intptr_t>(documents));
    EXPECT_EQ(Next(1, documents), static_cast<std::intptr_t>(computer));
    EXPECT_EQ(Next(3, documents), static_cast<std::intptr_t>(desktopRow));
    EXPECT_EQ(Next(3, desktopRow), 0);
    EXPECT_EQ(Send(0x1FFF, 0, 0) + Send(0x1102, 2, 4), 0) << "no such message or row";
    EXPECT_EQ(desktop.windows.CountSent(0x110A), 5);
}

TEST_F(SimulatedTreeTest, RawMessagesReadAndChangeRows)
{
    const auto address = [](auto& record) { return reinterpret_cast<std::intptr_t>(&record); };
    const auto row = static_cast<std::intptr_t>(computer);
    TVITEM item{.mask = TVIF_STATE | TVIF_CHILDREN, .hItem = computer};
    EXPECT_EQ(Send(0x110C, 0, address(item)), 1);
    EXPECT_EQ(item.cChildren, 1);
    EXPECT_EQ(item.state, 0x1000U);
    EXPECT_EQ(Send(0x1102, 2, row), 1);
    EXPECT_EQ(listener.Take(), "expanding 3; expanded 3; ");
    EXPECT_EQ(Send(0x110B, 8, row), 1);
    EXPECT_EQ(Next(8, 0), row);
    EXPECT_EQ(Send(0x110C, 0, address(item)), 1);
    EXPECT_EQ(item.state, 0x1000U | TVIS_EXPANDED | TVIS_DROPHILITED);
    Rect rect;
    std::memcpy(static_cast<void*>(&rect), &computer, sizeof computer);
    EXPECT_EQ(Send(0x1104, 1, address(rect)), 1);
    EXPECT_EQ(rect, (Rect{73, 32, 133, 48}));
    TVHITTESTINFO hit{.pt = {80, 40}};
    EXPECT_EQ(Send(0x1111, 0, address(hit)), row);
    EXPECT_EQ(hit.flags, 4U);
    TVITEM image{.mask = TVIF_IMAGE, .hItem = computer, .iImage = 9};
    EXPECT_EQ(Send(0x110D, 0, address(image)), 1);
    EXPECT_THAT(tree.Render(), testing::HasSubstr("Computer #9"));
}

TEST_F(SimulatedTreeTest, ATreeGoesWithItsHost)
{
    desktop.windows.DestroyWindow(host);
    EXPECT_FALSE(platform.windows.Exists(window->Handle()));
    EXPECT_THROW(window->Refresh(), RuntimeError);
    EXPECT_THROW(platform.windows.CreateTree(host, listener), RuntimeError);
    window.reset();
    EXPECT_TRUE(desktop.windows.Trees().empty());
}

class SimulatedListTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    SimulatedList shown = desktop.windows.NewList();
    std::unique_ptr<ListWindow> list = desktop.Get().windows.WrapList(shown.Handle());
};

TEST_F(SimulatedListTest, RendersSortsAndKeepsWhatIsSelected)
{
    list->InsertColumn(0, L"Name", list->PixelsOf(3600), Alignment::Left);
    list->InsertColumn(1, L"", 0, Alignment::Left);
    list->InsertColumn(2, L"Size", 73, Alignment::Right);
    for (const wchar_t* const name : {L"b", L"C", L"a"})
        list->InsertRow(99, name, -1, 0);
    list->SetCell(0, 1, L"hidden");
    list->SetCell(0, 2, L"1 b");
    shown.ClickRow(0);
    list->CheckRow(1, true);
    list->Sort(0, true);
    EXPECT_EQ(shown.RenderColumns(), "Name(240) | (0) | Size(73,right)");
    EXPECT_EQ(shown.Render(), "[x] C | \n> b | 1 b\na | \n");
    EXPECT_EQ(list->SelectedRow(), 1);
}

TEST_F(SimulatedListTest, TakesMessagesUntilItIsDestroyed)
{
    EXPECT_EQ(desktop.Get().windows.WrapList(desktop.windows.NewWindow()), nullptr);
    list->InsertRow(0, L"a", -1, 0);
    LVITEM item{.mask = LVIF_IMAGE, .iItem = 0, .iImage = 44};
    desktop.Get().windows.Send(shown.Handle(), 4102, 0, reinterpret_cast<std::intptr_t>(&item));
    desktop.Get().windows.Send(shown.Handle(), 4099, 1, 0x5A01);
    EXPECT_EQ(list->RowImage(0), 44);
    EXPECT_EQ(shown.State().imageLists[1], SimulatedShell::kSmallSystemImages);
    desktop.windows.DestroyWindow(shown.Handle());
    try {
        list->RowCount();
        ADD_FAILURE() << "a destroyed list answered";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number, 398);
    }
}

}  // namespace
}  // namespace sylvex
