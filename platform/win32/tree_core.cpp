#include "platform/win32/tree_core.h"

#include "diagnostics/runtime_error.h"

namespace sylvex {

// One activation of the window's procedure; the outermost one destroys a window that had to wait for it.
class TreeCore::Frame {
public:
    explicit Frame(std::shared_ptr<TreeCore> core) : m_core(std::move(core)) { ++m_core->m_depth; }
    ~Frame()
    {
        if (--m_core->m_depth > 0) return;
        if (auto* const window = std::exchange(m_core->m_detached, nullptr)) DestroyWindow(window);
    }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

private:
    std::shared_ptr<TreeCore> m_core;
};

TreeCore::TreeCore(HWND parent, TreeWindowListener& listener) : m_parent(parent), m_listener(&listener) {}

std::shared_ptr<TreeCore> TreeCore::Create(HWND parent, TreeWindowListener& listener)
{
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    auto core = std::make_shared<TreeCore>(parent, listener);
    const auto reference = reinterpret_cast<DWORD_PTR>(core.get());
    auto* const window = CreateWindowExW(TreeFace::kExtendedStyle, WC_TREEVIEWW, nullptr, TreeFace::kStyle, 0, 0, 0, 0,
                                         parent, nullptr, nullptr, nullptr);
    if (!window) throw OutOfMemory();
    core->m_window = window;
    // Whatever the parent is, notifications come with wide texts.
    SendMessageW(window, TVM_SETUNICODEFORMAT, TRUE, 0);
    if (!SetWindowSubclass(window, &OnTreeMessage, 0, reference) ||
        !SetWindowSubclass(parent, &OnParentMessage, reference, reference)) {
        core->Close();
        throw OutOfMemory();
    }
    return core;
}

LRESULT TreeCore::Send(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_window) return 0;
    m_straight = message;
    return SendMessageW(m_window, message, wParam, lParam);
}

LRESULT TreeCore::Send(UINT message, WPARAM wParam, HTREEITEM item) { return Send(message, wParam, ParameterOf(item)); }

void TreeCore::Close() noexcept
{
    m_listener = nullptr;
    RemoveWindowSubclass(m_parent, &OnParentMessage, reinterpret_cast<DWORD_PTR>(this));
    if (m_depth > 0) {
        Detach();
    } else if (m_window) {
        DestroyWindow(m_window);
    }
}

void TreeCore::Detach() noexcept
{
    if (!m_window) return;
    m_detached = std::exchange(m_window, nullptr);
    ShowWindow(m_detached, SW_HIDE);
    SetParent(m_detached, HWND_MESSAGE);
}

LRESULT CALLBACK TreeCore::OnTreeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR core)
{
    const auto self = reinterpret_cast<TreeCore*>(core)->shared_from_this();
    const Frame frame(self);
    return self->OnMessage(window, message, wParam, lParam);
}

LRESULT TreeCore::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCDESTROY) return OnDestroyed(window, wParam, lParam);
    const bool straight = m_straight == message && message != 0;
    if (straight) m_straight = 0;
    if (!straight && m_listener && m_window) {
        if (const auto answer = Intercept(message, wParam, lParam)) return *answer;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> TreeCore::Intercept(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT: marks.BeforePaint(); return std::nullopt;
    case WM_SIZE: marks.Stale(); return std::nullopt;
    case WM_DESTROY: face.BeforeDestroy(); return std::nullopt;
    case WM_SETREDRAW: face.Freeze(wParam == 0); return 0;
    case WM_SETCURSOR: return face.OnSetCursor(lParam);
    case WM_THEMECHANGED: return face.OnThemeChanged(wParam, lParam);
    case TVM_EXPAND: return rows.Route(wParam, reinterpret_cast<HTREEITEM>(lParam));
    case TVM_EDITLABELA:
    case TVM_EDITLABELW: return edit.OnAsked(message, wParam, lParam);
    default: break;
    }
    if (message >= TV_FIRST && message < TV_FIRST + 0x100) return marks.OnItemMessage(message, wParam, lParam);
    return input.OnMessage(message, wParam, lParam);
}

LRESULT TreeCore::OnDestroyed(HWND window, WPARAM wParam, LPARAM lParam)
{
    m_window = nullptr;
    m_detached = nullptr;
    RemoveWindowSubclass(m_parent, &OnParentMessage, reinterpret_cast<DWORD_PTR>(this));
    RemoveWindowSubclass(window, &OnTreeMessage, 0);
    return DefSubclassProc(window, WM_NCDESTROY, wParam, lParam);
}

LRESULT CALLBACK TreeCore::OnParentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                           DWORD_PTR core)
{
    const auto self = reinterpret_cast<TreeCore*>(core)->shared_from_this();
    if (message == WM_NOTIFY && self->m_window) {
        auto& header = *reinterpret_cast<NMHDR*>(lParam);
        if (header.hwndFrom == self->m_window) {
            const Frame frame(self);
            if (const auto answer = self->OnNotify(header)) return *answer;
        }
    }
    // The children go with their parent: a tree whose code is running has to be taken out first.
    if (message == WM_DESTROY && self->m_depth > 0) self->Detach();
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, &OnParentMessage, core);
    return DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> TreeCore::OnNotify(NMHDR& header)
{
    auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
    switch (header.code) {
    case TVN_ITEMEXPANDINGW: return rows.OnExpanding(change);
    case TVN_ITEMEXPANDEDW: return rows.OnExpanded(change);
    case TVN_SELCHANGEDW: return rows.OnSelected(change);
    case TVN_DELETEITEMW: return rows.OnDeleted(change);
    case TVN_GETDISPINFOW: return rows.OnAsked(reinterpret_cast<NMTVDISPINFOW&>(header));
    case TVN_BEGINLABELEDITW: return edit.OnBegin(reinterpret_cast<NMTVDISPINFOW&>(header));
    case TVN_ENDLABELEDITW: return edit.OnEnd(reinterpret_cast<NMTVDISPINFOW&>(header));
    case NM_CLICK: return input.OnClick();
    default: return std::nullopt;
    }
}

}  // namespace sylvex
