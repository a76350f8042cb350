#pragma once

#include <memory>

#include "platform/treewindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

class TreeCore;

/// A tree window of the common controls. Every call raises 398 once the window has been destroyed with its parent.
class Win32TreeWindow : public TreeWindow {
public:
    Win32TreeWindow(HWND parent, TreeWindowListener& listener);
    ~Win32TreeWindow() override;
    /// 0 once the window is gone.
    WindowHandle Handle() const override;
    ItemHandle Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look) override;
    bool MayEmpty() override;
    void Delete(ItemHandle item) override;
    void SetText(ItemHandle item, std::wstring_view text) override;
    void SetImages(ItemHandle item, int image, int selectedImage) override;
    void SetButton(ItemHandle item, ExpandButton button) override;
    void Expand(ItemHandle item, bool expand) override;
    bool EnsureVisible(ItemHandle item) override;
    void Select(ItemHandle item) override;
    void SelectDropTarget(ItemHandle item) override;
    TreeHit HitTest(Point where) override;
    std::optional<ItemData> DataOf(ItemHandle item) override;
    void EditLabel(ItemHandle item) override;
    void TypeLabel(const std::wstring& text) override;
    void CancelEdit() override;
    void SetRedraw(bool redraw) override;
    void MarksChanged() override;
    int VisibleCount() override;
    void SetVisible(bool visible) override;
    void Refresh() override;
    void Move(const Rect& place) override;
    void SetImageList(ImageListHandle images) override;
    void Apply(TreeSetting setting, int value) override;
    void SetFont(const ObjectRef& font) override;
    void SetMouseIcon(const ObjectRef& picture) override;
    void InstallCheckPictures() override;

private:
    // Shared, so that a listener may destroy this object in the middle of a call. Raises 398.
    std::shared_ptr<TreeCore> Core() const;

    std::shared_ptr<TreeCore> m_core;
};

}  // namespace sylvex
