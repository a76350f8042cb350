#pragma once

#include <optional>
#include <unordered_set>
#include <vector>

#include "platform/treewindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

class TreeCore;

/// The item handle of a number of the seam.
inline HTREEITEM ItemOf(ItemHandle item) noexcept
{
    return HandleOf<HTREEITEM>(item);
}
/// The platform's index of a picture of the seam, where any number below 0 is none.
inline int PictureOf(int image) noexcept
{
    return image < 0 ? I_IMAGENONE : image;
}

/// The rows of a native tree: inserting, deleting, opening, selecting, and what the tree tells about it.
class TreeRows {
public:
    explicit TreeRows(TreeCore& core) : m_core(core) {}

    ItemHandle Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look);
    void Delete(ItemHandle item);
    void SetText(ItemHandle item, std::wstring_view text);
    void SetImages(ItemHandle item, int image, int selectedImage);
    void SetButton(ItemHandle item, ExpandButton button);
    /// Opens or closes a row without a word to the listener.
    void Expand(HTREEITEM item, bool expand);
    /// Opens the rows above an item, each as if a program had asked for it. The tree would open them by itself, in the
    /// middle of its work with the item. False when the item has gone by that.
    bool Reveal(HTREEITEM item);
    void Select(HTREEITEM item);
    /// An order to open or close a row (TVM_EXPAND) that did not come from here: the listener decides. Nothing for a
    /// row that is not the owner's.
    std::optional<LRESULT> Route(WPARAM action, HTREEITEM item);

    /// How many wishes of the tree itself to open or close a row are waiting.
    std::size_t Orders() const noexcept { return m_orders.size(); }
    /// Fulfils those that have come since there were `known`; no code of the tree that made them may be under way.
    void Obey(std::size_t known);

    /// The selected item, null when there is none.
    HTREEITEM Caret();
    bool IsExpanded(HTREEITEM item);
    /// Whether all rows above are open.
    bool IsUncovered(HTREEITEM item);
    /// Nothing for an item that the tree does not know, or that is not the owner's.
    std::optional<ItemData> DataOf(HTREEITEM item);
    /// The same for an item whose data the tree has just told.
    std::optional<ItemData> Owned(HTREEITEM item, LPARAM data);
    /// Whether the picture shown while selected is the row's ordinary one.
    bool SelectedImageFollows(HTREEITEM item) const { return !m_ownSelectedImage.contains(item); }

    LRESULT OnExpanding(const NMTREEVIEWW& change);
    LRESULT OnExpanded();
    LRESULT OnSelected(const NMTREEVIEWW& change);
    LRESULT OnDeleted(const NMTREEVIEWW& change);
    LRESULT OnAsked(NMTVDISPINFOW& question);

private:
    struct Order {
        HTREEITEM item;  // null when it has gone
        bool expand;
    };
    class Watched;
    LRESULT Change(HTREEITEM item, ItemData data, bool expand);
    void Set(const TVITEMW& item);
    void NoteSelectedImage(HTREEITEM item, int image, int selectedImage);

    TreeCore& m_core;
    std::unordered_set<HTREEITEM> m_ownSelectedImage;
    std::vector<Order> m_orders;  // and rows that are watched
    bool m_quiet = false;         // an opening of our own is under way
};

}  // namespace sylvex
