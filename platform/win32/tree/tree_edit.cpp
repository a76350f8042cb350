#include "platform/win32/tree/tree_edit.h"

#include <optional>
#include <utility>

#include "platform/win32/tree/tree_core.h"

namespace sylvex {

void TreeEdit::Begin(HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    // Nobody edits what the host has hidden, nor may the focus go there.
    if (!IsWindowVisible(m_core.Window())) return;
    // The tree opens the edit only while it has the focus.
    SetFocus(m_core.Window());
    if (m_core.Window()) OnAsked(TVM_EDITLABELW, 0, ParameterOf(item));
}

LRESULT TreeEdit::OnAsked(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto keep = m_core.shared_from_this();
    if (!m_core.rows.Reveal(reinterpret_cast<HTREEITEM>(lParam))) return 0;
    const bool before = std::exchange(m_asked, true);
    const auto edit = m_core.Send(message, wParam, lParam);
    m_asked = before;
    return edit;
}

void TreeEdit::Type(const std::wstring& text)
{
    auto* const edit = reinterpret_cast<HWND>(m_core.Send(TVM_GETEDITCONTROL));
    if (!edit) return;
    SendMessageW(edit, WM_SETTEXT, 0, ParameterOf(text.c_str()));
    SendMessageW(edit, EM_SETSEL, 0, -1);
}

void TreeEdit::Cancel()
{
    if (m_core.Send(TVM_GETEDITCONTROL)) m_core.Send(TVM_ENDEDITLABELNOW, TRUE);
}

LRESULT TreeEdit::OnBegin(const NMTVDISPINFOW& notice)
{
    constexpr LRESULT kNoEditing = TRUE;
    if (!m_asked && (!m_automatic || m_core.input.SpoilsEditing())) return kNoEditing;
    const auto data = m_core.rows.Owned(notice.item.hItem, notice.item.lParam);
    bool allowed = false;
    const bool told = data && m_core.Tell([&](TreeWindowListener& l) { allowed = l.LabelEditing(*data); });
    if (!told || !allowed) return kNoEditing;
    m_open = true;
    return FALSE;
}

LRESULT TreeEdit::OnEnd(const NMTVDISPINFOW& notice)
{
    // Closing the edit takes its focus, which for the tree is one more end.
    if (!std::exchange(m_open, false)) return FALSE;
    std::optional<std::wstring> text;
    // A form that is hidden or destroyed takes the focus from the edit, which for the tree is an end like any other.
    // The tree itself counts as hidden while nothing repaints.
    const bool inSight = m_core.face.Visible() && IsWindowVisible(m_core.Parent());
    if (notice.item.pszText && inSight) text = notice.item.pszText;
    bool kept = false;
    const auto data = static_cast<ItemData>(notice.item.lParam);
    const bool told = m_core.Tell([&](TreeWindowListener& l) { kept = l.LabelEdited(data, text); });
    return told && kept && text;
}

}  // namespace sylvex
