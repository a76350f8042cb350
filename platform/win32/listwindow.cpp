#include "platform/win32/listwindow.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime_error.h"
#include "platform/win32/list_sort.h"

namespace sylvex {
namespace {

constexpr UINT kUncheckedState = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT kCheckedState = INDEXTOSTATEIMAGEMASK(2);

int FormatOf(Alignment alignment)
{
    switch (alignment) {
        case Alignment::Right:
            return LVCFMT_RIGHT;
        case Alignment::Center:
            return LVCFMT_CENTER;
        default:
            return LVCFMT_LEFT;
    }
}

LVCOLUMNW ColumnOf(const std::wstring& caption, Alignment alignment)
{
    LVCOLUMNW record{};
    record.mask = LVCF_FMT | LVCF_TEXT;
    record.fmt = FormatOf(alignment);
    record.pszText = Writable(caption.c_str());
    return record;
}

}  // namespace

void Win32ListWindow::RequireWindow() const
{
    if (!IsWindow(m_window)) throw ObjectGone(L"The list view");
}

LRESULT Win32ListWindow::Send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    const auto answer = SendMessageW(m_window, message, wParam, lParam);
    // A window that is gone answers 0, as others may.
    if (answer == 0) RequireWindow();
    return answer;
}

int Win32ListWindow::RowCount()
{
    return static_cast<int>(Send(LVM_GETITEMCOUNT));
}

int Win32ListWindow::InsertRow(int row, const std::wstring& text, int image)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = row;
    item.pszText = Writable(text.c_str());
    item.iImage = image < 0 ? I_IMAGENONE : image;
    const auto place = Send(LVM_INSERTITEMW, 0, ParameterOf(&item));
    if (place < 0) throw OutOfMemory();
    return static_cast<int>(place);
}

void Win32ListWindow::DeleteRow(int row)
{
    Send(LVM_DELETEITEM, row);
}

void Win32ListWindow::ClearRows()
{
    Send(LVM_DELETEALLITEMS);
}

std::wstring Win32ListWindow::Cell(int row, int column)
{
    LVITEMW item{};
    item.iSubItem = column;
    wchar_t shortText[MAX_PATH];
    item.pszText = shortText;
    item.cchTextMax = MAX_PATH;
    auto length = static_cast<std::size_t>(Send(LVM_GETITEMTEXTW, row, ParameterOf(&item)));
    if (length + 1 < MAX_PATH) return {item.pszText, length};
    std::wstring text(MAX_PATH, L'\0');
    // A full buffer may be a cut text.
    while (length + 1 >= text.size()) {
        text.resize(text.size() * 4);
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        length = static_cast<std::size_t>(Send(LVM_GETITEMTEXTW, row, ParameterOf(&item)));
    }
    return {item.pszText, length};
}

void Win32ListWindow::SetCell(int row, int column, const std::wstring& text)
{
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = Writable(text.c_str());
    Send(LVM_SETITEMTEXTW, row, ParameterOf(&item));
}

// Windows that know nothing of such numbers answer 0 to all: no two numbers can stand for the same row.
bool Win32ListWindow::NumbersRows(int row, LPARAM number) const
{
    const auto placeOf = [&](LPARAM asked) {
        return static_cast<int>(Send(LVM_MAPIDTOINDEX, static_cast<WPARAM>(static_cast<UINT>(asked))));
    };
    return placeOf(number) == row && placeOf(~number) != row;
}

std::optional<std::uint32_t> Win32ListWindow::RowNumber(int row)
{
    const auto number = Send(LVM_MAPINDEXTOID, row);
    if (!m_numbersRows) m_numbersRows = NumbersRows(row, number);
    return *m_numbersRows ? std::optional(static_cast<std::uint32_t>(number)) : std::nullopt;
}

void Win32ListWindow::SetRowImage(int row, int image)
{
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = image < 0 ? I_IMAGENONE : image;
    Send(LVM_SETITEMW, 0, ParameterOf(&item));
}

int Win32ListWindow::RowImage(int row)
{
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    if (!Send(LVM_GETITEMW, 0, ParameterOf(&item))) return -1;
    return std::max(item.iImage, -1);
}

int Win32ListWindow::SelectedRow()
{
    constexpr auto kBeforeFirst = static_cast<WPARAM>(-1);
    const auto focused = Send(LVM_GETNEXTITEM, kBeforeFirst, LVNI_SELECTED | LVNI_FOCUSED);
    return static_cast<int>(focused >= 0 ? focused : Send(LVM_GETNEXTITEM, kBeforeFirst, LVNI_SELECTED));
}

UINT Win32ListWindow::State(int row, UINT mask) const
{
    return static_cast<UINT>(Send(LVM_GETITEMSTATE, row, mask)) & mask;
}

void Win32ListWindow::SetState(int row, UINT state, UINT mask) const
{
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    Send(LVM_SETITEMSTATE, row, ParameterOf(&item));
}

bool Win32ListWindow::IsSelected(int row)
{
    return State(row, LVIS_SELECTED) != 0;
}

void Win32ListWindow::SelectRow(int row, bool selected)
{
    // The row that was selected last is the focused one; taking a selection away leaves the focus where it is.
    constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
    SetState(row, selected ? kBoth : 0, selected ? kBoth : LVIS_SELECTED);
}

bool Win32ListWindow::IsChecked(int row)
{
    return State(row, LVIS_STATEIMAGEMASK) == kCheckedState;
}

void Win32ListWindow::CheckRow(int row, bool checked)
{
    SetState(row, checked ? kCheckedState : kUncheckedState, LVIS_STATEIMAGEMASK);
}

void Win32ListWindow::EnsureVisible(int row)
{
    Send(LVM_ENSUREVISIBLE, row, FALSE);
}

int Win32ListWindow::ColumnCount()
{
    if (auto* const header = reinterpret_cast<HWND>(Send(LVM_GETHEADER))) {
        return std::max(Header_GetItemCount(header), 0);
    }
    // Outside report view there may be no header yet.
    LVCOLUMNW record{};
    record.mask = LVCF_WIDTH;
    int count = 0;
    while (Send(LVM_GETCOLUMNW, count, ParameterOf(&record)))
        ++count;
    return count;
}

void Win32ListWindow::InsertColumn(int column, const std::wstring& caption, int width, Alignment alignment)
{
    auto record = ColumnOf(caption, alignment);
    record.mask |= LVCF_WIDTH | LVCF_SUBITEM;
    record.cx = width;
    record.iSubItem = column;
    if (Send(LVM_INSERTCOLUMNW, column, ParameterOf(&record)) < 0) throw OutOfMemory();
}

void Win32ListWindow::DeleteColumn(int column)
{
    Send(LVM_DELETECOLUMN, column);
}

void Win32ListWindow::SetColumn(int column, const std::wstring& caption, Alignment alignment)
{
    const auto record = ColumnOf(caption, alignment);
    Send(LVM_SETCOLUMNW, column, ParameterOf(&record));
}

int Win32ListWindow::ColumnWidth(int column)
{
    return static_cast<int>(Send(LVM_GETCOLUMNWIDTH, column));
}

void Win32ListWindow::SetColumnWidth(int column, int width)
{
    Send(LVM_SETCOLUMNWIDTH, column, MAKELPARAM(static_cast<WORD>(width), 0));
}

std::vector<int> Win32ListWindow::Sort(int column, bool descending)
{
    return ListSort(*this, column, descending).Run();
}

bool Win32ListWindow::Visible()
{
    RequireWindow();
    return (GetWindowLongPtrW(m_window, GWL_STYLE) & WS_VISIBLE) != 0;
}

void Win32ListWindow::SetVisible(bool visible)
{
    RequireWindow();
    if (!visible) m_hadFocus = GetFocus() == m_window;
    ShowWindow(m_window, visible ? SW_SHOWNA : SW_HIDE);
    const auto* const focus = GetFocus();
    const bool free = focus == nullptr || focus == GetParent(m_window);
    if (visible && std::exchange(m_hadFocus, false) && free) SetFocus(m_window);
}

void Win32ListWindow::SetRedraw(bool redraw)
{
    Send(WM_SETREDRAW, redraw);
    if (redraw) InvalidateRect(m_window, nullptr, TRUE);
}

void Win32ListWindow::Refresh()
{
    RequireWindow();
    RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

int Win32ListWindow::PixelsOf(double twips)
{
    RequireWindow();
    auto* const context = GetDC(m_window);
    const auto dotsPerInch = GetDeviceCaps(context, LOGPIXELSX);
    ReleaseDC(m_window, context);
    constexpr double kTwipsPerInch = 1440;
    return static_cast<int>(std::lround(twips * dotsPerInch / kTwipsPerInch));
}

}  // namespace sylvex
