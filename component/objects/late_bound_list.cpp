#include "component/objects/late_bound_list.h"

#include "component/border/object_ref.h"
#include "component/border/values.h"
#include "component/objects/list_objects.h"
#include "platform/runtime_error.h"
#include "platform/win32/listwindow.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <limits>

namespace sylvex {

namespace {

// Places of the names that each kind of object is called by.
namespace list {
enum Name { ListItems, ColumnHeaders, SelectedItem, SortKey, Sorted, Visible, Refresh, hWnd };
}
namespace items {
enum Name { Add, Clear, Count, Item };
}
namespace item {
enum Name { Text, SubItems, Index, Selected };
}
namespace columns {
enum Name { Add, Clear, Item };
}
namespace column {
enum Name { SubItemIndex, Width };
}

VARIANT Short(int value)
{
    VARIANT number{};
    V_VT(&number) = VT_I2;
    V_I2(&number) = static_cast<SHORT>(value);
    return number;
}

VARIANT Single(double value)
{
    VARIANT number{};
    V_VT(&number) = VT_R4;
    V_R4(&number) = static_cast<float>(value);
    return number;
}

/// A window's handle in a number of any type; nothing when the value is no number, or none that 32 bits hold: more than
/// those a window's handle does not have, and it widens with its sign.
std::optional<WindowHandle> HandleIn(const VARIANT& value)
{
    constexpr std::array kNumbers{VT_I1,   VT_UI1, VT_I2,  VT_UI2, VT_I4, VT_UI4, VT_INT,
                                  VT_UINT, VT_I8,  VT_UI8, VT_R4,  VT_R8, VT_CY,  VT_DECIMAL};
    if (std::find(kNumbers.begin(), kNumbers.end(), V_VT(&value)) == kNumbers.end()) return std::nullopt;
    Variant number(value);
    if (V_VT(&value) == VT_UI8) {
        V_VT(&number.Get()) = VT_I8;
    } else if (FAILED(number.ChangeType(VT_I8))) {
        return std::nullopt;
    }
    const LONGLONG wide = V_I8(&number.Get());
    if (wide < std::numeric_limits<LONG>::min() || wide > std::numeric_limits<ULONG>::max()) return std::nullopt;
    return static_cast<WindowHandle>(static_cast<INT_PTR>(static_cast<INT>(wide)));
}

}  // namespace

LateBoundListView::LateBoundListView(const ComPtr<IDispatch>& object)
    : m_list{L"ListItems", L"ColumnHeaders", L"SelectedItem", L"SortKey", L"Sorted", L"Visible", L"Refresh", L"hWnd"},
      m_items{L"Add", L"Clear", L"Count", L"Item"},
      m_item{L"Text", L"SubItems", L"Index", L"Selected"},
      m_columns{L"Add", L"Clear", L"Item"},
      m_column{L"SubItemIndex", L"Width"}
{
    m_list.TakeUp(object);
    for (const list::Name member : {list::ListItems, list::ColumnHeaders, list::hWnd, list::SortKey, list::Sorted})
        if (!m_list.Knows(member)) ThrowTypeMismatch();
}

LateCaller& LateBoundListView::Items()
{
    m_items.TakeUp(m_list.GetObject(list::ListItems));
    return m_items;
}

LateCaller& LateBoundListView::Columns()
{
    m_columns.TakeUp(m_list.GetObject(list::ColumnHeaders));
    return m_columns;
}

LateCaller& LateBoundListView::ColumnNamed(const std::wstring& key)
{
    const Variant name{std::wstring_view(key)};
    VARIANT index = name.Get();
    m_column.TakeUp(Columns().GetObject(columns::Item, {&index, 1}));
    return m_column;
}

WindowHandle LateBoundListView::hWnd()
{
    const Variant window = m_list.Get(list::hWnd);
    const std::optional<WindowHandle> handle = HandleIn(window.Get());
    if (!handle) ThrowTypeMismatch();
    // An object may do without a window; one whose window has been destroyed is gone.
    if (*handle != 0 && !IsWindow(WindowOf(*handle))) throw ObjectGone(L"The list view");
    return *handle;
}

std::shared_ptr<Frozen> LateBoundListView::Freeze()
{
    const WindowHandle window = hWnd();
    if (window == 0) return nullptr;
    return std::make_shared<Frozen>(std::make_shared<Win32ListWindow>(WindowOf(window)));
}

void LateBoundListView::SetVisible(bool visible)
{
    // The property may belong to the container's wrapping of the object, which not every host hands over.
    if (m_list.Knows(list::Visible)) return m_list.Put(list::Visible, Variant(visible).Get());
    ShowWindow(WindowOf(hWnd()), visible ? SW_SHOWNA : SW_HIDE);
}

void LateBoundListView::Refresh()
{
    if (m_list.Knows(list::Refresh)) {
        m_list.Call(list::Refresh);
    } else {
        RedrawWindow(WindowOf(hWnd()), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    }
}

void LateBoundListView::ClearItems()
{
    Items().Call(items::Clear);
}

void LateBoundListView::ClearColumns()
{
    Columns().Call(columns::Clear);
}

void LateBoundListView::AddColumn(const ListColumn& added)
{
    const Variant key{std::wstring_view(added.key)};
    const Variant caption{std::wstring_view(added.caption)};
    const VARIANT alignment =
        added.alignment == Alignment::Left ? MissingArgument() : Short(static_cast<int>(added.alignment));
    // All of them, because a script's own procedure takes no fewer: index, key, text, width, alignment, icon.
    std::array<VARIANT, 6> reversed{MissingArgument(),   alignment,
                                    Single(added.width), added.caption.empty() ? MissingArgument() : caption.Get(),
                                    key.Get(),           MissingArgument()};
    Columns().Call(columns::Add, reversed);
}

int LateBoundListView::SubItemIndex(const std::wstring& key)
{
    const Variant index = ColumnNamed(key).Get(column::SubItemIndex);
    return static_cast<int>(IndexOf(index.Get()));
}

void LateBoundListView::SetColumnWidth(const std::wstring& key, double twips)
{
    ColumnNamed(key).Put(column::Width, Single(twips));
}

void LateBoundListView::AddRows(RowSource& rows, bool)
{
    Items();
    m_window = hWnd();
    // Pictures go by messages with pointers, which mean nothing to another process.
    DWORD process = 0;
    GetWindowThreadProcessId(WindowOf(m_window), &process);
    if (process != GetCurrentProcessId()) m_window = 0;
    for (std::size_t place = 0; place < rows.Count(); ++place)
        AddRow(rows.Row(place));
}

/// Each call may run code of the host, which may add rows itself: the item is taken up anew before each.
LateCaller& LateBoundListView::ItemCaller(const ComPtr<IDispatch>& item)
{
    m_item.TakeUp(item);
    return m_item;
}

/// A new item of which nothing is said yet: without arguments, or with all five left out where the object is a script's
/// own and takes no fewer.
ComPtr<IDispatch> LateBoundListView::AddItem()
{
    std::array<VARIANT, 5> reversed;
    reversed.fill(MissingArgument());
    if (m_addTakesAll) return DispatchIn(m_items.Call(items::Add, reversed).Get());
    try {
        return DispatchIn(m_items.Call(items::Add).Get());
    } catch (const RuntimeError& error) {
        if (error.number != kWrongArguments) throw;
    }
    m_addTakesAll = true;
    return AddItem();
}

void LateBoundListView::AddRow(const ListRow& row)
{
    const ComPtr<IDispatch> added = AddItem();
    ItemCaller(added).Put(item::Text, Variant(std::wstring_view(row.cells.front())).Get());
    for (std::size_t place = 1; place < row.cells.size(); ++place) {
        if (row.cells[place].empty()) continue;
        const Variant text{std::wstring_view(row.cells[place])};
        ItemCaller(added).Put(item::SubItems, static_cast<long>(place), text.Get());
    }
    SetIcon(added, row.image);
}

/// The picture of the system's image list, which the object itself does not know.
void LateBoundListView::SetIcon(const ComPtr<IDispatch>& added, int image)
{
    if (m_window == 0) return;
    const Variant index = ItemCaller(added).Get(item::Index);
    LVITEMA record{};
    record.mask = LVIF_IMAGE;
    record.iItem = static_cast<int>(IndexOf(index.Get())) - 1;
    record.iImage = image;
    SendMessageA(WindowOf(m_window), LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&record));
}

void LateBoundListView::SortBy(int column)
{
    m_list.Put(list::SortKey, Short(column));
    m_list.Put(list::Sorted, Variant(true).Get());
}

int LateBoundListView::RowCount()
{
    return static_cast<int>(IndexOf(Items().Get(items::Count).Get()));
}

std::vector<std::wstring> LateBoundListView::Texts()
{
    std::vector<std::wstring> texts;
    const int count = RowCount();
    for (long place = 1; place <= count; ++place) {
        VARIANT index = Variant(place).Get();
        m_item.TakeUp(m_items.GetObject(items::Item, {&index, 1}));
        texts.push_back(TextOf(m_item.Get(item::Text).Get()));
    }
    return texts;
}

std::optional<std::wstring> LateBoundListView::SelectedCell(int column)
{
    const ComPtr<IDispatch> selected = m_list.GetObject(list::SelectedItem);
    if (!selected) return std::nullopt;
    m_item.TakeUp(selected);
    if (column == 0) return TextOf(m_item.Get(item::Text).Get());
    VARIANT index = Variant(static_cast<long>(column)).Get();
    return TextOf(m_item.Get(item::SubItems, {&index, 1}).Get());
}

bool LateBoundListView::IsSelectedItemSelected()
{
    const ComPtr<IDispatch> selected = m_list.GetObject(list::SelectedItem);
    if (!selected) return false;
    m_item.TakeUp(selected);
    // An object that does not tell has none but selected ones.
    return !m_item.Knows(item::Selected) || IndexOf(m_item.Get(item::Selected).Get()) != 0;
}

ObjectRef LateBoundListView::HostObject()
{
    return ReferTo(m_list.Object().Get());
}

std::shared_ptr<ListView> ListViewFromVariant(Platform& platform, const VARIANT& given)
{
    if (IsMissing(given)) return nullptr;
    const Variant value(given);
    if (value.Type() == VT_EMPTY || value.Type() == VT_NULL) return nullptr;
    if (const std::optional<WindowHandle> window = HandleIn(value.Get())) {
        std::unique_ptr<ListWindow> wrapped = platform.windows.WrapList(*window);
        if (!wrapped) ThrowTypeMismatch();
        return std::make_shared<WindowListView>(std::move(wrapped));
    }
    const ComPtr<IDispatch> object = DispatchIn(value.Get());
    if (!object) return nullptr;
    if (std::shared_ptr<WindowListView> own = ListBehind(object.Get())) return own;
    return std::make_shared<LateBoundListView>(object);
}

Variant VariantFromListView(const std::shared_ptr<ListView>& list)
{
    if (const auto* const host = dynamic_cast<LateBoundListView*>(list.get())) return Variant(host->Dispatch().Get());
    const auto own = std::dynamic_pointer_cast<WindowListView>(list);
    return own ? Variant(ListObject(own).Get()) : Variant(static_cast<IDispatch*>(nullptr));
}

}  // namespace sylvex
