#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/types.h"

namespace sylvex {

/// What the owner of an item gave for it; the window hands it back and never looks at it.
using ItemData = std::uintptr_t;

/// Whether a row shows an expand button. Ask: the listener is asked when the row is painted.
enum class ExpandButton { No, Yes, Ask };

/// What a row shows.
struct ItemLook {
    std::wstring_view text;
    int image = -1;          ///< index in the bound image list, -1 none
    int selectedImage = -1;  ///< shown while selected, likewise
    ExpandButton button = ExpandButton::No;
    bool checked = false;
    bool bold = false;
};

/// The two marks of a row, asked just before it is painted and whenever somebody reads the row.
struct RowMarks {
    bool checked = false;
    bool bold = false;
    int image = -1;  ///< the picture of the present state (open or closed)
};

/// A hit test's answer: the item (0 none) and the platform's flags (2 icon, 4 label, 0x10 button, 0x40 state icon,
/// ...).
struct TreeHit {
    ItemHandle item = 0;
    ItemData data = 0;
    unsigned flags = 0;
};

/// What the mouse and the keyboard do in the tree window, told to its owner. None may throw.
class TreeInputListener {
public:
    virtual ~TreeInputListener() = default;
    /// A click on the row that was selected already.
    virtual void Clicked(ItemData item) = 0;
    virtual void DoubleClicked() = 0;
    /// Keys may be changed; 0 swallows the key. `shift`: 1 shift, 2 control, 4 alt.
    virtual void KeyDown(short& key, short shift) = 0;
    virtual void KeyPress(short& character) = 0;
    virtual void KeyUp(short& key, short shift) = 0;
    /// Mouse in client pixels; `button` 1 left, 2 right, 4 middle (for a move: those held down).
    virtual void MouseDown(short button, short shift, Point where) = 0;
    virtual void MouseMove(short button, short shift, Point where) = 0;
    virtual void MouseUp(short button, short shift, Point where) = 0;
};

/// What the tree window tells its owner. All calls come on the window's thread; none may throw.
class TreeWindowListener : public TreeInputListener {
public:
    /// Whether this is what the owner gave for the row. Anybody can insert rows into the window and write their data,
    /// so it is asked before the data of a row is handed to any other call. Rows of strangers are told of by none.
    virtual bool Owns(ItemHandle row, ItemData item) const noexcept = 0;
    /// The user opens (or closes) a row, or some program sends the window such a message; false keeps it as it is.
    virtual bool Expanding(ItemData item, bool expand) = 0;
    /// The row has been opened or closed.
    virtual void Expanded(ItemData item, bool expand) = 0;
    virtual bool HasChildren(ItemData item) = 0;
    virtual RowMarks Marks(ItemData item) = 0;
    /// The user (mouse, space bar, accessibility) has asked to flip the row's box.
    virtual void CheckClicked(ItemData item) = 0;
    /// The selection is on another row (0 none); `byUser`: by mouse or keyboard.
    virtual void Selected(ItemData item, bool byUser) = 0;
    /// False: no editing.
    virtual bool LabelEditing(ItemData item) = 0;
    /// The typed text, nothing when the edit was abandoned; false keeps the old label.
    virtual bool LabelEdited(ItemData item, const std::optional<std::wstring>& text) = 0;
    /// Somebody destroys the window; for the last time its rows can be deleted.
    virtual void Destroying() = 0;
};

/// The settings of the tree's face, each with the values that its property has.
enum class TreeSetting {
    Appearance,     ///< 0 flat, 1 three-dimensional
    BorderStyle,    ///< 0 none, 1 single
    Checkboxes,     ///< 0, 1
    Enabled,        ///< 0, 1
    FullRowSelect,  ///< 0, 1
    HideSelection,  ///< 0, 1
    HotTracking,    ///< 0, 1
    LabelEdit,      ///< 0 automatic, 1 manual
    LineStyle,      ///< 0 tree lines, 1 root lines
    MousePointer    ///< 0 default .. 15, 99 custom
};

/// The rows of a tree window.
class TreeWindowRows {
public:
    virtual ~TreeWindowRows() = default;
    /// Inserts a row as a child of `parent` (0: top level) behind `after` (0: last, kFirstRow: first); 0 on failure.
    virtual ItemHandle Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look) = 0;
    /// Before the window goes: whether its rows can be deleted. While the platform's own code runs in it they cannot,
    /// and their memory stays behind.
    virtual bool MayEmpty() = 0;
    /// Deletes a row with all below it; 0 deletes every row.
    virtual void Delete(ItemHandle item) = 0;
    virtual void SetText(ItemHandle item, std::wstring_view text) = 0;
    virtual void SetImages(ItemHandle item, int image, int selectedImage) = 0;
    virtual void SetButton(ItemHandle item, ExpandButton button) = 0;
    /// The marks of any row may have changed: rows are asked anew before they are painted.
    virtual void MarksChanged() = 0;
    /// Opens or closes a row; the listener is not asked.
    virtual void Expand(ItemHandle item, bool expand) = 0;
    /// Scrolls a row into view, the rows above it opened; true when the view has moved.
    virtual bool EnsureVisible(ItemHandle item) = 0;
    /// Selects a row (0: none); the listener is told with `byUser` false.
    virtual void Select(ItemHandle item) = 0;
    virtual void SelectDropTarget(ItemHandle item) = 0;
    /// Client pixels.
    virtual TreeHit HitTest(Point where) = 0;
    /// What the owner gave for a row; nothing for 0 and for a row that somebody else has inserted.
    virtual std::optional<ItemData> DataOf(ItemHandle item) = 0;
    virtual int VisibleCount() = 0;
};

/// The editing of labels in a tree window.
class TreeWindowEdit {
public:
    virtual ~TreeWindowEdit() = default;
    virtual void EditLabel(ItemHandle item) = 0;
    /// Puts a text, selected, into the label edit that is open; nothing when none is.
    virtual void TypeLabel(const std::wstring& text) = 0;
    /// Ends a label edit without taking its text; nothing when none is open.
    virtual void CancelEdit() = 0;
};

/// How a tree window looks, and whether it shows and paints.
class TreeWindowFace {
public:
    virtual ~TreeWindowFace() = default;
    /// Off: nothing repaints, and many rows may be inserted cheaply. A WM_SETREDRAW from outside is kept apart: the
    /// window repaints when both are on.
    virtual void SetRedraw(bool redraw) = 0;
    virtual void SetVisible(bool visible) = 0;
    /// Paints the whole window now.
    virtual void Refresh() = 0;
    /// Pixels in the parent's client area.
    virtual void Move(const Rect& place) = 0;
    virtual void SetImageList(ImageListHandle images) = 0;
    virtual void Apply(TreeSetting setting, int value) = 0;
    /// A font object; null: the system's own.
    virtual void SetFont(const ObjectRef& font) = 0;
    /// A picture object used while the pointer setting is 99.
    virtual void SetMouseIcon(const ObjectRef& picture) = 0;
    /// Replaces the pictures of the empty and the ticked box by the component's own; nothing without check boxes.
    virtual void InstallCheckPictures() = 0;
};

class TreeWindow : public TreeWindowRows, public TreeWindowEdit, public TreeWindowFace {
public:
    virtual WindowHandle Handle() const = 0;
};

constexpr ItemHandle kFirstRow = static_cast<ItemHandle>(-1);

}  // namespace sylvex
