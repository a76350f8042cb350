#include "platform/win32/tree/tree_marks.h"

#include <cstring>

#include "platform/win32/tree/tree_core.h"

namespace sylvex {
namespace {

constexpr UINT kUnchecked = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT kChecked = INDEXTOSTATEIMAGEMASK(2);

}  // namespace

UINT TreeMarks::StateOf(bool checked, bool bold) const
{
    const UINT box = !m_core.face.HasBoxes() ? 0 : checked ? kChecked : kUnchecked;
    return box | (bold ? TVIS_BOLD : 0u);
}

void TreeMarks::Changed()
{
    m_stale = true;
    // The paint finds the rows that really differ. One pixel would do to ask for it, were it always in sight.
    constexpr RECT kSomewhere{0, 0, 1, 1};
    constexpr UINT kAsk = RDW_INVALIDATE | RDW_INTERNALPAINT;
    if (m_core.Window()) RedrawWindow(m_core.Window(), &kSomewhere, nullptr, kAsk);
}

void TreeMarks::BeforePaint()
{
    auto* const first = reinterpret_cast<HTREEITEM>(m_core.Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE));
    if (!m_stale && first == m_first) return;
    m_stale = false;
    m_first = first;
    Apply(Differing(first));
}

std::vector<TVITEMW> TreeMarks::Differing(HTREEITEM first)
{
    std::vector<TVITEMW> changes;
    // The last row may be in view by a part.
    auto left = m_core.Send(TVM_GETVISIBLECOUNT) + 1;
    for (auto* row = first; row && left > 0; --left) {
        if (const auto change = Difference(row)) changes.push_back(*change);
        if (left > 1) row = reinterpret_cast<HTREEITEM>(m_core.Send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, row));
    }
    return changes;
}

std::optional<TVITEMW> TreeMarks::Difference(HTREEITEM row)
{
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.hItem = row;
    item.stateMask = kStateMask;
    if (!m_core.Send(TVM_GETITEMW, 0, ParameterOf(&item))) return std::nullopt;
    RowMarks marks;
    const auto data = m_core.rows.Owned(row, item.lParam);
    if (!data || !m_core.Tell([&](TreeWindowListener& l) { marks = l.Marks(*data); })) return std::nullopt;
    const auto state = StateOf(marks.checked, marks.bold);
    const auto image = PictureOf(marks.image);
    item.mask = TVIF_HANDLE;
    if ((item.state & kStateMask) != state) item.mask |= TVIF_STATE;
    if (item.iImage != image) item.mask |= TVIF_IMAGE;
    if (item.iSelectedImage != image && m_core.rows.SelectedImageFollows(row)) item.mask |= TVIF_SELECTEDIMAGE;
    if (item.mask == TVIF_HANDLE) return std::nullopt;
    item.state = state;
    item.iImage = image;
    item.iSelectedImage = image;
    return item;
}

void TreeMarks::Apply(const std::vector<TVITEMW>& changes)
{
    // The tree measures and scrolls anew for each row that it is given; for many rows that is done once.
    constexpr std::size_t kMany = 4;
    auto* const window = m_core.Window();
    const bool many = changes.size() >= kMany && (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (many) DefWindowProcW(window, WM_SETREDRAW, FALSE, 0);
    for (const auto& change : changes)
        m_core.Send(TVM_SETITEMW, 0, ParameterOf(&change));
    if (!many) return;
    DefWindowProcW(window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window, nullptr, TRUE);
}

void TreeMarks::Update(HTREEITEM row)
{
    if (const auto change = Difference(row)) Apply({*change});
}

std::optional<LRESULT> TreeMarks::OnItemMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case TVM_GETITEMA:
        case TVM_GETITEMW:
            Update(reinterpret_cast<const TVITEMW*>(lParam)->hItem);
            break;
        case TVM_GETITEMSTATE:
            Update(reinterpret_cast<HTREEITEM>(wParam));
            break;
        case TVM_SETITEMA:
        case TVM_SETITEMW:
            return OnWrite(message, wParam, *reinterpret_cast<const TVITEMW*>(lParam));
        case TVM_INSERTITEMA:
        case TVM_INSERTITEMW:
        case TVM_DELETEITEM:
        case TVM_SORTCHILDREN:
        case TVM_SORTCHILDRENCB:
            m_stale = true;
            break;
        default:
            break;
    }
    return std::nullopt;
}

std::optional<LRESULT> TreeMarks::OnWrite(UINT message, WPARAM wParam, const TVITEMW& item)
{
    const bool ofMarks = (item.mask & TVIF_STATE) != 0 && (item.stateMask & kStateMask) != 0;
    if (!ofMarks && (item.mask & TVIF_PARAM) == 0) return std::nullopt;
    const auto keep = m_core.shared_from_this();
    const auto data = m_core.rows.DataOf(item.hItem);
    if (!data) return std::nullopt;
    // The marks and the data are the model's. Everything else of the message goes on; a longer form of the record keeps
    // its tail.
    constexpr UINT kLongForms = TVIF_INTEGRAL | 0x100 | 0x200;
    TVITEMEXW rest{};
    std::memcpy(&rest, &item, item.mask & kLongForms ? sizeof(TVITEMEXW) : sizeof(TVITEMW));
    rest.mask &= ~TVIF_PARAM;
    rest.stateMask &= ~kStateMask;
    const auto answer = m_core.Send(message, wParam, ParameterOf(&rest));
    const auto asked = ofMarks ? item.state & item.stateMask & TVIS_STATEIMAGEMASK : 0;
    if (!answer || !m_core.rows.DataOf(item.hItem) || (asked != kChecked && asked != kUnchecked)) return answer;
    m_core.Tell([&](TreeWindowListener& l) {
        if (l.Marks(*data).checked != (asked == kChecked)) l.CheckClicked(*data);
    });
    return answer;
}

}  // namespace sylvex
