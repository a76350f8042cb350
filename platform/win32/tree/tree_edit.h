#pragma once

#include <string>

#include "platform/treewindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

class TreeCore;

/// Editing of labels in place.
class TreeEdit {
public:
    explicit TreeEdit(TreeCore& core) : m_core(core) {}
    /// Whether a click or F2 starts editing.
    void SetAutomatic(bool automatic) noexcept { m_automatic = automatic; }
    bool Automatic() const noexcept { return m_automatic; }
    void Begin(HTREEITEM item);
    void Type(const std::wstring& text);
    void Cancel();
    /// The window goes: an edit that is open ends without a word.
    void Forget() noexcept { m_open = false; }

    LRESULT OnAsked(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnBegin(const NMTVDISPINFOW& notice);
    LRESULT OnEnd(const NMTVDISPINFOW& notice);

private:
    TreeCore& m_core;
    bool m_automatic = true;
    bool m_asked = false;  // a program asks for it, not the tree by itself
    bool m_open = false;
};

}  // namespace sylvex
