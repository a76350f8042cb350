#include "platform/win32/tree/tree_face.h"

#include <olectl.h>

#include "platform/win32/com_object.h"
#include "platform/win32/tree/tree_core.h"

namespace sylvex {
namespace {

constexpr int kCustomPointer = 99;

// The platform's pointers by the numbers of the pointer setting, from 1.
const LPCWSTR kPointers[] = {IDC_ARROW,    IDC_CROSS,  IDC_IBEAM,       IDC_ARROW,  IDC_SIZEALL,
                             IDC_SIZENESW, IDC_SIZENS, IDC_SIZENWSE,    IDC_SIZEWE, IDC_UPARROW,
                             IDC_WAIT,     IDC_NO,     IDC_APPSTARTING, IDC_HELP,   IDC_SIZEALL};

// The settings that are a style of the window, and the value that sets it.
struct StyleSetting {
    TreeSetting setting;
    DWORD bits;
    bool whenOn;
};
constexpr StyleSetting kStyleSettings[] = {
    // The platform ignores the one style in a tree that has the other.
    {TreeSetting::FullRowSelect, TVS_HASLINES, false},      {TreeSetting::FullRowSelect, TVS_FULLROWSELECT, true},
    {TreeSetting::HideSelection, TVS_SHOWSELALWAYS, false}, {TreeSetting::HotTracking, TVS_TRACKSELECT, true},
    {TreeSetting::LineStyle, TVS_LINESATROOT, true},
};

HIMAGELIST ListOfBoxes(HWND tree) noexcept
{
    return reinterpret_cast<HIMAGELIST>(SendMessageW(tree, TVM_GETIMAGELIST, TVSIL_STATE, 0));
}

// The list of box pictures stays behind when boxes or tree go, and is its user's to destroy.
void DropBoxes(HWND tree, HIMAGELIST made) noexcept
{
    const UniqueImageList pictures(made);
    // A host may have given the tree a list of its own.
    if (ListOfBoxes(tree) == made) SendMessageW(tree, TVM_SETIMAGELIST, TVSIL_STATE, LPARAM{0});
}

}  // namespace

void TreeFace::Apply(TreeSetting setting, int value)
{
    const bool on = value != 0;
    for (const auto& style : kStyleSettings) {
        if (style.setting == setting) SetStyle(style.bits, on == style.whenOn);
    }
    if (setting == TreeSetting::Appearance) SetFrame(GWL_EXSTYLE, WS_EX_CLIENTEDGE, on);
    if (setting == TreeSetting::BorderStyle) SetFrame(GWL_STYLE, WS_BORDER, on);
    if (setting == TreeSetting::Checkboxes) SetBoxes(on);
    if (setting == TreeSetting::Enabled) EnableWindow(m_core.Window(), on);
    if (setting == TreeSetting::FullRowSelect) m_fullRow = on;
    if (setting == TreeSetting::LabelEdit) m_core.edit.SetAutomatic(!on);
    if (setting == TreeSetting::MousePointer) m_pointer = value;
}

void TreeFace::SetStyle(DWORD bits, bool on)
{
    const auto before = static_cast<DWORD>(GetWindowLongPtrW(m_core.Window(), GWL_STYLE));
    const auto after = on ? before | bits : before & ~bits;
    if (after == before) return;
    SetWindowLongPtrW(m_core.Window(), GWL_STYLE, static_cast<LONG_PTR>(after));
    InvalidateRect(m_core.Window(), nullptr, TRUE);
}

void TreeFace::SetFrame(int index, DWORD bit, bool on)
{
    auto* const window = m_core.Window();
    const auto before = static_cast<DWORD>(GetWindowLongPtrW(window, index));
    SetWindowLongPtrW(window, index, static_cast<LONG_PTR>(on ? before | bit : before & ~bit));
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void TreeFace::SetBoxes(bool on)
{
    if (on == m_boxes) return;
    m_boxes = on;
    // Only as a change of style does the tree make its list of box pictures.
    if (on) {
        SetStyle(TVS_CHECKBOXES, true);
        m_boxList = ListOfBoxes(m_core.Window());
    } else {
        SetStyle(TVS_CHECKBOXES, false);
        DropBoxes(m_core.Window(), std::exchange(m_boxList, nullptr));
        m_ownPictures = false;
    }
    m_core.marks.Changed();
    InvalidateRect(m_core.Window(), nullptr, TRUE);
}

void TreeFace::InstallCheckPictures()
{
    auto* const list = ListOfBoxes(m_core.Window());
    int width = 0;
    int height = 0;
    if (!m_boxes || !list || list != m_boxList || !ImageList_GetIconSize(list, &width, &height)) return;
    const auto install = [&](int place, const wchar_t* name) {
        const UniqueIcon icon(static_cast<HICON>(LoadImageW(OwnModule(), name, IMAGE_ICON, width, height, 0)));
        if (icon) ImageList_ReplaceIcon(list, place, icon.get());
    };
    install(1, L"Unchecked");
    install(2, L"Checked");
    m_ownPictures = true;
    InvalidateRect(m_core.Window(), nullptr, TRUE);
}

LRESULT TreeFace::OnThemeChanged(WPARAM wParam, LPARAM lParam)
{
    const auto answer = m_core.Send(WM_THEMECHANGED, wParam, lParam);
    if (!m_core.Window()) return answer;
    m_core.marks.Stale();
    // A new theme brings boxes of its own.
    if (m_boxes) m_boxList = ListOfBoxes(m_core.Window());
    if (m_ownPictures && m_core.Window()) InstallCheckPictures();
    return answer;
}

void TreeFace::BeforeDestroy(HWND window) noexcept
{
    if (m_boxes) DropBoxes(window, std::exchange(m_boxList, nullptr));
}

void TreeFace::SetFont(const ObjectRef& font)
{
    const ComPtr<IUnknown> object(UnknownOf(font));
    m_font = object ? object.As<IFont>() : ComPtr<IFont>();
    HFONT handle = nullptr;
    if (!m_font || FAILED(m_font->get_hFont(&handle))) handle = SystemFont();
    // Rows of another height are other rows in view.
    m_core.marks.Stale();
    m_core.Send(WM_SETFONT, reinterpret_cast<WPARAM>(handle), TRUE);
}

HFONT TreeFace::SystemFont()
{
    if (!m_systemFont) {
        LOGFONTW description{};
        SystemParametersInfoW(SPI_GETICONTITLELOGFONT, sizeof description, &description, 0);
        m_systemFont.reset(CreateFontIndirectW(&description));
    }
    return m_systemFont.get();
}

void TreeFace::SetMouseIcon(const ObjectRef& picture)
{
    const ComPtr<IUnknown> object(UnknownOf(picture));
    m_mouseIcon = object ? object.As<IPicture>() : ComPtr<IPicture>();
}

HCURSOR TreeFace::Pointer() const
{
    if (m_pointer == kCustomPointer && m_mouseIcon) {
        short kind = PICTYPE_NONE;
        OLE_HANDLE handle = 0;
        m_mouseIcon->get_Type(&kind);
        if (kind == PICTYPE_ICON && SUCCEEDED(m_mouseIcon->get_Handle(&handle))) {
            // Handles are handed out as 32 bits and widen with their sign.
            return reinterpret_cast<HCURSOR>(static_cast<INT_PTR>(static_cast<INT>(handle)));
        }
    }
    if (m_pointer < 1 || m_pointer > static_cast<int>(std::size(kPointers))) return nullptr;
    return LoadCursorW(nullptr, kPointers[m_pointer - 1]);
}

std::optional<LRESULT> TreeFace::OnSetCursor(LPARAM lParam) const
{
    if (LOWORD(lParam) != HTCLIENT) return std::nullopt;
    auto* const pointer = Pointer();
    if (!pointer) return std::nullopt;
    SetCursor(pointer);
    return TRUE;
}

bool TreeFace::Visible() const
{
    if (!m_repaints) return m_shown;
    return (GetWindowLongPtrW(m_core.Window(), GWL_STYLE) & WS_VISIBLE) != 0;
}

void TreeFace::SetVisible(bool visible)
{
    auto* const window = m_core.Window();
    if (visible == Visible()) return;
    const auto keep = m_core.shared_from_this();
    m_shown = visible;
    if (!visible) {
        auto* const focus = GetFocus();
        m_hadFocus = focus && (focus == window || IsChild(window, focus));
        // Without repainting the window counts as hidden, and hiding it would leave its picture on the screen.
        if (!m_repaints) DefWindowProcW(window, WM_SETREDRAW, TRUE, 0);
        ShowWindow(window, SW_HIDE);
        return;
    }
    m_core.marks.Stale();
    // While nothing repaints, showing waits for the end of that.
    if (m_repaints) ShowWindow(window, SW_SHOWNA);
    auto* const focus = GetFocus();
    const bool free = focus == nullptr || focus == m_core.Parent();
    if (std::exchange(m_hadFocus, false) && free && m_core.Window()) SetFocus(window);
}

void TreeFace::SetRedraw(bool redraw)
{
    m_redraw = redraw;
    UpdateRedraw();
}

void TreeFace::Freeze(bool frozen)
{
    m_frozen = frozen;
    UpdateRedraw();
}

void TreeFace::UpdateRedraw()
{
    const bool repaints = m_redraw && !m_frozen;
    auto* const window = m_core.Window();
    if (repaints == m_repaints) return;
    // The tree's own switch saves its measuring while rows are inserted, the general one also while they are changed.
    // The general one would show a hidden window.
    if (!repaints) {
        m_shown = Visible();
        m_repaints = false;
        m_core.Send(WM_SETREDRAW, FALSE);
        if (m_shown) DefWindowProcW(window, WM_SETREDRAW, FALSE, 0);
        return;
    }
    m_repaints = true;
    if (m_shown) DefWindowProcW(window, WM_SETREDRAW, TRUE, 0);
    m_core.Send(WM_SETREDRAW, TRUE);
    m_core.marks.Stale();
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void TreeFace::Refresh()
{
    m_core.marks.Stale();
    RedrawWindow(m_core.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

}  // namespace sylvex
