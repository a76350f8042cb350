#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/drag.h"
#include "platform/tree_records.h"
#include "platform/treewindow.h"
#include "tests/simulated/simulated_windows.h"

namespace sylvex {

/// One row of a simulated tree window, linked to its neighbours.
struct TreeRow {
    ItemHandle handle = 0;
    ItemData data = 0;
    std::wstring text;
    int image = -1;
    int selectedImage = -1;
    std::optional<int> fixedImage;  ///< set by a raw message in place of the owner's
    ExpandButton button = ExpandButton::No;
    bool expanded = false;
    TreeRow* parent = nullptr;
    TreeRow* firstChild = nullptr;
    TreeRow* lastChild = nullptr;
    TreeRow* next = nullptr;
    TreeRow* previous = nullptr;
    RowMarks painted;          ///< what the screen shows of the marks
    unsigned paintedWhen = 0;  ///< the tree's generation at that time
};

/// The parts of a row, from left to right.
enum class RowPart { Indent, Button, Box, Icon, Label, Right };

/// A tree window in memory. Rows are 16 pixels high in display order, levels 19 pixels apart; a box is 16 wide, an
/// icon 19, a label 7 a character and 4 more. A stale row handle given to a method is a programming error
/// (std::logic_error); raw messages answer it with 0. A window that was destroyed raises 398.
class SimulatedTree final : public TreeWindow {
public:
    static constexpr int kRowHeight = 16;
    static constexpr int kLevelWidth = 19;
    static constexpr int kBoxWidth = 16;
    static constexpr int kIconWidth = 19;
    /// Between the client area and the window's edge, on all sides.
    static constexpr int kBorder = 2;
    /// What one line to the left or right scrolls.
    static constexpr int kScrollWidth = 5;
    /// Where the client area of a tree at 0, 0 lies on the screen.
    static constexpr Point kOrigin{100, 200};

    SimulatedTree(SimulatedWindows& windows, WindowHandle handle, TreeWindowListener& listener);
    SimulatedTree(const SimulatedTree&) = delete;
    SimulatedTree& operator=(const SimulatedTree&) = delete;
    ~SimulatedTree() override;

    /// The first row with this text, depth first, whether shown or not; 0 when there is none.
    ItemHandle Row(std::wstring_view text) const;
    /// Row n of those shown, from 0; 0 when there is none.
    ItemHandle RowAt(int line) const;
    /// The picture a row shows, in the words of its image list.
    std::string PictureOf(ItemHandle item);
    const TreeRow* Find(ItemHandle item) const;
    int RowCount() const { return static_cast<int>(m_rows.size()); }
    ItemHandle Selection() const { return m_selected; }
    ItemHandle DropTarget() const { return m_dropTarget; }
    ItemHandle Editing() const { return m_editing; }
    /// What the open label holds.
    const std::wstring& EditText() const { return m_editText; }
    int Setting(TreeSetting setting) const;
    const Rect& Place() const { return m_place; }
    /// A scroll bar, 0 the horizontal, 1 the vertical one; there whether it shows or not.
    ScrollBar BarOf(int bar) const;
    /// The bits of the window's style that its scroll bars set.
    std::uint32_t BarStyle() const;
    /// Times that InstallCheckPictures found check boxes.
    int CheckPictures() const { return m_checkPictures; }
    const ObjectRef& Font() const { return m_font; }
    const ObjectRef& MouseIcon() const { return m_mouseIcon; }
    /// How many shown rows lie above a row, which must be shown itself.
    int LineOf(const TreeRow& row) const;
    /// Client pixels of a part of a row that is shown; empty when the row is not shown or has no such part.
    Rect RectOf(ItemHandle item, RowPart part) const;
    Point ToScreen(Point client) const;

    /// For the user's hands, TreeUser: as the window itself acts on input.
    bool TakesInput() const { return !m_gone && m_visible && Setting(TreeSetting::Enabled) != 0; }
    TreeHit HitAt(Point where) const;
    bool OpenOrClose(ItemHandle item, bool expand);
    void SelectRow(ItemHandle item, bool byUser);
    void BeginEdit(ItemHandle item);
    void FinishEdit(const std::optional<std::wstring>& text);
    TreeWindowListener& Listener() { return m_listener; }
    SimulatedSystem& Machine() { return m_windows.Machine(); }
    std::intptr_t OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
    void MarkGone() { m_gone = true; }

    WindowHandle Handle() const override { return m_handle; }
    ItemHandle Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look) override;
    bool MayEmpty() override { return true; }
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
    void Enter(const char* call) const;
    TreeRow& RowOf(ItemHandle item, const char* call);
    TreeRow& Change(ItemHandle item, const char* call);
    TreeRow* FindRow(ItemHandle item);
    void Link(TreeRow& row, TreeRow& parent, TreeRow* after);
    void Unlink(TreeRow& row);
    void Drop(TreeRow& row);
    ItemHandle HeirOf(const TreeRow& row) const;
    void SetExpanded(TreeRow& row, bool expand);
    void Reveal(ItemHandle item);
    void TellSelected(bool byUser);
    bool ShowsButton(const TreeRow& row) const;
    bool IsUnder(const TreeRow* row, const TreeRow& above) const;

    TreeRow* NextShown(const TreeRow& row) const;
    bool IsShown(const TreeRow& row) const;
    int LevelOf(const TreeRow& row) const;
    int LeftOf(const TreeRow& row, RowPart part) const;
    unsigned FlagsAt(const TreeRow& row, int x) const;
    const RowMarks& Marks(TreeRow& row);
    int ImageOf(TreeRow& row);

    std::intptr_t NextItem(std::uintptr_t flag, const TreeRow* row);
    bool GetItem(TVITEM& record);
    bool SetItem(const TVITEM& record);
    std::uint32_t StateOf(const TreeRow& row);
    bool ItemRect(bool label, void* address);
    std::intptr_t SelectByMessage(std::uintptr_t code, ItemHandle item);
    std::intptr_t ExpandByMessage(std::uintptr_t flag, ItemHandle item);
    std::intptr_t CreateDragImage(ItemHandle item);
    void Scroll(int bar, std::uintptr_t command);

    SimulatedWindows& m_windows;
    TreeWindowListener& m_listener;
    WindowHandle m_handle;
    std::unordered_map<ItemHandle, std::unique_ptr<TreeRow>> m_rows;
    TreeRow m_top;
    ItemHandle m_last = 0;
    ItemHandle m_selected = 0;
    ItemHandle m_dropTarget = 0;
    ItemHandle m_editing = 0;
    std::wstring m_editText;
    ImageListHandle m_images = 0;
    std::map<TreeSetting, int> m_settings;
    Rect m_place;
    ObjectRef m_font;
    ObjectRef m_mouseIcon;
    bool m_gone = false;
    bool m_visible = true;
    unsigned m_generation = 1;
    int m_firstLine = 0;
    int m_scrolledRight = 0;  // pixels
    int m_checkPictures = 0;
};

}  // namespace sylvex
