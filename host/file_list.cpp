#include "host/file_list.h"

#include <commctrl.h>

#include <array>
#include <set>

#include "host/automation.h"

namespace sylvex::host {
namespace {

constexpr std::array kColumnKeys = {L"nam", L"ext", L"siz",  L"typ",  L"mod",  L"tim",  L"cre",  L"acc",
                                    L"atr", L"dos", L"cmp2", L"cre2", L"acc2", L"siz2", L"mod2", L"tim2"};

ComPtr<IListView> ListOf(_Sylvex& control)
{
    return ReadValue<IListView>(control, &_Sylvex::get_ReqListView, L"ReqListView");
}

ComPtr<IColumnHeader> ColumnOf(IListView& list, const VARIANT& index)
{
    const ComPtr<IColumnHeaders> columns = ReadObject(list, &IListView::get_ColumnHeaders, L"ColumnHeaders");
    ComPtr<IColumnHeader> column;
    Check(columns->get_Item(index, column.Put()), L"ColumnHeaders.Item");
    return column;
}

short SubItemOf(IListView& list, const wchar_t* key)
{
    short index = 0;
    Check(ColumnOf(list, Variant(std::wstring_view(key)).Get())->get_SubItemIndex(&index),
          L"ColumnHeader.SubItemIndex");
    return index;
}

std::wstring CellText(HWND list, int row, int subItem)
{
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        LVITEMW item{};
        item.iSubItem = subItem;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        const LRESULT length =
            SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        // A text that just fits may have been cut.
        if (static_cast<size_t>(length) + 1 < text.size()) return {item.pszText, static_cast<size_t>(length)};
        text.resize(text.size() * 2);
    }
}

/// Global memory that holds a text, until the clipboard takes it over.
class GlobalText {
public:
    explicit GlobalText(std::wstring_view text)
        : m_memory(GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t)))
    {
        if (auto* const target = m_memory ? static_cast<wchar_t*>(GlobalLock(m_memory)) : nullptr) {
            target[text.copy(target, text.size())] = L'\0';
            GlobalUnlock(m_memory);
        }
    }
    GlobalText(const GlobalText&) = delete;
    GlobalText& operator=(const GlobalText&) = delete;
    ~GlobalText()
    {
        if (m_memory) GlobalFree(m_memory);
    }
    bool GiveToClipboard()
    {
        if (!m_memory || !SetClipboardData(CF_UNICODETEXT, m_memory)) return false;
        m_memory = nullptr;
        return true;
    }

private:
    HGLOBAL m_memory;
};

}  // namespace

Table ReadList(HWND list, _Sylvex& control)
{
    const ComPtr<IListView> object = ListOf(control);
    Table table(1);
    std::array<short, kColumnKeys.size()> places{};
    for (size_t column = 0; column < kColumnKeys.size(); ++column) {
        table[0].emplace_back(kColumnKeys[column]);
        places[column] = SubItemOf(*object, kColumnKeys[column]);
    }
    const int rows = CountRows(list);
    for (int row = 0; row < rows; ++row) {
        auto& cells = table.emplace_back();
        for (const short place : places)
            cells.push_back(CellText(list, row, place));
    }
    return table;
}

bool SelectRow(HWND list, const std::wstring& text)
{
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_STRING;
    wanted.psz = text.c_str();
    const LRESULT row = SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted));
    if (row < 0) return false;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, static_cast<int>(row), LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    return true;
}

int CountRows(HWND list)
{
    return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

void SortByColumn(_Sylvex& control, int column)
{
    const ComPtr<IListView> list = ListOf(control);
    Variant index;
    V_VT(&index.Get()) = VT_I4;
    V_I4(&index.Get()) = column + 1;
    std::wstring key = ReadText(*ColumnOf(*list, index.Get()), &IColumnHeader::get_Key, L"ColumnHeader.Key");
    // Sizes and dates have a hidden column whose texts sort as their values do.
    if (std::set<std::wstring>{L"siz", L"mod", L"tim", L"cre", L"acc"}.contains(key)) key += L'2';

    const short wished = SubItemOf(*list, key.c_str());
    short current = -1;
    ListSortOrderConstants order = lvwAscending;
    Check(list->get_SortKey(&current), L"SortKey");
    Check(list->get_SortOrder(&order), L"SortOrder");
    const bool reverse = wished == current && order == lvwAscending;
    Check(list->put_SortKey(wished), L"SortKey");
    Check(list->put_SortOrder(reverse ? lvwDescending : lvwAscending), L"SortOrder");
    Check(list->put_Sorted(VARIANT_TRUE), L"Sorted");
}

bool CopyText(HWND owner, std::wstring_view text)
{
    if (!OpenClipboard(owner)) return false;
    EmptyClipboard();
    const bool copied = GlobalText(text).GiveToClipboard();
    CloseClipboard();
    return copied;
}

}  // namespace sylvex::host
