#include "platform/win32/tree/tree_core.h"

#include "platform/runtime_error.h"
#include "platform/win32/readable.h"

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
    auto* const window = CreateWindowExW(TreeFace::kExtendedStyle, WC_TREEVIEWW, nullptr, TreeFace::kStyle, 0, 0, 0, 0,
                                         parent, nullptr, nullptr, nullptr);
    if (!window) throw OutOfMemory();
    core->m_window = window;
    core->m_native = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    // Whatever the parent is, notifications come with wide texts.
    core->Send(TVM_SETUNICODEFORMAT, TRUE);
    if (!Attach(window, *core) || !Attach(parent, *core)) {
        core->Close();
        throw OutOfMemory();
    }
    return core;
}

LRESULT TreeCore::Send(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_window) return 0;
    const Frame frame(shared_from_this());
    return CallNative(m_window, message, wParam, lParam);
}

LRESULT TreeCore::CallNative(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto orders = rows.Orders();
    ++m_natives;
    const auto answer = CallWindowProcW(m_native, window, message, wParam, lParam);
    --m_natives;
    rows.Obey(orders);
    return answer;
}

LRESULT TreeCore::Send(UINT message, WPARAM wParam, HTREEITEM item)
{
    return Send(message, wParam, ParameterOf(item));
}

void TreeCore::Close() noexcept
{
    m_listener = nullptr;
    WindowHook::Detach(m_parent, *this);
    if (m_depth > 0) {
        TakeOut();
    } else if (m_window) {
        DestroyWindow(m_window);
    } else if (m_emptied) {
        DestroyWindow(m_emptied);
    }
}

void TreeCore::TakeOut() noexcept
{
    if (!m_window) return;
    m_detached = std::exchange(m_window, nullptr);
    ShowWindow(m_detached, SW_HIDE);
    SetParent(m_detached, HWND_MESSAGE);
}

std::optional<LRESULT> TreeCore::OnHooked(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto keep = shared_from_this();
    if (window == m_parent) return OnParentMessage(message, lParam);
    return OnTreeMessage(window, message, wParam, lParam);
}

LRESULT TreeCore::OnTreeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Frame frame(shared_from_this());
    if (message == WM_NCDESTROY) return OnGone(window, message, wParam, lParam);
    if (message == WM_DESTROY) return OnDestroy(window, message, wParam, lParam);
    if (m_listener && m_window) {
        if (const auto answer = Intercept(message, wParam, lParam)) return *answer;
    }
    return CallNative(window, message, wParam, lParam);
}

LRESULT TreeCore::OnDestroy(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    edit.Forget();
    if (m_natives == 0 && m_listener && m_window) m_listener->Destroying();
    face.BeforeDestroy(window);
    // A host that destroys the window out of one of its calls: the native code goes on when that returns, and what it
    // goes on with must still be there. Its memory stays behind.
    const auto result = m_natives > 0 || m_leavesRows ? 0 : CallNative(window, message, wParam, lParam);
    // It has let go of its rows. A container may have saved the window above it in this very moment, which then
    // outlives its form, and this one with it.
    m_emptied = window;
    m_window = nullptr;
    return result;
}

LRESULT TreeCore::OnGone(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    m_window = nullptr;
    m_detached = nullptr;
    m_emptied = nullptr;
    WindowHook::Detach(m_parent, *this);
    WindowHook::Detach(window, *this);
    return CallWindowProcW(m_natives > 0 || m_leavesRows ? DefWindowProcW : m_native, window, message, wParam, lParam);
}

std::optional<LRESULT> TreeCore::Intercept(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_PAINT || message == WM_PRINTCLIENT) marks.BeforePaint();
    if (message == WM_SIZE || message == TVM_SETITEMHEIGHT) marks.Stale();
    // Anybody may send it with any number, and the native tree believes it.
    if (message == WM_NOTIFY && !ReadFrom(reinterpret_cast<const NMHDR*>(lParam))) return 0;
    if (message == WM_SETCURSOR) return face.OnSetCursor(lParam);
    if (message == WM_THEMECHANGED) return face.OnThemeChanged(wParam, lParam);
    if (message == WM_SETREDRAW) {
        face.Freeze(wParam == 0);
        return 0;
    }
    const bool ofItems = message >= TV_FIRST && message < TV_FIRST + 0x100;
    return ofItems ? OnItemMessage(message, wParam, lParam) : input.OnMessage(message, wParam, lParam);
}

std::optional<LRESULT> TreeCore::OnItemMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case TVM_EXPAND:
            return rows.Route(wParam, reinterpret_cast<HTREEITEM>(lParam));
        case TVM_SELECTITEM:
            if ((wParam & TVGN_CARET) != TVGN_CARET && wParam != TVGN_FIRSTVISIBLE) return std::nullopt;
            [[fallthrough]];
        case TVM_ENSUREVISIBLE:
            if (rows.Reveal(reinterpret_cast<HTREEITEM>(lParam))) return std::nullopt;
            return FALSE;
        case TVM_EDITLABELA:
        case TVM_EDITLABELW:
            return edit.OnAsked(message, wParam, lParam);
        default:
            return marks.OnItemMessage(message, wParam, lParam);
    }
}

std::optional<LRESULT> TreeCore::OnParentMessage(UINT message, LPARAM lParam)
{
    if (message == WM_NOTIFY && m_window) {
        auto* const header = reinterpret_cast<NMHDR*>(lParam);
        const Frame frame(shared_from_this());
        const auto read = ReadFrom(header);
        if (read && read->hwndFrom == m_window) return OnNotify(*header);
    }
    if (message == WM_DESTROY) {
        edit.Forget();
        // The children go with their parent: a tree whose code is running has to be taken out first.
        if (m_depth > 0) TakeOut();
    }
    return std::nullopt;
}

std::optional<LRESULT> TreeCore::OnNotify(NMHDR& header)
{
    auto& change = reinterpret_cast<NMTREEVIEWW&>(header);
    switch (header.code) {
        case TVN_ITEMEXPANDINGW:
            return rows.OnExpanding(change);
        case TVN_ITEMEXPANDEDW:
            return rows.OnExpanded();
        case TVN_SELCHANGEDW:
            return rows.OnSelected(change);
        case TVN_DELETEITEMW:
            return rows.OnDeleted(change);
        case TVN_GETDISPINFOW:
            return rows.OnAsked(reinterpret_cast<NMTVDISPINFOW&>(header));
        case TVN_BEGINLABELEDITW:
            return edit.OnBegin(reinterpret_cast<NMTVDISPINFOW&>(header));
        case TVN_ENDLABELEDITW:
            return edit.OnEnd(reinterpret_cast<NMTVDISPINFOW&>(header));
        case NM_CLICK:
            return input.OnClick();
        default:
            return std::nullopt;
    }
}

}  // namespace sylvex
