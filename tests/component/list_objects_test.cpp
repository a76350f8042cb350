#include "tests/component/test_control.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {
namespace {

constexpr long kListGone = 398;

/// The parent of a list as a framework makes it: it writes to what it keeps for every row that it is told of.
class FrameworkParent {
public:
    FrameworkParent()
    {
        m_window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnMessage));
        list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 400, 300, m_window,
                               nullptr, nullptr, nullptr);
    }
    ~FrameworkParent() { DestroyWindow(m_window); }
    FrameworkParent(const FrameworkParent&) = delete;
    FrameworkParent& operator=(const FrameworkParent&) = delete;
    void Add(const wchar_t* text, int& told)
    {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = INT_MAX;
        item.pszText = const_cast<wchar_t*>(text);
        item.lParam = reinterpret_cast<LPARAM>(&told);
        ListView_InsertItem(list, &item);
    }
    const int* Kept(int place) const
    {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = place;
        ListView_GetItem(list, &item);
        return reinterpret_cast<const int*>(item.lParam);
    }

    HWND list;
    int books = 0;

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message != WM_NOTIFY) return DefWindowProcW(window, message, wParam, lParam);
        auto* const self = reinterpret_cast<FrameworkParent*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        const auto& notice = *reinterpret_cast<const NMLISTVIEW*>(lParam);
        const UINT code = notice.hdr.code;
        self->books += code == LVN_INSERTITEM ? 1 : code == LVN_DELETEITEM ? -1 : 0;
        const bool isOfRow =
            code == LVN_INSERTITEM || code == LVN_DELETEITEM || code == LVN_ITEMCHANGING || code == LVN_ITEMCHANGED;
        if (isOfRow && notice.lParam != 0) ++*reinterpret_cast<int*>(notice.lParam);
        return 0;
    }

    HWND m_window;
};

/// A list handed over as a window's handle, as the host reaches it through the control.
class ListObjects : public testing::Test {
protected:
    ListObjects()
    {
        ListView_SetExtendedListViewStyle(window.window, LVS_EX_CHECKBOXES);
        control.Set(L"ReqListView", window.window);
        list = control.Get(L"ReqListView");
        items = list.Get(L"ListItems");
        columns = list.Get(L"ColumnHeaders");
    }
    Value Add(const wchar_t* text, const Value& key = Value::Missing(), const Value& index = Value::Missing())
    {
        return items.Call(L"Add", {index, key, text});
    }
    /// The item texts, as For Each meets them.
    std::wstring Rows() const
    {
        std::wstring texts;
        for (const Value& item : items.Each())
            texts += (texts.empty() ? L"" : L" ") + item.Get(L"Text").Text();
        return texts;
    }
    /// Writes a sub-item, through the interface itself.
    static void PutSubItem(const Value& item, short index, const wchar_t* text)
    {
        const Value value(text);
        EXPECT_EQ(ComPtr(item.Object()).As<::IListItem>()->put_SubItems(index, V_BSTR(&value.Raw())), S_OK);
    }

    TestReporter reports;
    ListViewWindow window{WS_VISIBLE};
    Value control = MakeControl();
    Value list, items, columns;
};

TEST_F(ListObjects, OneListHasOneObject)
{
    EXPECT_TRUE(list.Is(control.Get(L"ReqListView")));
    EXPECT_TRUE(items.Is(list.Get(L"ListItems")));
    EXPECT_TRUE(columns.Is(list.Get(L"ColumnHeaders")));
    control.Set(L"ReqListView", list);
    EXPECT_TRUE(list.Is(control.Get(L"ReqListView")));
    EXPECT_EQ(WindowOf(list), window.window);
    const Value other = MakeControl();
    other.Set(L"ReqListView", list);
    EXPECT_TRUE(list.Is(other.Get(L"ReqListView")));
}

TEST_F(ListObjects, OnlyListsAreTaken)
{
    const Value tree = control.Get(L"TreeView");
    const Value beyond(Value(window.window).Number() + (1LL << 32));
    for (const Value& wrong : {Value(L"list"), Value(true), Value(tree.Get(L"hWnd")), Value(1.5), beyond, tree}) {
        EXPECT_EQ(ErrorOf([&] { control.Set(L"ReqListView", wrong); }), kTypeMismatch);
    }
    EXPECT_TRUE(list.Is(control.Get(L"ReqListView")));
    EXPECT_TRUE(MakeControl().Get(L"ReqListView").IsNothing());
}

TEST_F(ListObjects, ItemsAreFoundByNumberAndByKey)
{
    const Value fig = Add(L"fig", L"f");
    Add(L"apple", L"a", 1);
    EXPECT_TRUE(items.Get(L"Item", {2}).Is(fig));
    EXPECT_TRUE(items.Get(L"Item", {L"f"}).Is(fig));
    EXPECT_EQ(fig.Get(L"Index").Number(), 2);
    EXPECT_EQ(fig.Get(L"Key").Text(), L"f");
    EXPECT_EQ(items.Get(L"Count").Number(), 2);
    EXPECT_EQ(ErrorOf([&] { items.Get(L"Item", {3}); }), kIndexOutOfBounds);
    EXPECT_EQ(ErrorOf([&] { items.Get(L"Item", {L"x"}); }), kElementNotFound);
    EXPECT_EQ(ErrorOf([&] { items.Get(L"Item", {list}); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([&] { Add(L"x", L"f"); }), kKeyNotUnique);
    list.Put(L"SortOrder", 1);
    list.Put(L"Sorted", true);
    EXPECT_EQ(Rows(), L"fig apple");
    EXPECT_TRUE(items.Get(L"Item", {1}).Is(fig));
    EXPECT_EQ(ErrorOf([&] { list.Put(L"SortOrder", 2); }), kInvalidValue);
    EXPECT_EQ(ErrorOf([&] { list.Put(L"SortKey", -1); }), kInvalidValue);
    list.Put(L"SortOrder", 0);
    EXPECT_EQ(Rows(), L"apple fig");
}

TEST_F(ListObjects, ARowsDataAreItsFrameworksOwn)
{
    FrameworkParent framework;
    const Value other = MakeControl();
    other.Set(L"ReqListView", framework.list);
    const Value bound = other.Get(L"ReqListView");
    const Value rows = bound.Get(L"ListItems");
    const auto add = [&](const wchar_t* text) { return rows.Call(L"Add", {Value::Missing(), Value::Missing(), text}); };
    int fig = 0;
    int pear = 0;
    framework.Add(L"fig", fig);
    framework.Add(L"pear", pear);
    const Value figItem = rows.Get(L"Item", {1});
    const Value zebra = add(L"zebra");
    const Value apple = add(L"apple");
    EXPECT_EQ(framework.books, 4);
    for (const int descending : {1, 0}) {
        bound.Put(L"SortOrder", descending);
        bound.Put(L"Sorted", true);
        EXPECT_EQ(apple.Get(L"Index").Number(), descending ? 4 : 1);
        EXPECT_EQ(framework.Kept(figItem.Get(L"Index").Number() - 1), &fig);
        EXPECT_EQ(framework.Kept(zebra.Get(L"Index").Number() - 1), nullptr);
    }
    rows.Call(L"Remove", {1});
    bound.Put(L"SortOrder", 1);
    EXPECT_EQ(zebra.Get(L"Index").Number(), 1);
    EXPECT_EQ(framework.Kept(1), &pear);
    EXPECT_EQ(framework.books, 3);
    figItem.Put(L"Text", L"date");
    EXPECT_GT(fig, 0);
    rows.Call(L"Clear");
    EXPECT_EQ(framework.books, 0);
}

TEST_F(ListObjects, WhatIsGoneSaysSo)
{
    const Value fig = Add(L"fig");
    const Value apple = Add(L"apple");
    const Value column = columns.Get(L"Item", {1});
    items.Call(L"Remove", {1});
    EXPECT_EQ(apple.Get(L"Index").Number(), 1);
    const std::function<void()> ofTheRow[] = {[&] { fig.Get(L"Text"); }, [&] { fig.Put(L"Tag", 1); },
                                              [&] { list.Set(L"SelectedItem", fig); }};
    for (const auto& use : ofTheRow)
        EXPECT_EQ(ErrorOf(use), kGone) << &use - ofTheRow;
    EXPECT_EQ(ErrorOf([&] { items.Call(L"Remove", {2}); }), kIndexOutOfBounds);
    DestroyWindow(window.window);
    const std::function<void()> ofTheList[] = {
        [&] { list.Get(L"hWnd"); },   [&] { list.Get(L"Visible"); },
        [&] { list.Get(L"View"); },   [&] { list.Get(L"SelectedItem"); },
        [&] { list.Get(L"Font"); },   [&] { list.Call(L"Refresh"); },
        [&] { items.Get(L"Count"); }, [&] { Add(L"x"); },
        [&] { apple.Get(L"Text"); },  [&] { column.Get(L"Width"); },
    };
    for (const auto& use : ofTheList)
        EXPECT_EQ(ErrorOf(use), kListGone) << &use - ofTheList;
    reports.Take();
    EXPECT_EQ(ErrorOf([&] { control.Call(L"AssignSysIL"); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.AssignSysIL 398");
}

TEST_F(ListObjects, OutliveTheControlAndForEachBearsRemovalOnTheWay)
{
    control = Value();
    for (const wchar_t* text : {L"a", L"b", L"c", L"d"})
        Add(text);
    const ComPtr<IEnumVARIANT> each = items.Enumerator();
    std::wstring met;
    for (Value item; each->Next(1, &item.Raw(), nullptr) == S_OK; item = Value()) {
        met += item.Get(L"Text").Text();
        if (met == L"b" || met == L"ab") items.Call(L"Remove", {item.Get(L"Index")});
    }
    EXPECT_EQ(met, L"abcd");
    EXPECT_EQ(each->Reset(), S_OK);
    EXPECT_EQ(each->Skip(2), S_OK);
    ComPtr<IEnumVARIANT> copy;
    ASSERT_EQ(each->Clone(copy.Put()), S_OK);
    Value next;
    ASSERT_EQ(copy->Next(1, &next.Raw(), nullptr), S_OK);
    EXPECT_EQ(next.Get(L"Text").Text(), L"d");
    EXPECT_EQ(copy->Skip(1), S_FALSE);
}

TEST_F(ListObjects, AnItemsMarksAreThoseOfItsRow)
{
    const Value fig = items.Call(L"Add", {Value::Missing(), Value::Missing(), L"fig", Value::Missing(), 4});
    EXPECT_EQ(fig.Get(L"SmallIcon").Number(), 4);
    fig.Put(L"Icon", 2);
    LVITEMW record{};
    record.mask = LVIF_IMAGE;
    SendMessageW(window.window, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    EXPECT_EQ(record.iImage, 1);
    EXPECT_EQ(ErrorOf([&] { fig.Put(L"SmallIcon", L"key"); }), kElementNotFound);
    EXPECT_FALSE(fig.Get(L"Checked").Flag());
    fig.Put(L"Checked", true);
    EXPECT_TRUE(ListView_GetCheckState(window.window, 0));
    fig.Put(L"Ghosted", true);
    EXPECT_TRUE(fig.Get(L"Ghosted").Flag());
    fig.Put(L"Tag", L"kept");
    EXPECT_EQ(fig.Get(L"Tag").Text(), L"kept");
    fig.Put(L"Text", L"plum");
    EXPECT_EQ(Rows(), L"plum");
    EXPECT_EQ(ErrorOf([&] { fig.Get(L"SubItems", {0}); }), kIndexOutOfBounds);
    EXPECT_EQ(ErrorOf([&] { fig.Get(L"SubItems", {16}); }), kIndexOutOfBounds);
}

TEST_F(ListObjects, TheSelectionIsOneItemOrNothing)
{
    const Value fig = Add(L"fig");
    const Value apple = Add(L"apple");
    EXPECT_TRUE(list.Get(L"SelectedItem").IsNothing());
    apple.Put(L"Selected", true);
    list.Set(L"SelectedItem", fig);
    EXPECT_TRUE(list.Get(L"SelectedItem").Is(fig));
    EXPECT_FALSE(apple.Get(L"Selected").Flag());
    list.Set(L"SelectedItem", Value::Nothing());
    EXPECT_TRUE(list.Get(L"SelectedItem").IsNothing());
    const ListViewWindow otherWindow;
    const Value other = MakeControl();
    other.Set(L"ReqListView", otherWindow.window);
    EXPECT_EQ(ErrorOf([&] { other.Get(L"ReqListView").Set(L"SelectedItem", fig); }), kElementNotFound);
}

TEST_F(ListObjects, FindItemLooksAtTextsSubItemsAndTags)
{
    const Value first = Add(L"Green apple");
    const Value second = Add(L"green fig");
    PutSubItem(second, 2, L"soft");
    first.Put(L"Tag", L"mark");
    EXPECT_TRUE(list.Call(L"FindItem", {L"GREEN FIG"}).Is(second));
    EXPECT_TRUE(list.Call(L"FindItem", {L"green"}).IsNothing());
    EXPECT_TRUE(list.Call(L"FindItem", {L"green", 0, 1, 1}).Is(first));
    EXPECT_TRUE(list.Call(L"FindItem", {L"green", 0, 2, 1}).Is(second));
    EXPECT_TRUE(list.Call(L"FindItem", {L"soft", 1}).Is(second));
    EXPECT_TRUE(list.Call(L"FindItem", {L"mark", 2}).Is(first));
    EXPECT_EQ(ErrorOf([&] { list.Call(L"FindItem", {L"x", 3}); }), kInvalidValue);
}

TEST_F(ListObjects, ColumnsAreAddedFoundAndRemoved)
{
    EXPECT_EQ(columns.Each().size(), 16u);
    const Value size = columns.Get(L"Item", {L"siz"});
    EXPECT_TRUE(size.Is(columns.Get(L"Item", {3})));
    EXPECT_EQ(size.Get(L"Alignment").Number(), 1);
    EXPECT_EQ(size.Get(L"Width").Number(), 1100);
    const Value extra = columns.Call(L"Add", {1, L"new", L"New", 700.5, 2});
    EXPECT_EQ(extra.Get(L"Text").Text(), L"New");
    EXPECT_EQ(size.Get(L"SubItemIndex").Number(), 3);
    columns.Call(L"Remove", {L"new"});
    EXPECT_EQ(ErrorOf([&] { extra.Get(L"Text"); }), kGone);
    EXPECT_EQ(ErrorOf([&] { columns.Get(L"Item", {17}); }), kIndexOutOfBounds);
    EXPECT_EQ(ErrorOf([&] { columns.Call(L"Add", {Value::Missing(), L"z", L"", -1}); }), kInvalidValue);
    size.Put(L"Position", 1);
    EXPECT_EQ(columns.Get(L"Item", {1}).Get(L"Position").Number(), 2);
}

TEST_F(ListObjects, TheListsFaceIsThatOfItsWindowForAsLongAsItIsBound)
{
    const auto shown = [&] { return SendMessageW(window.window, WM_GETFONT, 0, 0); };
    const LRESULT before = shown();
    control.Set(L"ReqListView", Value(static_cast<double>(Value(window.window).Number())));
    list = control.Get(L"ReqListView");
    EXPECT_EQ(WindowOf(list), window.window);
    EXPECT_EQ(list.Get(L"View").Number(), 3);
    list.Put(L"View", 0);
    EXPECT_EQ(GetWindowLongW(window.window, GWL_STYLE) & LVS_TYPEMASK, LVS_ICON);
    EXPECT_EQ(ErrorOf([&] { list.Put(L"View", 4); }), kInvalidValue);
    list.Put(L"Visible", false);
    EXPECT_FALSE(IsWindowVisible(window.window));
    EXPECT_FALSE(list.Get(L"Visible").Flag());
    Value font = control.Get(L"Font");
    font.Put(L"Size", 20);
    list.Set(L"Font", font);
    EXPECT_TRUE(list.Get(L"Font").Is(font));
    EXPECT_NE(shown(), before);
    list = items = columns = font = control = Value();
    EXPECT_EQ(shown(), before);
}

}  // namespace
}  // namespace sylvex::test
