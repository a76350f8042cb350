#pragma once

#include <string>
#include <vector>

#include "platform/listwindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

/// A list-view window of the host in this process.
class Win32ListWindow : public ListWindow {
public:
    explicit Win32ListWindow(HWND window) : m_window(window) {}
    WindowHandle Handle() const override { return NumberOf(m_window); }
    int RowCount() override;
    int InsertRow(int row, const std::wstring& text, int image) override;
    void DeleteRow(int row) override;
    void ClearRows() override;
    std::wstring Cell(int row, int column) override;
    void SetCell(int row, int column, const std::wstring& text) override;
    std::optional<std::uint32_t> RowNumber(int row) override;
    void SetRowImage(int row, int image) override;
    int RowImage(int row) override;
    int SelectedRow() override;
    bool IsSelected(int row) override;
    void SelectRow(int row, bool selected) override;
    bool IsChecked(int row) override;
    void CheckRow(int row, bool checked) override;
    void EnsureVisible(int row) override;
    int ColumnCount() override;
    void InsertColumn(int column, const std::wstring& caption, int width, Alignment alignment) override;
    void DeleteColumn(int column) override;
    void SetColumn(int column, const std::wstring& caption, Alignment alignment) override;
    int ColumnWidth(int column) override;
    void SetColumnWidth(int column, int width) override;
    std::vector<int> Sort(int column, bool descending) override;
    bool Visible() override;
    void SetVisible(bool visible) override;
    void SetRedraw(bool redraw) override;
    void Refresh() override;
    int PixelsOf(double twips) override;

private:
    // Both raise 398 when the window is gone.
    void RequireWindow() const;
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    UINT State(int row, UINT mask) const;
    void SetState(int row, UINT state, UINT mask) const;
    bool NumbersRows(int row, LPARAM number) const;

    HWND m_window;
    std::optional<bool> m_numbersRows;
    bool m_hadFocus = false;  // when it was hidden
};

}  // namespace sylvex
