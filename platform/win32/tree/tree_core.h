#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/treewindow.h"
#include "platform/win32/handles.h"
#include "platform/win32/tree/tree_edit.h"
#include "platform/win32/tree/tree_face.h"
#include "platform/win32/tree/tree_input.h"
#include "platform/win32/tree/tree_marks.h"
#include "platform/win32/tree/tree_rows.h"
#include "platform/win32/tree/window_hook.h"

namespace sylvex {

/// A native tree window with its message procedures. The listener may destroy the tree, or a window that holds it,
/// out of any call: then nothing more is told, and the native window itself goes when its own code has returned.
class TreeCore : public std::enable_shared_from_this<TreeCore>, private WindowHook {
public:
    /// Makes the window; raises 7 when the platform cannot.
    static std::shared_ptr<TreeCore> Create(HWND parent, TreeWindowListener& listener);
    TreeCore(HWND parent, TreeWindowListener& listener);

    /// Null once the window is gone.
    HWND Window() const noexcept { return m_window; }
    HWND Parent() const noexcept { return m_parent; }
    /// Has the native tree itself do a message, past all hooks; 0 when the window is gone. The caller has to expect
    /// that the listener was called in between.
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// The same for an item.
    LRESULT Send(UINT message, WPARAM wParam, HTREEITEM item);
    /// Calls the listener; false when there is none left afterwards.
    template <typename Call>
    bool Tell(Call call)
    {
        if (!m_listener) return false;
        call(*m_listener);
        return m_listener && m_window;
    }
    /// False while native code runs in the window; then its rows are never freed.
    bool MayEmpty() noexcept
    {
        m_leavesRows = m_leavesRows || m_natives > 0;
        return !m_leavesRows;
    }
    /// Lets go of the listener and destroys the window, at once or as soon as no native code runs in it.
    void Close() noexcept;

    TreeRows rows{*this};
    TreeMarks marks{*this};
    TreeEdit edit{*this};
    TreeInput input{*this};
    TreeFace face{*this};

private:
    class Frame;
    std::optional<LRESULT> OnHooked(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnParentMessage(UINT message, LPARAM lParam);
    LRESULT OnTreeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> Intercept(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnItemMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT CallNative(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnDestroy(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnGone(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnNotify(NMHDR& header);
    void TakeOut() noexcept;

    HWND m_parent;
    HWND m_window = nullptr;
    HWND m_detached = nullptr;  // waits for the end of the native code that runs in it
    HWND m_emptied = nullptr;   // still exists, but has no rows any more
    TreeWindowListener* m_listener;
    WNDPROC m_native = nullptr;
    int m_depth = 0;
    int m_natives = 0;  // calls of the native procedure that are under way
    bool m_leavesRows = false;
};

}  // namespace sylvex
