#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/win32_platform.h"
#include "tests/component/handles.h"
#include "tests/support/files_real.h"
#include "tests/support/scene.h"

namespace sylvex::test {
namespace {

class Win32PlatformTest : public testing::Test {
protected:
    Win32Platform platform;
    Platform& services = platform.Get();
};

/// A folder of its own, removed with what is in it.
class Win32FilesTest : public Win32PlatformTest {
protected:
    Win32FilesTest() { MakeBranch(base); }
    ~Win32FilesTest() override { RemoveBranch(base); }
    std::wstring Names(const std::wstring& pattern)
    {
        std::vector<std::wstring> names;
        if (const auto search = services.files.Search(pattern)) {
            do {
                if (search->Entry().name.front() != L'.') names.emplace_back(search->Entry().name);
            } while (search->Next());
        }
        std::sort(names.begin(), names.end());
        std::wstring line;
        for (const auto& name : names)
            line += (line.empty() ? L"" : L" ") + name;
        return line;
    }

    const std::wstring base = L"C:\\SylvexFiles" + std::to_wstring(GetCurrentProcessId());
};

TEST_F(Win32FilesTest, ListsNamesOfAnyScriptInPathsOfAnyLength)
{
    auto folder = base;
    while (folder.size() < 300)
        folder += L"\\" + std::wstring(60, L'd');
    WriteBytes(folder + L"\\\u65e5\u672c.txt", "12345");
    MakeBranch(folder + L"\\sub");
    EXPECT_EQ(Names(folder + L"\\*.*"), L"sub \u65e5\u672c.txt");
    EXPECT_EQ(Names(base + L"\\*.*"), std::wstring(60, L'd'));

    const auto search = services.files.Search(folder + L"\\\u65e5\u672c.txt");
    ASSERT_NE(search, nullptr);
    EXPECT_EQ(search->Entry().size, 5u);
    EXPECT_FALSE(search->Entry().IsDirectory());
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto present = static_cast<std::int64_t>(ULARGE_INTEGER{{now.dwLowDateTime, now.dwHighDateTime}}.QuadPart);
    EXPECT_LT(std::abs(present - search->Entry().lastWriteTime), 600'000'000) << "a minute of 100 ns steps";
    EXPECT_FALSE(search->Next());
}

TEST_F(Win32FilesTest, ANameThatEndsInAFullStopOrABlankIsAnother)
{
    int files = 0;
    for (const wchar_t* const name : {L"\\foo", L"\\foo.", L"\\foo "})
        WriteBytes(base + name + L"\\" + std::to_wstring(++files), "");
    EXPECT_EQ(Names(base + L"\\foo\\*.*") + Names(base + L"\\foo.\\*.*") + Names(base + L"\\foo \\*.*"), L"123");
    EXPECT_EQ(Names(base + L"\\foo."), L"foo.");
}

TEST_F(Win32PlatformTest, SortKeysOrderLikeTheComparison)
{
    const std::vector<std::wstring> names = {
        L"",   L"a", L"A",  L"ab",    L"a b",  L"a-b",    L"a.b",    L"B",      L"\u00e4", L"\u00c4z", L"z",
        L"10", L"9", L"_x", L"co-op", L"coop", L"\u0416", L"\u0436", L"\u65e5", L"$sys",   L"~temp",   L"'q"};
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (const auto& left : names) {
        for (const auto& right : names) {
            std::string keys[2];
            services.regional.AppendSortKey(left, keys[0]);
            services.regional.AppendSortKey(right, keys[1]);
            EXPECT_EQ(sign(keys[0].compare(keys[1])), sign(services.regional.Compare(left, right)))
                << testing::PrintToString(left) << testing::PrintToString(right);
        }
    }
    std::string key = "kept";
    services.regional.AppendSortKey(std::wstring(5000, L'x'), key);
    EXPECT_GT(key.size(), 5000u) << "names longer than the buffer have keys too";
    EXPECT_EQ(key.substr(0, 4), "kept");
}

TEST_F(Win32PlatformTest, NumbersAreRoundedThenGrouped)
{
    const struct {
        const wchar_t *settings[4], *rounded, *fraction;
    } cases[] = {{{L".", L",", L"3;0", L"1"}, L"1,000.0", L"0.977"},
                 {{L",", L".", L"3;0", L"0"}, L"1.000,0", L",977"},
                 {{L",", L"'", L"3;2;0", L"0"}, L"1'000,0", L",977"}};
    const LCTYPE which[] = {LOCALE_SDECIMAL, LOCALE_STHOUSAND, LOCALE_SGROUPING, LOCALE_ILZERO};
    std::wstring before[4];
    for (int i = 0; i < 4; ++i) {
        before[i].resize(16);
        GetLocaleInfoW(LOCALE_USER_DEFAULT, which[i], before[i].data(), 16);
    }
    for (const auto& [settings, rounded, fraction] : cases) {
        for (int i = 0; i < 4; ++i)
            SetLocaleInfoW(LOCALE_USER_DEFAULT, which[i], settings[i]);
        for (const double size : {1'023'949.0, 1'023'999.0})
            EXPECT_EQ(services.regional.Number(size / 1024, 1), rounded);
        EXPECT_EQ(services.regional.Number(0.9765625, 3), fraction);
        EXPECT_EQ(services.regional.Number(0, 0), L"0");
    }
    for (int i = 0; i < 4; ++i)
        SetLocaleInfoW(LOCALE_USER_DEFAULT, which[i], before[i].c_str());
}

TEST_F(Win32PlatformTest, TextsFollowTheUsersSettings)
{
    auto& regional = services.regional;
    EXPECT_EQ(regional.Lower(L"\u00c4RGER Zip"), L"\u00e4rger zip");
    EXPECT_EQ(regional.Number(1e15, 0).front(), L'1');
    EXPECT_EQ(sylvex::ErrorOf([&] { regional.Number(std::numeric_limits<double>::infinity(), 0); }), 5);
    // 2026-11-16 02:34:13
    const Date date{46342.0 + (2 * 3600 + 34 * 60 + 13) / 86400.0};
    EXPECT_NE(regional.ShortDate(date).find(L"16"), std::wstring::npos);
    EXPECT_NE(regional.LongTime(date).find(L"34"), std::wstring::npos);
    EXPECT_EQ(sylvex::ErrorOf([&] { regional.ShortDate({1e9}); }), 5);
    EXPECT_EQ(sylvex::ErrorOf([&] { regional.LongTime({-1e9}); }), 5);
    EXPECT_EQ(regional.Narrow(L"A\u65e5").front(), 'A');
    EXPECT_EQ(regional.Narrow(L"").size(), 0u);
}

TEST_F(Win32PlatformTest, IconsAreGivenBack)
{
    auto& shell = services.shell;
    const auto fillAndEmpty = [&] {
        const ImageListHandle list = services.images.Create();
        for (int round = 0; round < 100; ++round) {
            const auto icon = shell.IconInFile(L"Shell32.dll", 3);
            ASSERT_TRUE(icon);
            EXPECT_EQ(services.images.Add(list, icon.Get()), round);
        }
        EXPECT_FALSE(shell.DisplayName(L"C:\\").empty());
        EXPECT_EQ(services.images.Count(list), 100);
        EXPECT_EQ(services.images.Add(list, 0), -1);
        EXPECT_FALSE(shell.IconInFile(L"Shell32.dll", 99999));
        EXPECT_FALSE(shell.IconInFile(L"C:\\none.ico", 0));
        services.images.Destroy(list);
    };
    fillAndEmpty();  // the shell keeps some for itself
    const Handles before;
    fillAndEmpty();
    const Handles after;
    EXPECT_LE(after.user, before.user + 10);
    EXPECT_LE(after.gdi, before.gdi + 10);
}

TEST_F(Win32PlatformTest, ResourceStringsComeFromTheSystemFolderAlone)
{
    // The title of the system's error boxes, in whatever language.
    EXPECT_FALSE(services.shell.ResourceString(L"User32.Dll", 2).empty());
    EXPECT_EQ(services.shell.ResourceString(L"..\\none.dll", 1), L"");
    EXPECT_EQ(services.shell.ResourceString(services.files.SystemDirectory() + L"\\shell32.dll", 4162), L"");
    EXPECT_EQ(services.shell.ResourceString(L"none.dll", 1), L"");
    const auto documents = services.shell.SpecialFolder(5);
    EXPECT_FALSE(documents.empty());
    EXPECT_NE(documents.back(), L'\\');
    EXPECT_EQ(services.shell.SpecialFolder(9999), L"");
}

void Pump(DWORD milliseconds)
{
    MSG message;
    for (const DWORD end = GetTickCount() + milliseconds; GetTickCount() < end; Sleep(1))
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
}

TEST_F(Win32PlatformTest, TimersTickWhileEnabledAndMayGoInATick)
{
    int ticks = 0;
    std::unique_ptr<Timer> timer = services.timers.Create([&] { ++ticks; });
    timer->SetInterval(10);
    Pump(50);
    EXPECT_EQ(ticks, 0);
    timer->SetEnabled(true);
    Pump(100);
    EXPECT_GE(ticks, 2);
    timer->SetEnabled(false);
    const auto before = ticks;
    Pump(50);
    EXPECT_EQ(ticks, before);

    timer = services.timers.Create([&] {
        ++ticks;
        timer.reset();
    });
    timer->SetInterval(10);
    timer->SetEnabled(true);
    Pump(50);
    EXPECT_EQ(ticks, before + 1);
}

class Win32ListTest : public Win32PlatformTest {
protected:
    void SetUp() override
    {
        native = CreateWindowExW(0, WC_LISTVIEWW, nullptr, WS_POPUP | LVS_REPORT, 0, 0, 300, 200, nullptr, nullptr,
                                 nullptr, nullptr);
        list = services.windows.WrapList(NumberOf(native));
        ASSERT_NE(list, nullptr);
        list->InsertColumn(0, L"Name", 100, Alignment::Left);
        list->InsertColumn(1, L"Size", 50, Alignment::Right);
    }
    void TearDown() override { DestroyWindow(native); }
    void Fill(std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> rows)
    {
        for (const auto& [name, size] : rows) {
            const auto row = list->InsertRow(INT_MAX, name, -1);
            list->SetCell(row, 1, size);
        }
    }
    /// What the list's host keeps with a row.
    void Keep(int row, LPARAM data)
    {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = row;
        item.lParam = data;
        ListView_SetItem(native, &item);
    }
    std::wstring Rows()
    {
        std::wstring line;
        for (int row = 0; row < list->RowCount(); ++row) {
            LVITEMW item{};
            item.mask = LVIF_PARAM;
            item.iItem = row;
            ListView_GetItem(native, &item);
            line += list->Cell(row, 0) + L"=" + list->Cell(row, 1) + L"#" + std::to_wstring(item.lParam) + L" ";
        }
        return line;
    }

    HWND native = nullptr;
    std::unique_ptr<ListWindow> list;
};

TEST_F(Win32ListTest, SortsByTextAndKeepsTheOrderOfEqualRows)
{
    Fill({{L"b", L"2"}, {L"A", L"1"}, {L"B", L"1"}, {L"a", L"2"}});
    list->SelectRow(1, true);
    EXPECT_EQ(list->Sort(0, false), (std::vector<int>{1, 3, 0, 2}));
    EXPECT_EQ(Rows(), L"A=1#0 a=2#0 b=2#0 B=1#0 ");
    EXPECT_EQ(list->SelectedRow(), 0);
    EXPECT_TRUE(list->Sort(0, false).empty());
    list->Sort(0, true);
    EXPECT_EQ(Rows(), L"b=2#0 B=1#0 A=1#0 a=2#0 ");
    list->Sort(1, false);
    EXPECT_EQ(Rows(), L"B=1#0 A=1#0 b=2#0 a=2#0 ");
    EXPECT_TRUE(list->IsSelected(1));
}

TEST_F(Win32ListTest, WhatTheHostKeepsWithItsRowsGoesWithThem)
{
    Fill({{L"b", L"2"}, {L"A", L"1"}, {L"c", L"3"}});
    Keep(0, 7);
    Keep(1, 7);
    list->SelectRow(0, true);
    list->Sort(0, false);
    EXPECT_EQ(list->SelectedRow(), 1);
    EXPECT_EQ(Rows(), L"A=1#7 b=2#7 c=3#0 ");
    Keep(0, 6);
    Keep(1, 8);
    list->Sort(1, true);
    EXPECT_EQ(Rows(), L"c=3#0 b=2#8 A=1#6 ");
}

TEST_F(Win32ListTest, ALongListOfRowsWithoutDataIsSortedInLittleTime)
{
    constexpr int kRows = 20'000;
    SendMessageW(native, WM_SETREDRAW, FALSE, 0);
    ListView_SetExtendedListViewStyle(native, LVS_EX_CHECKBOXES);
    const auto textOf = [](int place) { return std::to_wstring(100'000 + place); };
    for (int row = 0; row < kRows; ++row) {
        const int place = row * 7919 % kRows;
        const auto text = textOf(place);
        list->SetCell(list->InsertRow(INT_MAX, text, place % 5), 1, L"of " + text);
        if (place == 5) list->SelectRow(row, true);
        if (place == 6) list->CheckRow(row, true);
    }
    const auto start = GetTickCount64();
    const auto order = list->Sort(0, false);
    EXPECT_LT(GetTickCount64() - start, 5000u);
    ASSERT_EQ(order.size(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(order[1] * 7919 % kRows, 1);
    int wrong = 0;
    for (int row = 0; row < kRows; ++row)
        wrong += list->Cell(row, 0) != textOf(row) || list->Cell(row, 1) != L"of " + textOf(row) ||
                 list->RowImage(row) != row % 5 || list->IsSelected(row) != (row == 5) ||
                 list->IsChecked(row) != (row == 6);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(list->SelectedRow(), 5);
}

TEST_F(Win32ListTest, AListThatIsGoneAnswersWithAnError)
{
    DestroyWindow(native);
    EXPECT_EQ(sylvex::ErrorOf([&] { list->RowCount(); }), 398);
    EXPECT_EQ(sylvex::ErrorOf([&] { list->SetVisible(true); }), 398);
    EXPECT_EQ(services.windows.WrapList(NumberOf(native)), nullptr);
    EXPECT_EQ(services.windows.WrapList(NumberOf(GetDesktopWindow())), nullptr);
    EXPECT_EQ(services.windows.Send(NumberOf(native), LVM_GETITEMCOUNT, 0, 0), 0);
}

}  // namespace
}  // namespace sylvex::test
