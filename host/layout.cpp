#include "host/layout.h"

#include <algorithm>
#include <cmath>

#include "host/resource.h"
#include "host/window.h"

namespace sylvex::host {
namespace {

constexpr int kButtons[] = {IDC_ENUMERATE, IDC_REFRESH, IDC_EXPORT, IDC_COPY};
constexpr int kChecks[] = {IDC_RECURSIVE, IDC_CHECKBOXES, IDC_DRAG_DROP};
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kWideGap = 10;
constexpr int kSmallestPane = 60;

int WidthOf(const RECT& rect)
{
    return rect.right - rect.left;
}
int HeightOf(const RECT& rect)
{
    return rect.bottom - rect.top;
}

int Part(double part, int whole, int least)
{
    const int most = std::max(least, whole - least);
    return std::clamp(static_cast<int>(std::lround(part * whole)), least, most);
}

}  // namespace

Metrics::Metrics(HFONT font) : m_font(font)
{
    const HDC dc = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, font);
    TEXTMETRICW metrics;
    GetTextMetricsW(dc, &metrics);
    // The average of the whole alphabet, as the system's dialogs take it.
    constexpr std::wstring_view kAlphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    SIZE size;
    GetTextExtentPoint32W(dc, kAlphabet.data(), static_cast<int>(kAlphabet.size()), &size);
    m_charWidth = (size.cx / 26 + 1) / 2;
    m_lineHeight = metrics.tmHeight;
    SelectObject(dc, before);
    ReleaseDC(nullptr, dc);
}

int Metrics::TextWidth(std::wstring_view text) const
{
    std::wstring shown(text);
    std::erase(shown, L'&');
    const HDC dc = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, m_font);
    SIZE size{};
    GetTextExtentPoint32W(dc, shown.data(), static_cast<int>(shown.size()), &size);
    SelectObject(dc, before);
    ReleaseDC(nullptr, dc);
    return size.cx;
}

/// Moves children in one go, which saves painting them twice.
class Layout::Moves {
public:
    explicit Moves(HWND form) : m_form(form), m_moves(BeginDeferWindowPos(22)) {}
    Moves(const Moves&) = delete;
    Moves& operator=(const Moves&) = delete;
    ~Moves() { EndDeferWindowPos(m_moves); }

    void Move(int id, int x, int y, int width, int height)
    {
        m_moves = DeferWindowPos(m_moves, GetDlgItem(m_form, id), nullptr, x, y, std::max(width, 0),
                                 std::max(height, 0), SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }

private:
    HWND m_form;
    HDWP m_moves;
};

void Layout::Arrange()
{
    const HWND status = GetDlgItem(m_form, IDC_STATUS);
    SendMessageW(status, WM_SIZE, 0, 0);
    RECT row = ClientArea();
    row.bottom = row.top + m_metrics.RowHeight();

    const int nextRow = m_metrics.RowHeight() + m_metrics.Y(kGap);
    Moves moves(m_form);
    ArrangePath(moves, row);
    OffsetRect(&row, 0, nextRow);
    ArrangeFilters(moves, row);
    OffsetRect(&row, 0, nextRow);
    ArrangeCommands(moves, row);

    RECT lower = LowerArea();
    RECT panes = lower;
    panes.bottom = lower.top + Part(m_divisions.panesHeight, HeightOf(lower), m_metrics.Y(kSmallestPane));
    ArrangePanes(moves, panes);
    lower.top = panes.bottom;
    ArrangeLog(moves, lower);
}

RECT Layout::ClientArea() const
{
    RECT area;
    GetClientRect(m_form, &area);
    RECT status;
    GetWindowRect(GetDlgItem(m_form, IDC_STATUS), &status);
    area.bottom -= HeightOf(status);
    InflateRect(&area, -m_metrics.X(kMargin), -m_metrics.Y(kMargin));
    area.bottom += m_metrics.Y(kMargin - kGap);
    return area;
}

RECT Layout::LowerArea() const
{
    RECT area = ClientArea();
    area.top += (2 + CommandRows()) * (m_metrics.RowHeight() + m_metrics.Y(kGap));
    return area;
}

int Layout::ButtonWidth() const
{
    int width = m_metrics.X(50);
    for (const int id : kButtons) {
        width = std::max(width, m_metrics.TextWidth(WindowText(GetDlgItem(m_form, id))) + m_metrics.X(12));
    }
    return width;
}

int Layout::CheckWidth(int id) const
{
    return m_metrics.TextWidth(WindowText(GetDlgItem(m_form, id))) + GetSystemMetrics(SM_CXMENUCHECK) + m_metrics.X(6);
}

int Layout::LabelWidth(int id) const
{
    return m_metrics.TextWidth(WindowText(GetDlgItem(m_form, id))) + m_metrics.X(kGap);
}

void Layout::ArrangePath(Moves& moves, RECT row) const
{
    const int label = LabelWidth(IDC_FILE_FILTER_LABEL);
    moves.Move(IDC_PATH_LABEL, row.left, row.top, label, HeightOf(row));
    moves.Move(IDC_PATH, row.left + label, row.top, WidthOf(row) - label, HeightOf(row));
}

void Layout::ArrangeFilters(Moves& moves, RECT row) const
{
    const int first = LabelWidth(IDC_FILE_FILTER_LABEL);
    const int second = LabelWidth(IDC_PATTERNS_LABEL);
    const int gap = m_metrics.X(kWideGap);
    const int height = HeightOf(row);
    const int edits = WidthOf(row) - first - second - gap;

    int x = row.left;
    moves.Move(IDC_FILE_FILTER_LABEL, x, row.top, first, height);
    x += first;
    moves.Move(IDC_FILE_FILTER, x, row.top, edits / 2, height);
    x += edits / 2 + gap;
    moves.Move(IDC_PATTERNS_LABEL, x, row.top, second, height);
    x += second;
    moves.Move(IDC_PATTERNS, x, row.top, row.right - x, height);
}

std::vector<Layout::Piece> Layout::FlowCommands(int width) const
{
    std::vector<Piece> pieces;
    int x = 0;
    int row = 0;
    const auto place = [&](int id, int wide, int gap) {
        if (x > 0 && x + wide > width) {
            x = 0;
            ++row;
        }
        pieces.push_back({id, x, row, wide});
        x += wide + m_metrics.X(gap);
    };
    for (const int id : kChecks)
        place(id, CheckWidth(id), kWideGap);
    const int buttons = static_cast<int>(std::size(kButtons)) * (ButtonWidth() + m_metrics.X(kGap));
    const bool together = buttons <= width && x + buttons > width;
    if (together) {
        x = 0;
        ++row;
    }
    for (const int id : kButtons)
        place(id, ButtonWidth(), kGap);
    return pieces;
}

int Layout::CommandRows() const
{
    return FlowCommands(WidthOf(ClientArea())).back().row + 1;
}

void Layout::ArrangeCommands(Moves& moves, RECT row) const
{
    const int nextRow = m_metrics.RowHeight() + m_metrics.Y(kGap);
    std::vector<Piece> pieces = FlowCommands(WidthOf(row));
    const Piece& last = pieces.back();
    // With room to spare the check boxes stand below the fields, and the buttons at the right.
    const int label = LabelWidth(IDC_FILE_FILTER_LABEL);
    const int spare = WidthOf(row) - (last.x + last.width);
    if (last.row == 0 && spare >= label) {
        for (std::size_t i = 0; i < pieces.size(); ++i)
            pieces[i].x += i < std::size(kChecks) ? label : spare;
    }
    for (const Piece& piece : pieces) {
        moves.Move(piece.id, row.left + piece.x, row.top + piece.row * nextRow, piece.width, HeightOf(row));
    }
}

void Layout::ArrangePanes(Moves& moves, RECT area) const
{
    const int bar = m_metrics.X(kGap);
    const int tree = Part(m_divisions.treeWidth, WidthOf(area), m_metrics.X(kSmallestPane));
    const int list = area.left + tree + bar;
    const int top = area.top + HeadingHeight();
    moves.Move(IDC_TREE_LABEL, area.left, area.top, tree, HeadingHeight());
    moves.Move(IDC_LIST_LABEL, list, area.top, area.right - list, HeadingHeight());
    moves.Move(IDC_TREE, area.left, top, tree, area.bottom - top);
    moves.Move(IDC_PANES_SPLITTER, area.left + tree, top, bar, area.bottom - top);
    moves.Move(IDC_LIST, list, top, area.right - list, area.bottom - top);
}

void Layout::ArrangeLog(Moves& moves, RECT area) const
{
    const int bar = m_metrics.Y(kGap);
    const int top = area.top + bar + HeadingHeight();
    moves.Move(IDC_LOG_SPLITTER, area.left, area.top, WidthOf(area), bar);
    moves.Move(IDC_LOG_LABEL, area.left, area.top + bar, WidthOf(area), HeadingHeight());
    moves.Move(IDC_LOG, area.left, top, WidthOf(area), area.bottom - top);
}

void Layout::MoveTreeEdge(int x)
{
    const RECT area = LowerArea();
    m_divisions.treeWidth = static_cast<double>(x - area.left) / std::max(WidthOf(area), 1);
}

void Layout::MovePanesEdge(int y)
{
    const RECT area = LowerArea();
    m_divisions.panesHeight = static_cast<double>(y - area.top) / std::max(HeightOf(area), 1);
}

SIZE Layout::Minimum() const
{
    int widest = 4 * ButtonWidth();
    for (const int id : kChecks)
        widest = std::max(widest, CheckWidth(id));
    return {widest + 2 * m_metrics.X(kMargin), m_metrics.Y(200)};
}

}  // namespace sylvex::host
