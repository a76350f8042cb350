#include <algorithm>

#include "platform/win32/handles.h"
#include "platform/win32/win32_platform.h"
#include "tests/component/test_control.h"
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

TEST_F(Win32PlatformTest, ALongListOfRowsWithoutDataIsSortedInLittleTime)
{
    const ListViewWindow host;
    const HWND native = host.window;
    const auto list = services.windows.WrapList(NumberOf(native));
    for (const int column : {0, 1})
        list->InsertColumn(column, L"Column", 100, Alignment::Left);
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

}  // namespace
}  // namespace sylvex::test
