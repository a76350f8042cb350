#include "platform/win32/tree_rows.h"

#include <string>
#include <vector>

#include "platform/win32/tree_core.h"

namespace sylvex {
namespace {

int ChildrenOf(ExpandButton button)
{
    switch (button) {
        case ExpandButton::Yes:
            return 1;
        case ExpandButton::Ask:
            return I_CHILDRENCALLBACK;
        default:
            return 0;
    }
}

HTREEITEM PlaceOf(ItemHandle after)
{
    // By word rather than by the previous row's handle, which the platform may have to look for.
    if (after == 0) return TVI_LAST;
    return after == kFirstRow ? TVI_FIRST : ItemOf(after);
}

}  // namespace

ItemHandle TreeRows::Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look)
{
    const std::wstring text(look.text);
    const bool follows = look.selectedImage < 0;
    TVINSERTSTRUCTW record{};
    record.hParent = parent == 0 ? TVI_ROOT : ItemOf(parent);
    record.hInsertAfter = PlaceOf(after);
    auto& item = record.item;
    item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_STATE;
    item.pszText = Writable(text.c_str());
    item.lParam = static_cast<LPARAM>(data);
    item.iImage = PictureOf(look.image);
    item.iSelectedImage = PictureOf(follows ? look.image : look.selectedImage);
    item.cChildren = ChildrenOf(look.button);
    item.state = m_core.marks.StateOf(look.checked, look.bold);
    item.stateMask = TreeMarks::kStateMask;
    const auto inserted = static_cast<ItemHandle>(m_core.Send(TVM_INSERTITEMW, 0, ParameterOf(&record)));
    if (inserted != 0) NoteSelectedImage(ItemOf(inserted), look.image, look.selectedImage);
    m_core.marks.Stale();
    return inserted;
}

void TreeRows::NoteSelectedImage(HTREEITEM item, int image, int selectedImage)
{
    if (selectedImage >= 0 && selectedImage != image) {
        m_ownSelectedImage.insert(item);
    } else if (!m_ownSelectedImage.empty()) {
        m_ownSelectedImage.erase(item);
    }
}

void TreeRows::Delete(ItemHandle item)
{
    m_core.marks.Stale();
    m_core.Send(TVM_DELETEITEM, 0, item == 0 ? TVI_ROOT : ItemOf(item));
}

void TreeRows::Set(const TVITEMW& item)
{
    m_core.Send(TVM_SETITEMW, 0, ParameterOf(&item));
}

void TreeRows::SetText(ItemHandle item, std::wstring_view text)
{
    const std::wstring terminated(text);
    TVITEMW record{};
    record.mask = TVIF_HANDLE | TVIF_TEXT;
    record.hItem = ItemOf(item);
    record.pszText = Writable(terminated.c_str());
    Set(record);
}

void TreeRows::SetImages(ItemHandle item, int image, int selectedImage)
{
    NoteSelectedImage(ItemOf(item), image, selectedImage);
    TVITEMW record{};
    record.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    record.hItem = ItemOf(item);
    record.iImage = PictureOf(image);
    record.iSelectedImage = PictureOf(selectedImage < 0 ? image : selectedImage);
    Set(record);
}

void TreeRows::SetButton(ItemHandle item, ExpandButton button)
{
    TVITEMW record{};
    record.mask = TVIF_HANDLE | TVIF_CHILDREN;
    record.hItem = ItemOf(item);
    record.cChildren = ChildrenOf(button);
    Set(record);
}

void TreeRows::Expand(HTREEITEM item, bool expand)
{
    const auto keep = m_core.shared_from_this();
    m_core.marks.Stale();
    const bool before = std::exchange(m_quiet, true);
    m_core.Send(TVM_EXPAND, expand ? TVE_EXPAND : TVE_COLLAPSE, item);
    m_quiet = before;
}

void TreeRows::Reveal(HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    std::vector<HTREEITEM> above;
    const auto parentOf = [&](HTREEITEM child) {
        return reinterpret_cast<HTREEITEM>(m_core.Send(TVM_GETNEXTITEM, TVGN_PARENT, child));
    };
    for (auto* parent = parentOf(item); parent; parent = parentOf(parent))
        above.push_back(parent);
    while (!above.empty()) {
        Route(TVE_EXPAND, above.back());
        above.pop_back();
    }
}

void TreeRows::Select(HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    // The tree would open the rows above by itself, and tell nobody.
    if (item) Reveal(item);
    m_core.Send(TVM_SELECTITEM, TVGN_CARET, item);
}

LRESULT TreeRows::Route(WPARAM action, HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    const auto data = DataOf(item);
    if (!data) return FALSE;
    const bool expanded = IsExpanded(item);
    const bool expand = (action & TVE_TOGGLE) == TVE_TOGGLE ? !expanded : (action & TVE_EXPAND) != 0;
    if (expand == expanded) return FALSE;
    bool allowed = false;
    if (!m_core.Tell([&](TreeWindowListener& l) { allowed = l.Expanding(*data, expand); })) return FALSE;
    if (!allowed) return FALSE;
    Expand(item, expand);
    if (!m_core.Window() || IsExpanded(item) != expand) return FALSE;
    m_core.Tell([&](TreeWindowListener& l) { l.Expanded(*data, expand); });
    return TRUE;
}

HTREEITEM TreeRows::Caret()
{
    return reinterpret_cast<HTREEITEM>(m_core.Send(TVM_GETNEXTITEM, TVGN_CARET));
}

std::optional<ItemData> TreeRows::DataOf(HTREEITEM item)
{
    TVITEMW record{};
    record.mask = TVIF_HANDLE | TVIF_PARAM;
    record.hItem = item;
    if (!item || !m_core.Send(TVM_GETITEMW, 0, ParameterOf(&record))) return std::nullopt;
    return static_cast<ItemData>(record.lParam);
}

bool TreeRows::IsExpanded(HTREEITEM item)
{
    return (m_core.Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

LRESULT TreeRows::OnExpanding(const NMTREEVIEWW& change)
{
    if (m_quiet) return FALSE;
    bool allowed = false;
    const auto data = static_cast<ItemData>(change.itemNew.lParam);
    const bool told =
        m_core.Tell([&](TreeWindowListener& l) { allowed = l.Expanding(data, (change.action & TVE_EXPAND) != 0); });
    return !told || !allowed;
}

LRESULT TreeRows::OnExpanded(const NMTREEVIEWW& change)
{
    m_core.marks.Stale();
    if (m_quiet) return 0;
    const auto data = static_cast<ItemData>(change.itemNew.lParam);
    m_core.Tell([&](TreeWindowListener& l) { l.Expanded(data, (change.action & TVE_EXPAND) != 0); });
    return 0;
}

LRESULT TreeRows::OnSelected(const NMTREEVIEWW& change)
{
    const auto data = change.itemNew.hItem ? static_cast<ItemData>(change.itemNew.lParam) : 0;
    const bool byUser = change.action == TVC_BYMOUSE || change.action == TVC_BYKEYBOARD;
    m_core.Tell([&](TreeWindowListener& l) { l.Selected(data, byUser); });
    return 0;
}

LRESULT TreeRows::OnDeleted(const NMTREEVIEWW& change)
{
    if (!m_ownSelectedImage.empty()) m_ownSelectedImage.erase(change.itemOld.hItem);
    m_core.input.Forget(change.itemOld.hItem);
    return 0;
}

LRESULT TreeRows::OnAsked(NMTVDISPINFOW& question)
{
    auto& item = question.item;
    const auto data = static_cast<ItemData>(item.lParam);
    m_core.Tell([&](TreeWindowListener& l) {
        if (item.mask & TVIF_CHILDREN) item.cChildren = l.HasChildren(data) ? 1 : 0;
        if ((item.mask & (TVIF_IMAGE | TVIF_SELECTEDIMAGE)) == 0) return;
        const auto image = PictureOf(l.Marks(data).image);
        if (item.mask & TVIF_IMAGE) item.iImage = image;
        if (item.mask & TVIF_SELECTEDIMAGE) item.iSelectedImage = image;
    });
    return 0;
}

}  // namespace sylvex
