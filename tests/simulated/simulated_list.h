#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/listwindow.h"
#include "tests/simulated/call_gate.h"

namespace sylvex {

/// What the list window of a simulated host holds.
struct ListState {
    struct Row {
        std::vector<std::wstring> cells;
        int image = -1;
        std::uint32_t number = 0;
        bool selected = false;
        bool checked = false;
    };
    struct Column {
        std::wstring caption;
        int width = 0;
        Alignment alignment = Alignment::Left;
    };
    WindowHandle handle = 0;
    bool gone = false;
    bool visible = true;
    bool redraw = true;
    int focused = -1;
    bool numbersRows = true;  ///< whether the window knows its rows by numbers of its own
    std::uint32_t lastNumber = 0;
    int refreshes = 0;
    int exposedChanges = 0;  ///< what was written or sorted while the window was visible and redrew
    std::vector<Row> rows;
    std::vector<Column> columns;
    std::array<ImageListHandle, 2> imageLists{};
};

/// A list window; copies share it. Windows::WrapList makes one for the control, tests get one from
/// SimulatedWindows::NewList, whose calls do not count as calls of the platform.
class SimulatedList final : public ListWindow {
public:
    SimulatedList(std::shared_ptr<ListState> state, CallGate* gate) : m_state(std::move(state)), m_gate(gate) {}

    /// One line a row: the cells of the columns that are wider than 0, joined by " | "; "> " leads a selected row and
    /// "[x] " a checked one. A hidden or frozen window says so in a first line.
    std::string Render() const;
    /// One line: captions with widths, such as "Name(240) | Size(73,right)"; columns of width 0 included.
    std::string RenderColumns() const;
    const ListState& State() const { return *m_state; }
    /// From now on the window is one that does not number its rows.
    void HideNumbers() { m_state->numbersRows = false; }
    /// The raw messages that the control sends to list windows.
    std::intptr_t OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);

    WindowHandle Handle() const override { return m_state->handle; }
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
    ListState& Enter(const char* call) const;
    ListState& Change(const char* call) const;
    ListState::Row& Row(int row, const char* call) const;
    ListState::Column& Column(int column, const char* call) const;
    std::shared_ptr<ListState> m_state;
    CallGate* m_gate;
};

}  // namespace sylvex
