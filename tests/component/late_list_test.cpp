// A list view of the host that is known by its members' names only.

#include <optional>
#include <set>

#include "com/type_info.h"
#include "tests/component/test_control.h"
#include "tests/component/test_reporter.h"
#include "tests/support/files_real.h"

namespace sylvex::test {
namespace {

const std::wstring kFolder = L"C:\\SylvexLateList";

/// What a host's objects were asked, in words.
struct Journal {
    std::wstring calls;
    int names = 0;  ///< how often the number of a name was asked for
    std::set<std::wstring> unknown;
    std::optional<short> columnPlace;  ///< what every column tells as its SubItemIndex
    bool denySelection = false;        ///< whether every item tells that it is not selected
    std::wstring Take() { return std::exchange(calls, {}); }
};

/// Passes every call by name on to an automation object of the component, whose own interfaces it hides; what it gives
/// out is wrapped likewise.
class HostObject final : public CountedObject<IDispatch> {
public:
    HostObject(Value inner, Journal& journal) : m_inner(std::move(inner)), m_journal(journal) {}
    static Value Wrap(const Value& inner, Journal& journal) { return Make<HostObject>(inner, journal).Get(); }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return m_inner.Object()->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override
    {
        return m_inner.Object()->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* members) override
    {
        ++m_journal.names;
        if (m_journal.unknown.count(*names) != 0) return DISP_E_UNKNOWNNAME;
        const HRESULT found = m_inner.Object()->GetIDsOfNames(id, names, count, locale, members);
        if (SUCCEEDED(found)) Known()[{TypeOf(), *members}] = *names;
        return found;
    }
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD kind, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* bad) override
    {
        Note(member, kind, *arguments);
        const HRESULT done = m_inner.Object()->Invoke(member, id, locale, kind, arguments, result, exception, bad);
        if (m_journal.columnPlace && Known()[{TypeOf(), member}] == L"SubItemIndex")
            V_I2(result) = *m_journal.columnPlace;
        if (m_journal.denySelection && Known()[{TypeOf(), member}] == L"Selected") V_BOOL(result) = VARIANT_FALSE;
        if (SUCCEEDED(done) && result && V_VT(result) == VT_DISPATCH && V_DISPATCH(result)) {
            const Value wrapped = Wrap(Value(*result), m_journal);
            VariantClear(result);
            VariantCopy(result, const_cast<VARIANT*>(&wrapped.Raw()));
        }
        return done;
    }

private:
    /// Names by class and number: numbers asked of one object are used for all of its class.
    static std::map<std::pair<std::wstring, DISPID>, std::wstring>& Known()
    {
        static std::map<std::pair<std::wstring, DISPID>, std::wstring> known;
        return known;
    }
    std::wstring TypeOf() const
    {
        ComPtr<ITypeInfo> info;
        m_inner.Object()->GetTypeInfo(0, 0, info.Put());
        return NameOf(*info);
    }
    void Note(DISPID member, WORD kind, const DISPPARAMS& arguments)
    {
        std::wstring line = Known()[{TypeOf(), member}];
        if ((kind & DISPATCH_PROPERTYPUT) != 0) line += L"=";
        for (UINT at = arguments.cArgs; at-- > 0;) {
            const Value argument(arguments.rgvarg[at]);
            const bool missing = V_VT(&argument.Raw()) == VT_ERROR;
            line += (at + 1 == arguments.cArgs ? L" " : L",") + (missing ? std::wstring() : argument.Text());
        }
        m_journal.calls += (m_journal.calls.empty() ? L"" : L"; ") + line;
    }

    Value m_inner;
    Journal& m_journal;
};

/// A control with a folder of two files on disk, ticked in a tree of two nodes made by hand, and a host's list object.
class LateList : public testing::Test {
protected:
    LateList()
    {
        for (const wchar_t* const name : {L"\\a.txt", L"\\b.txt"})
            WriteBytes(kFolder + name, "");
        // Another control makes the list's object out of a window.
        maker.Set(L"ReqListView", window.window);
        list = HostObject::Wrap(maker.Get(L"ReqListView"), journal);
        control.Put(L"FileFilter", L"*.txt");
        control.Call(L"Enumerate");
        const Value nodes = NodesOf(control);
        nodes.Call(L"Clear");
        folder = AddNode(nodes, L"SylvexLateList", AddNode(nodes, L"Disk (C:)"));
        for (const wchar_t* const name : {L"b.txt", L"a.txt"})
            AddNode(nodes, name, folder).Put(L"Checked", true);
    }
    ~LateList() override { RemoveBranch(kFolder); }
    Value Cell(int row, const wchar_t* key)
    {
        const Value inner = maker.Get(L"ReqListView");
        const Value item = inner.Get(L"ListItems").Get(L"Item", {row});
        const int index = inner.Get(L"ColumnHeaders").Get(L"Item", {key}).Get(L"SubItemIndex").Number();
        return index == 0 ? item.Get(L"Text") : item.Get(L"SubItems", {index});
    }

    TestReporter reports;
    Journal journal;
    ListViewWindow window;
    Value maker = MakeControl();
    Value control = MakeControl();
    Value list, folder;
};

TEST_F(LateList, BindingLaysOutTheColumnsByName)
{
    control.Set(L"ReqListView", list);
    const std::wstring calls = journal.Take();
    EXPECT_EQ(calls.find(L"hWnd; ListItems; Clear; ColumnHeaders; Clear; ColumnHeaders; Add ,nam,Name,3600,,; "), 0u)
        << calls;
    EXPECT_NE(calls.find(L"Add ,siz,Size,1100,1,; "), calls.npos);
    EXPECT_NE(calls.find(L"Add ,cmp2,,0,,; "), calls.npos);
    EXPECT_TRUE(calls.ends_with(L"Add ,tim2,,0,,; Visible= -1; Refresh")) << calls;
    EXPECT_TRUE(control.Get(L"ReqListView").Is(list));
}

TEST_F(LateList, RowsAreAddedAsAScriptWouldInTheOrderOfTheTree)
{
    control.Set(L"ReqListView", list);
    journal.Take();
    control.Call(L"BuildFileList", {folder, false});
    const std::wstring calls = journal.Take();
    const std::size_t first = calls.find(L"ListItems; hWnd; Add; Text= C:\\SylvexLateList\\b.txt; SubItems= 1,txt; ");
    const std::size_t second = calls.find(L"Add; Text= C:\\SylvexLateList\\a.txt; SubItems= 1,txt; SubItems= 2,0 b; ");
    ASSERT_NE(first, calls.npos) << calls;
    ASSERT_NE(second, calls.npos) << calls;
    EXPECT_LT(first, second);
    EXPECT_NE(calls.find(L"Item cmp2; Width= 0; "), calls.npos);
    EXPECT_TRUE(calls.ends_with(L"SortKey= 0; Sorted= -1; hWnd")) << calls;
    EXPECT_EQ(Cell(1, L"nam").Text(), L"C:\\SylvexLateList\\a.txt");
    EXPECT_EQ(Cell(1, L"siz2").Text(), L"0000000000");
    LVITEMW record{};
    record.mask = LVIF_IMAGE;
    SendMessageW(window.window, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&record));
    EXPECT_GE(record.iImage, 0);
}

TEST_F(LateList, ASelectedItemThatIsNotSelectedIsNotFollowed)
{
    control.Set(L"ReqListView", list);
    control.Call(L"BuildFileList", {folder, false});
    ListView_SetItemState(window.window, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    const Value tree = control.Get(L"TreeView");
    journal.denySelection = true;
    control.Call(L"SetNode");
    EXPECT_TRUE(tree.Get(L"SelectedItem").IsNothing());
    journal.denySelection = false;
    control.Call(L"SetNode");
    EXPECT_EQ(tree.Get(L"SelectedItem").Get(L"Text").Text(), L"a.txt");
}

TEST_F(LateList, NamesAreAskedForOncePerClass)
{
    control.Set(L"ReqListView", list);
    control.Call(L"BuildFileList", {folder, false});
    const int once = journal.names;
    control.Call(L"BuildFileList", {folder, false});
    EXPECT_EQ(journal.names, once);
    EXPECT_LT(once, 25);
}

TEST_F(LateList, WhatTheHostsObjectRaisesGoesToTheErrorTrap)
{
    control.Set(L"ReqListView", list);
    maker.Get(L"ReqListView").Get(L"ColumnHeaders").Call(L"Remove", {L"dos"});
    reports.Take();
    EXPECT_EQ(ErrorOf([&] { control.Call(L"BuildFileList", {folder, false}); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.LVIdx 35601; Sylvex.BuildFileList 65535");
    journal.columnPlace = short{-1};
    EXPECT_EQ(ErrorOf([&] { control.Call(L"BuildFileList", {folder, false}); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.LVIdx 35600; Sylvex.BuildFileList 65535");
}

TEST_F(LateList, AnObjectWithoutAFaceOfItsOwnIsShownByItsWindow)
{
    journal.unknown = {L"Visible", L"Refresh"};
    control.Set(L"ReqListView", list);
    EXPECT_TRUE(IsWindowVisible(window.window));
}

TEST_F(LateList, AnObjectThatIsNoListIsRefused)
{
    for (const wchar_t* const member : {L"ColumnHeaders", L"hWnd", L"Sorted"}) {
        journal.unknown = {member};
        EXPECT_EQ(ErrorOf([&] { control.Set(L"ReqListView", list); }), kTypeMismatch) << member;
    }
}

}  // namespace
}  // namespace sylvex::test
