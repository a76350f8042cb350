#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace sylvex::host {

/// Sizes on the screen that follow a font, and so the screen's resolution too.
class Metrics {
public:
    explicit Metrics(HFONT font);

    /// Pixels of a width in quarters of an average character.
    int X(int units) const { return MulDiv(m_charWidth, units, 4); }
    /// Pixels of a height in eighths of a line.
    int Y(int units) const { return MulDiv(m_lineHeight, units, 8); }
    /// Height of a row of edits, buttons and their labels.
    int RowHeight() const { return m_lineHeight + Y(5); }
    int LineHeight() const { return m_lineHeight; }
    /// Width of a text, with "&" taken as the mark of a mnemonic.
    int TextWidth(std::wstring_view text) const;

private:
    HFONT m_font;
    int m_charWidth;
    int m_lineHeight;
};

/// Where the user has put the bars: parts of the space that there is, from 0 to 1.
struct Divisions {
    double treeWidth = 0.36;
    double panesHeight = 0.76;
};

/// Lays out the form's child windows, which are found by their numbers.
class Layout {
public:
    Layout(HWND form, const Metrics& metrics) : m_form(form), m_metrics(metrics) {}

    /// Fills the form's client area.
    void Arrange();
    /// The bar's edge was dragged to a place in the form, in pixels; takes effect at the next Arrange().
    void MoveTreeEdge(int x);
    void MovePanesEdge(int y);
    /// Smallest client size in which nothing is cut off.
    SIZE Minimum() const;

private:
    class Moves;
    /// A window's place among wrapped ones.
    struct Piece {
        int id;
        int x;
        int row;
        int width;
    };
    RECT ClientArea() const;
    int ButtonWidth() const;
    int CheckWidth(int id) const;
    int LabelWidth(int id) const;
    void ArrangePath(Moves& moves, RECT row) const;
    void ArrangeFilters(Moves& moves, RECT row) const;
    /// Check boxes and buttons: in one row where they fit, otherwise in as many as they need.
    void ArrangeCommands(Moves& moves, RECT row) const;
    int CommandRows() const;
    std::vector<Piece> FlowCommands(int width) const;
    void ArrangePanes(Moves& moves, RECT area) const;
    void ArrangeLog(Moves& moves, RECT area) const;
    /// Area of the panes and the log, below the rows of settings.
    RECT LowerArea() const;
    int HeadingHeight() const { return m_metrics.LineHeight() + m_metrics.Y(2); }

    HWND m_form;
    const Metrics& m_metrics;
    Divisions m_divisions;
};

}  // namespace sylvex::host
