// What the rows of a list say, and what they ask of the platform.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filelist/file_types.h"
#include "filelist/formatting.h"
#include "tests/support/desk_simulated.h"
#include "tests/support/scene.h"

namespace sylvex {
namespace {

using testing::ElementsAre;

/// A control on the simulated desktop with a list bound.
class FileRowsTest : public testing::Test {
protected:
    FileRowsTest() { desktop.reporter.Install(L""); }
    /// Binds a list and loads the tree so that every folder with something in it can be opened.
    void Load()
    {
        scene.BindList();
        scene.control().LetFileFilter(L"*");
        scene.Enumerate();
    }
    /// Ticks what is in a folder of the scratch folder, ancestors mixed.
    void TickAll(const std::wstring& folder)
    {
        Node& parent = scene.At(folder);
        parent.SetExpanded(true);
        for (Node* node = parent.Child(); node != nullptr; node = node->Next())
            node->SetChecked(true);
        for (Node* node = &parent; node != nullptr; node = node->Parent())
            node->SetBold(true);
    }
    void Build() { scene.control().Refresh(); }
    std::vector<std::wstring> Column(const std::wstring& key)
    {
        std::vector<std::wstring> cells;
        for (int row = 0; row < scene.list().RowCount(); ++row)
            cells.push_back(scene.Cell(row, key));
        return cells;
    }

    Scene scene;
    SimulatedDesktop& desktop = static_cast<SimulatedDesk&>(scene.desk()).desktop;
    ControlState& state = scene.control().State();
};

TEST_F(FileRowsTest, SizesHaveFourDigits)
{
    const struct {
        double size;
        const wchar_t* text;
    } cases[] = {{0, L"0 b"},
                 {1023, L"1,023 b"},
                 {1024, L"1.000 Kb"},
                 {1536, L"1.500 Kb"},
                 {1'000'000, L"976.6 Kb"},
                 {1'023'999, L"1,000.0 Kb"},
                 {1'024'000, L"0.977 Mb"},
                 {1'048'576, L"1.000 Mb"},
                 {1'024'000'000, L"0.954 Gb"},
                 {5'000'000'000, L"4.657 Gb"},
                 {1e26, L"82.72 Yb"},
                 {1.1e27, L"Out of bounds"}};
    for (const auto& [size, text] : cases)
        EXPECT_EQ(FormatSize(state, desktop.regional, size), text);
    desktop.gate.FailCall(1);
    EXPECT_EQ(FormatSize(state, desktop.regional, 5), L"Overflow");
    EXPECT_TRUE(desktop.reporter.Reports().empty());
}

TEST_F(FileRowsTest, AMissingTimeIsThreeOClockInTheMorningOf1980)
{
    desktop.regional.SetUtcOffset(120);
    const auto text = [&](std::int64_t time, bool local) {
        const Date date = UTCCurrToVbDate(state, desktop.regional, Currency{time}, local);
        return FormGenDatTim(state, desktop.regional, date);
    };
    EXPECT_EQ(text(0, false), L"01/01/1980 03:00:00");
    EXPECT_EQ(text(0, true), L"01/01/1980 05:00:00");
    EXPECT_EQ(text(kFileTime, true), L"02/01/2026 05:04:05");
}

TEST_F(FileRowsTest, EachAttributeHasItsPlace)
{
    EXPECT_EQ(GetAttrString(state, 0), L"...............");
    EXPECT_EQ(GetAttrString(state, 16), L"....d..........");
    EXPECT_EQ(GetAttrString(state, 33), L"r....a.........");
    EXPECT_EQ(GetAttrString(state, 0xFFFFFFFF), L"rhsvdalnt?lco?e");
}

TEST_F(FileRowsTest, ACurrencyIsReadFromEightNarrowBytes)
{
    const auto units = [&](std::wstring text) { return CVC(state, desktop.regional, text).units; };
    EXPECT_EQ(units(std::wstring(L"\x10\0\0\0\x01\0\0\0", 8)), 0x1'0000'0010);
    EXPECT_EQ(units(L"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x20"), -1);
    EXPECT_EQ(units(L"A"), 65);
    EXPECT_EQ(units(L""), 0);
}

TEST_F(FileRowsTest, ARowTellsWhatTheDirectorySays)
{
    DiskEntry& file = desktop.disk.AddFile(L"C:\\Scratch\\t\\Long name.TXT", 12'345'678'901, 33);
    file.creationTime = kFileTime - 86'400LL * 10'000'000;
    file.lastAccessTime = kFileTime + 3'600LL * 10'000'000 + 6'000'000;
    file.shortName = L"LONGNA~1.TXT";
    Load();
    TickAll(L"t");
    Build();
    EXPECT_EQ(static_cast<SimulatedList&>(scene.list()).Render(),
              "C:\\Scratch\\t\\Long name.TXT | txt | 11.50 Gb | Text Document | 02/01/2026 | 03:04:05 | "
              "01/01/2026 03:04:05 | 02/01/2026 04:04:06 | r....a......... | LONGNA~1.TXT\n");
    EXPECT_EQ(scene.Cell(0, L"siz2"), L"2345678901");
    EXPECT_EQ(scene.Cell(0, L"cre2"), L"20260101030405");
    EXPECT_EQ(scene.Cell(0, L"acc2"), L"20260102040406");
    EXPECT_EQ(scene.Cell(0, L"mod2") + scene.Cell(0, L"tim2"), L"20260102030405030405");
    // A name that is short already has no other.
    file.shortName.clear();
    Build();
    EXPECT_EQ(scene.Cell(0, L"dos"), L"Long name.TXT");
}

TEST_F(FileRowsTest, TimesBeyondTheCalendarAreLeftOut)
{
    DiskEntry& file = desktop.disk.AddFile(L"C:\\Scratch\\t\\a.txt");
    file.creationTime = 2'650'467'744'000'000'000;
    file.lastAccessTime = -1;
    desktop.disk.AddFile(L"C:\\Scratch\\t\\b.txt");
    Load();
    TickAll(L"t");
    Build();
    EXPECT_THAT(Column(L"cre"), ElementsAre(L"", L"02/01/2026 03:04:05"));
    EXPECT_THAT(Column(L"acc2"), ElementsAre(L"", L"20260102030405"));
    EXPECT_THAT(Column(L"mod"), ElementsAre(L"02/01/2026", L"02/01/2026"));
    // The user's own last day counts, up to its last half second.
    file.creationTime = 2'650'467'744'000'000'000 + 36'000'000'000 - 10'000;
    file.lastAccessTime = 1;
    desktop.regional.SetUtcOffset(-60);
    Build();
    EXPECT_THAT(Column(L"cre2"), ElementsAre(L"99991231235959", L"20260102020405"));
    EXPECT_THAT(Column(L"acc2"), ElementsAre(L"16010101000000", L"20260102020405"));
}

TEST_F(FileRowsTest, VolumesWithFatShowTheAccessDateOnlyEachRowByItsOwnVolume)
{
    desktop.disk.AddDrive(L'F', DriveKind::Fixed, L"Stick (F:)", L"fat32");
    desktop.disk.AddFile(L"F:\\one.txt");
    desktop.disk.AddFile(L"F:\\two.txt");
    scene.desk().Make({L"t\\a.txt"});
    Load();
    TickAll(L"t");
    Node& stick = scene.nodes().Item(L"F:\\");
    stick.SetExpanded(true);
    for (Node* node = stick.Child(); node != nullptr; node = node->Next())
        node->SetChecked(true);
    stick.SetBold(true);
    Build();
    EXPECT_THAT(Column(L"acc"), ElementsAre(L"02/01/2026 03:04:05", L"02/01/2026", L"02/01/2026"));
    EXPECT_EQ(state.list.SourcePath, L"F:\\");
    EXPECT_TRUE(state.list.IsFAT);
    // The next list is for that volume, so its column is the narrow one.
    Build();
    const int narrow = scene.list().PixelsOf(1200);
    EXPECT_EQ(scene.list().ColumnWidth(scene.control().ReqListView()->SubItemIndex(L"acc")), narrow);
}

TEST_F(FileRowsTest, AFolderIsListedOnceAndTypesAreAskedForOnce)
{
    for (int i = 0; i < 40; ++i)
        scene.desk().Make({L"t\\f" + std::to_wstring(100 + i) + (i % 2 != 0 ? L".txt" : L".TXT")});
    scene.desk().Make({L"t\\run.exe", L"t\\walk.exe", L"t\\x.odd", L"t\\y.odd", L"t\\sub\\"});
    Load();
    TickAll(L"t");
    const int listings = desktop.disk.Listings(L"C:\\Scratch\\t");
    const int searches = desktop.disk.Searches();
    const std::size_t types = desktop.shell.TypeIndexAsks().size();
    const std::size_t files = desktop.shell.IconIndexAsks().size();
    const ListState& shown = static_cast<SimulatedList&>(scene.list()).State();
    const int painted = shown.exposedChanges;
    Build();
    ASSERT_EQ(scene.list().RowCount(), 45);
    EXPECT_EQ(desktop.disk.Listings(L"C:\\Scratch\\t"), listings + 1);
    EXPECT_EQ(desktop.disk.Searches(), searches + 1);
    EXPECT_EQ(desktop.disk.OpenSearches(), 0);
    EXPECT_EQ(shown.exposedChanges, painted) << "on the way";
    {
        const auto frozen = scene.control().ReqListView()->Freeze();
        scene.control().ReqListView()->SortBy(0);
        EXPECT_FALSE(shown.redraw) << "sorting within leaves it to the outermost";
    }
    EXPECT_TRUE(shown.redraw);
    // Once for txt, odd and folders; programs show pictures of their own.
    EXPECT_EQ(desktop.shell.TypeIndexAsks().size() - types, 3u);
    std::vector<std::string> asked = desktop.shell.IconIndexAsks();
    asked.erase(asked.begin(), asked.begin() + static_cast<std::ptrdiff_t>(files));
    EXPECT_THAT(asked, ElementsAre("C:\\Scratch\\t\\sub", "C:\\Scratch\\t\\f100.TXT", "C:\\Scratch\\t\\run.exe",
                                   "C:\\Scratch\\t\\walk.exe"));
    EXPECT_EQ(scene.list().RowImage(0), SimulatedShell::IndexOfType(L"txt"));
    EXPECT_NE(scene.list().RowImage(40), scene.list().RowImage(42));
}

TEST_F(FileRowsTest, TypesThatTheRegistryDrawsPerFileAreAskedFileByFile)
{
    desktop.system.SetClassRoot(L".pic", L"picfile");
    desktop.system.SetClassRoot(L"picfile", L"Picture");
    desktop.system.SetClassRoot(L"picfile\\DefaultIcon", L"%1");
    desktop.system.SetClassRoot(L".doc", L"docfile");
    desktop.system.SetClassRoot(L"docfile", L"Letter");
    desktop.system.SetClassRoot(L"docfile\\shellex\\IconHandler", L"");
    FileTypes types(scene.control().Parts(), state.list);
    desktop.gate.FailCall(1);
    EXPECT_THROW(types.DrawnPerFile(L"pic"), RuntimeError);
    EXPECT_TRUE(types.DrawnPerFile(L"pic"));  // what failed is asked again
    EXPECT_TRUE(types.DrawnPerFile(L"doc"));
    EXPECT_TRUE(types.DrawnPerFile(L"lnk"));
    EXPECT_FALSE(types.DrawnPerFile(L"txt"));
    EXPECT_FALSE(types.DrawnPerFile(L""));
}

TEST_F(FileRowsTest, AnExtensionIsLookedUpOnce)
{
    state.list.sNone = L"(none)";
    desktop.system.SetClassRoot(L".far", L"farclass");
    desktop.system.SetClassRoot(L"farclass", std::wstring(100, L'y'));
    FileTypes types(scene.control().Parts(), state.list);
    int icon = 77;
    EXPECT_EQ(types.GetFileType(L"", L"C:\\x", icon), L"");
    EXPECT_EQ(icon, 77);
    EXPECT_EQ(types.GetFileType(L"odd", L"C:\\x.odd", icon), L"(none)");
    EXPECT_EQ(icon, 0);
    EXPECT_EQ(types.GetFileType(L"far", L"C:\\x.far", icon), std::wstring(79, L'y'));
    scene.desk().Make({L"a.txt"});
    EXPECT_EQ(types.GetFileType(L"txt", L"C:\\Scratch\\a.txt", icon), L"Text Document");
    EXPECT_EQ(icon, SimulatedShell::IndexOfType(L"txt"));
    const std::size_t asked = desktop.system.ClassRootAsks().size();
    desktop.system.SetClassRoot(L"txtfile", L"Changed");
    EXPECT_EQ(types.GetFileType(L"txt", L"C:\\other.txt", icon), L"Text Document");
    EXPECT_EQ(desktop.system.ClassRootAsks().size(), asked);
    // The search heeds letter case, the order does not.
    EXPECT_EQ(types.GetFileType(L"TXT", L"C:\\B.TXT", icon), L"Changed");
    std::wstring order;
    for (const FTs& record : state.list.TypeNew)
        order += record.Ext + L";";
    EXPECT_EQ(order, L";far;odd;txt;TXT;");
    EXPECT_EQ(types.BinarySearchTypeNew(L"far"), 1);
    EXPECT_EQ(types.BinarySearchTypeNew(L"TXT"), -1);
    EXPECT_EQ(types.GetFileType(L"TXT", L"C:\\C.TXT", icon), L"Changed");
    EXPECT_EQ(state.list.TypeNew.size(), 5u) << "what the search does not meet is known all the same";
    EXPECT_EQ(types.BinarySearchTypeNew(L"zzz"), -1);
}

TEST_F(FileRowsTest, ColumnsHaveTheWordsOfTheShellOrTheEnglishOnes)
{
    desktop.shell.SetResourceString(L"Shell32.dll", 8976, L"Nom");
    desktop.shell.SetResourceString(L"Shell32.dll", 4131, L"Dossier");
    desktop.shell.SetResourceString(L"Intl.Cpl", 25, L"Heure");
    scene.desk().Make({L"t\\sub\\"});
    Load();
    EXPECT_EQ(
        static_cast<SimulatedList&>(scene.list()).RenderColumns(),
        "Nom(240) | Ext(33) | Size(73,right) | Type(93) | Modified(67) | Heure(73) | Created(113) | Accessed(113) | "
        "Attributes(67) | MsDos 8.3(107) | (0) | (0) | (0) | (0) | (0) | (0)");
    TickAll(L"t");
    Build();
    EXPECT_EQ(scene.Cell(0, L"typ"), L"Dossier");
    EXPECT_EQ(state.list.TypeNew.front().TypeName, L"Dossier");
    EXPECT_EQ(state.list.TypeNew.front().IconIndex, SimulatedShell::kFolderIndex);
    EXPECT_EQ(state.list.TempDir.back(), L'\\');
    EXPECT_EQ(state.tree.m_MyDocs, L"C:\\My Documents");
}

TEST_F(FileRowsTest, TheSystemsImageListsAreAttachedAndSharedWithoutAList)
{
    Load();
    const ListState& list = static_cast<SimulatedList&>(scene.list()).State();
    EXPECT_THAT(list.imageLists, ElementsAre(SimulatedShell::kNormalSystemImages, SimulatedShell::kSmallSystemImages));
    EXPECT_EQ(desktop.windows.Style(list.handle) & 64u, 64u);
    EXPECT_EQ(ErrorOf([&] { scene.control().SetReqListView(nullptr); }), 65535);
    EXPECT_THAT(desktop.boxes.Lines(), ElementsAre(testing::HasSubstr("Error in AssignSysIl (0)")));
    ASSERT_EQ(desktop.reporter.Reports().size(), 2u);
    EXPECT_EQ(desktop.reporter.Reports()[0].procedure, L"LVColumnHeaders");
    EXPECT_EQ(desktop.reporter.Reports()[0].number, 91);
    EXPECT_EQ(desktop.reporter.Reports()[1].procedure, L"ReqListView");
}

TEST_F(FileRowsTest, DrivesAndPlacesBeyondTheDiskAreShownLikeFolders)
{
    Load();
    for (const wchar_t* const key : {L"MyComputer", L"C:\\"}) {
        for (Node* node = scene.nodes().Item(key).Parent(); node != nullptr; node = node->Parent())
            node->SetBold(true);
        scene.nodes().Item(key).SetChecked(true);
    }
    scene.control().LetRecursiveCheck(false);
    const int searches = desktop.disk.Searches();
    Build();
    EXPECT_THAT(Column(L"nam"), ElementsAre(L"C:\\*", L"Desktop\\My Computer\\*"));
    EXPECT_THAT(Column(L"atr"), ElementsAre(L"...............", L"..............."));
    EXPECT_EQ(desktop.disk.Searches(), searches);
    EXPECT_EQ(state.list.SourcePath, L"");
}

TEST_F(FileRowsTest, AFailureAtAFoldersRowIsAddFoldersFirst)
{
    scene.desk().Make({L"t\\a.txt", L"t\\sub\\"});
    Load();
    TickAll(L"t");
    const auto reportersOfInsertion = [&](int which) {
        const auto& reports = desktop.reporter.Reports();
        std::size_t before = 0;
        for (int call = 1; which > 0; ++call) {
            before = reports.size();
            desktop.gate.FailCall(call);
            ErrorOf([&] { Build(); });
            if (desktop.gate.Failed() == "ListWindow::InsertRow") --which;
            desktop.gate.FailNone();
        }
        std::wstring names;
        for (; before < reports.size(); ++before)
            names += reports[before].procedure + L" ";
        return names;
    };
    EXPECT_EQ(reportersOfInsertion(1), L"BuildFileList Refresh ");
    EXPECT_EQ(reportersOfInsertion(2), L"AddFolder BuildFileList Refresh ");
}

}  // namespace
}  // namespace sylvex
