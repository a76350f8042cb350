#pragma once

#include <ocidl.h>

#include <optional>

#include "com/pointer.h"
#include "platform/treewindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

class TreeCore;

/// How a native tree looks: its settings, font, pictures, pointer, and whether it shows and repaints.
class TreeFace {
public:
    /// Of a new tree. Drags are the owner's; editing is always possible, and refused where it is not wanted.
    static constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | TVS_HASBUTTONS |
                                    TVS_HASLINES | TVS_EDITLABELS | TVS_DISABLEDRAGDROP;
    static constexpr DWORD kExtendedStyle = WS_EX_CLIENTEDGE;

    explicit TreeFace(TreeCore& core) : m_core(core) {}
    void Apply(TreeSetting setting, int value);
    void SetFont(const ObjectRef& font);
    void SetMouseIcon(const ObjectRef& picture);
    void InstallCheckPictures();
    bool HasBoxes() const noexcept { return m_boxes; }
    bool SelectsFullRow() const noexcept { return m_fullRow; }

    bool Visible() const;
    void SetVisible(bool visible);
    void SetRedraw(bool redraw);
    /// The host's own switch of repainting, beside the owner's.
    void Freeze(bool frozen);
    void Refresh();

    std::optional<LRESULT> OnSetCursor(LPARAM lParam) const;
    LRESULT OnThemeChanged(WPARAM wParam, LPARAM lParam);
    /// Gives back what the platform leaves to its users; `window` is the tree, which may have been let go already.
    void BeforeDestroy(HWND window) noexcept;

private:
    void SetStyle(DWORD bits, bool on);
    void SetFrame(int index, DWORD bit, bool on);
    void SetBoxes(bool on);
    void UpdateRedraw();
    HCURSOR Pointer() const;
    HFONT SystemFont();

    TreeCore& m_core;
    ComPtr<IFont> m_font;
    UniqueFont m_systemFont;
    ComPtr<IPicture> m_mouseIcon;
    int m_pointer = 0;
    bool m_boxes = false;
    bool m_ownPictures = false;
    bool m_fullRow = false;
    bool m_redraw = true;
    HIMAGELIST m_boxList = nullptr;  // that the tree made for its boxes
    bool m_frozen = false;
    bool m_repaints = true;  // what the two above come to
    bool m_shown = true;
    bool m_hadFocus = false;
};

}  // namespace sylvex
