#include <gtest/gtest.h>

#include "tests/support/scene.h"
#include "widgets/window_list.h"

namespace sylvex {
namespace {

/// Rows given as texts; they count how often they were asked for their order.
class TextRows final : public RowSource {
public:
    TextRows(std::initializer_list<std::wstring> texts, std::vector<std::uint32_t> sorted)
        : m_texts(texts), m_sorted(std::move(sorted))
    {
    }
    std::size_t Count() const override { return m_texts.size(); }
    const ListRow& Row(std::size_t place) override
    {
        m_row = {{m_texts[place], L"", L"second " + m_texts[place]}, static_cast<int>(place)};
        return m_row;
    }
    std::vector<std::uint32_t> SortedPlaces(bool descending) const override
    {
        ++asked;
        if (descending) return {m_sorted.rbegin(), m_sorted.rend()};
        return m_sorted;
    }
    mutable int asked = 0;

private:
    std::vector<std::wstring> m_texts;
    std::vector<std::uint32_t> m_sorted;
    ListRow m_row;
};

class WindowListTest : public testing::Test {
protected:
    WindowListTest()
    {
        list.AddColumn({L"a", L"First", 1440});
        list.AddColumn({L"b", L"Second", 720, Alignment::Right});
        list.AddColumn({L"c", L"", 0});
    }
    std::wstring Rows()
    {
        std::wstring joined;
        for (const std::wstring& text : list.Texts())
            joined += (joined.empty() ? L"" : L" ") + text;
        return joined;
    }
    RowId Add(const std::wstring& text, const std::wstring& key = {})
    {
        return list.InsertRow(list.RowCount(), text, -1, key);
    }

    std::unique_ptr<Desk> desk = MakeDesk();
    std::unique_ptr<ListWindow> window = desk->Get().windows.WrapList(desk->NewList());
    WindowListView list{desk->Get().windows.WrapList(window->Handle())};
};

TEST_F(WindowListTest, AnEmptyListTakesRowsThatWillBeSortedInOrder)
{
    TextRows rows({L"pear", L"apple", L"fig"}, {1, 2, 0});
    list.AddRows(rows, true);
    EXPECT_EQ(Rows(), L"apple fig pear");
    EXPECT_EQ(window->Cell(0, 1) + window->Cell(0, 2), L"second apple");
    EXPECT_EQ(window->RowImage(0), 1);
    list.SortBy(0);
    EXPECT_EQ(Rows(), L"apple fig pear");
    EXPECT_TRUE(list.Sorted());
}

TEST_F(WindowListTest, ChangesBetweenAddingAndSortingAreSeen)
{
    TextRows rows({L"apple", L"fig"}, {0, 1});
    list.AddRows(rows, true);
    list.SetCell(0, 0, L"zebra");
    list.SortBy(0);
    EXPECT_EQ(Rows(), L"fig zebra");
    list.ClearItems();
    list.AddRows(rows, true);
    window->InsertRow(9, L"aaa", -1);
    list.SortBy(0);
    EXPECT_EQ(Rows(), L"aaa apple fig");
}

TEST_F(WindowListTest, RowsAreOnlyBroughtInOrderWhereSortingIsOn)
{
    TextRows rows({L"pear", L"apple"}, {1, 0});
    list.AddRows(rows, false);
    EXPECT_EQ(Rows(), L"pear apple");
    list.SetSorted(true);
    EXPECT_EQ(Rows(), L"apple pear");
    list.SetDescending(true);
    EXPECT_EQ(Rows(), L"pear apple");
    list.AddRows(rows, false);
    EXPECT_EQ(Rows(), L"pear pear apple apple");
    list.ClearItems();
    list.AddRows(rows, true);
    EXPECT_EQ(Rows(), L"pear apple");
    list.SetSortKey(2);
    EXPECT_EQ(Rows(), L"pear apple");
    EXPECT_EQ(ErrorOf([&] { list.SetSortKey(-1); }), 380);
}

TEST_F(WindowListTest, ARowKeepsItsIdentityWhereverItMoves)
{
    const RowId fig = Add(L"fig", L"f");
    const RowId apple = Add(L"apple");
    list.SortBy(0);
    EXPECT_EQ(list.PlaceOf(fig), 1);
    EXPECT_EQ(list.PlaceOf(apple), 0);
    EXPECT_EQ(list.IdAt(0), apple);
    EXPECT_EQ(list.PlaceOf(std::wstring(L"f")), 1);
    window->DeleteRow(0);
    EXPECT_EQ(list.PlaceOf(fig), 0);
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(apple); }), 35605);
    list.ClearItems();
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(fig); }), 35605);
    EXPECT_EQ(ErrorOf([&] { list.IdAt(0); }), 35600);
}

TEST_F(WindowListTest, RowsOfTheHostHaveNamesLikeOurs)
{
    window->InsertRow(0, L"host's", -1);
    window->InsertRow(1, L"host's too", -1);
    const RowId first = list.IdAt(0);
    EXPECT_NE(first, list.IdAt(1));
    // The same window handed over twice: rows of one are not taken for rows of the other.
    WindowListView other(desk->Get().windows.WrapList(window->Handle()));
    const RowId row = Add(L"ours");
    EXPECT_NE(other.IdAt(2), row);
    window->InsertRow(0, L"behind our back", -1);
    EXPECT_EQ(list.PlaceOf(first), 1);
    EXPECT_EQ(list.PlaceOf(row), 3);
    // A row that comes where one has gone is another, also where the window gives its number again.
    window->DeleteRow(3);
    EXPECT_NE(Add(L"new"), row);
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(row); }), 35605);
}

TEST_F(WindowListTest, KeysAreUniqueAmongRowsThatStillExist)
{
    const RowId first = Add(L"fig", L"k");
    EXPECT_EQ(ErrorOf([&] { Add(L"pear", L"k"); }), 35602);
    EXPECT_EQ(ErrorOf([&] { Add(L"pear", L"12"); }), 35603);
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(std::wstring(L"x")); }), 35601);
    EXPECT_EQ(Rows(), L"fig");
    list.SetKey(first, L"other");
    const RowId second = Add(L"pear", L"k");
    EXPECT_EQ(ErrorOf([&] { list.SetKey(first, L"k"); }), 35602);
    EXPECT_EQ(list.KeyOf(first), L"other");
    window->DeleteRow(list.PlaceOf(second));
    EXPECT_EQ(ErrorOf([&] { list.PlaceOf(std::wstring(L"k")); }), 35601);
    list.SetKey(first, L"k");
    list.RemoveRow(0);
    Add(L"plum", L"k");
    EXPECT_EQ(list.PlaceOf(std::wstring(L"k")), 0);
}

TEST_F(WindowListTest, ColumnsAreFoundByKeyAndKeepTheirWidthInTwips)
{
    EXPECT_EQ(list.SubItemIndex(L"b"), 1);
    EXPECT_EQ(ErrorOf([&] { list.SubItemIndex(L"z"); }), 35601);
    EXPECT_EQ(ErrorOf([&] { list.AddColumn({L"b", L"", 0}); }), 35602);
    EXPECT_EQ(window->ColumnWidth(1), window->PixelsOf(720));
    list.SetColumnWidth(L"b", 1001);
    EXPECT_EQ(list.Width(1), 1001);
    window->SetColumnWidth(1, window->PixelsOf(1440));
    EXPECT_EQ(list.Width(1), 1440);
    const ColumnId last = list.ColumnAt(2);
    list.RemoveColumn(0);
    EXPECT_EQ(list.PlaceOfColumn(last), 1);
    EXPECT_EQ(list.SubItemIndex(L"c"), 1);
    list.ClearColumns();
    EXPECT_EQ(window->ColumnCount(), 0);
    EXPECT_EQ(ErrorOf([&] { list.PlaceOfColumn(last); }), 35605);
}

}  // namespace
}  // namespace sylvex
