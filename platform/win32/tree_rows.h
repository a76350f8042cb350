#pragma once

#include <optional>
#include <unordered_set>

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
    /// Opens the rows above an item, each as if a program had asked for it.
    void Reveal(HTREEITEM item);
    void Select(HTREEITEM item);
    /// An order to open or close a row (TVM_EXPAND) that did not come from here: the listener decides.
    LRESULT Route(WPARAM action, HTREEITEM item);

    /// The selected item, null when there is none.
    HTREEITEM Caret();
    /// Nothing for an item that the tree does not know.
    std::optional<ItemData> DataOf(HTREEITEM item);
    /// Whether the picture shown while selected is the row's ordinary one.
    bool SelectedImageFollows(HTREEITEM item) const { return !m_ownSelectedImage.contains(item); }

    LRESULT OnExpanding(const NMTREEVIEWW& change);
    LRESULT OnExpanded(const NMTREEVIEWW& change);
    LRESULT OnSelected(const NMTREEVIEWW& change);
    LRESULT OnDeleted(const NMTREEVIEWW& change);
    LRESULT OnAsked(NMTVDISPINFOW& question);

private:
    bool IsExpanded(HTREEITEM item);
    void Set(const TVITEMW& item);
    void NoteSelectedImage(HTREEITEM item, int image, int selectedImage);

    TreeCore& m_core;
    std::unordered_set<HTREEITEM> m_ownSelectedImage;
    bool m_quiet = false;  // an opening of our own is under way
};

}  // namespace sylvex
