#include "platform/win32/tree/tree_rows.h"

#include <string>

#include "platform/win32/tree/tree_core.h"

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

// Keeps its row among the orders, which are told when it goes.
class TreeRows::Watched {
public:
    Watched(TreeRows& rows, HTREEITEM item) : m_rows(rows), m_place(rows.m_orders.size())
    {
        rows.m_orders.push_back({item, false});
    }
    ~Watched() { m_rows.m_orders.resize(m_place); }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;
    explicit operator bool() const { return m_rows.m_orders[m_place].item != nullptr; }

private:
    TreeRows& m_rows;
    std::size_t m_place;
};

bool TreeRows::Reveal(HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    if (!item || IsUncovered(item)) return true;
    const Watched row(*this, item);
    const auto first = m_orders.size();
    const auto parentOf = [&](HTREEITEM child) {
        return reinterpret_cast<HTREEITEM>(m_core.Send(TVM_GETNEXTITEM, TVGN_PARENT, child));
    };
    for (auto* above = parentOf(item); above; above = parentOf(above))
        m_orders.push_back({above, true});
    while (m_orders.size() > first) {
        auto* const above = m_orders.back().item;
        m_orders.pop_back();
        Route(TVE_EXPAND, above);
    }
    return static_cast<bool>(row);
}

bool TreeRows::IsUncovered(HTREEITEM item)
{
    // The message takes the item in the place of its answer.
    union {
        HTREEITEM item;
        RECT place;
    } question{item};
    return m_core.Send(TVM_GETITEMRECT, FALSE, ParameterOf(&question)) != 0;
}

void TreeRows::Select(HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    if (Reveal(item)) m_core.Send(TVM_SELECTITEM, TVGN_CARET, item);
}

std::optional<LRESULT> TreeRows::Route(WPARAM action, HTREEITEM item)
{
    const auto keep = m_core.shared_from_this();
    const auto data = DataOf(item);
    if (!data) return std::nullopt;
    const bool expanded = IsExpanded(item);
    const bool expand = (action & TVE_TOGGLE) == TVE_TOGGLE ? !expanded : (action & TVE_EXPAND) != 0;
    if (expand == expanded) return FALSE;
    return Change(item, *data, expand);
}

LRESULT TreeRows::Change(HTREEITEM item, ItemData data, bool expand)
{
    const Watched row(*this, item);
    bool allowed = false;
    if (!m_core.Tell([&](TreeWindowListener& l) { allowed = l.Expanding(data, expand); }) || !row) return FALSE;
    const bool done = IsExpanded(item) == expand;
    if (allowed != done) Expand(item, allowed ? expand : !expand);
    if (!allowed || !m_core.Window() || !row || IsExpanded(item) != expand) return FALSE;
    m_core.Tell([&](TreeWindowListener& l) { l.Expanded(data, expand); });
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
    return Owned(item, record.lParam);
}

std::optional<ItemData> TreeRows::Owned(HTREEITEM item, LPARAM data)
{
    const auto given = static_cast<ItemData>(data);
    bool owned = false;
    m_core.Tell([&](const TreeWindowListener& l) { owned = l.Owns(NumberOf(item), given); });
    return owned ? std::optional(given) : std::nullopt;
}

bool TreeRows::IsExpanded(HTREEITEM item)
{
    return (m_core.Send(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

LRESULT TreeRows::OnExpanding(const NMTREEVIEWW& change)
{
    if (m_quiet || !Owned(change.itemNew.hItem, change.itemNew.lParam)) return FALSE;
    // Whatever the answer, the tree goes on with the row, which the listener may take away: it is asked when the tree
    // has done.
    m_orders.push_back({change.itemNew.hItem, (change.action & TVE_EXPAND) != 0});
    return TRUE;
}

void TreeRows::Obey(std::size_t known)
{
    const auto keep = m_core.shared_from_this();
    while (m_orders.size() > known) {
        const auto order = m_orders[known];
        m_orders.erase(m_orders.begin() + static_cast<std::ptrdiff_t>(known));
        // Some trees have closed the row although they were told not to: then the listener hears of it all the same.
        if (const auto data = DataOf(order.item)) Change(order.item, *data, order.expand);
    }
}

LRESULT TreeRows::OnExpanded()
{
    m_core.marks.Stale();
    return 0;
}

LRESULT TreeRows::OnSelected(const NMTREEVIEWW& change)
{
    const auto data = change.itemNew.hItem ? Owned(change.itemNew.hItem, change.itemNew.lParam).value_or(0) : 0;
    const bool byUser = change.action == TVC_BYMOUSE || change.action == TVC_BYKEYBOARD;
    m_core.Tell([&](TreeWindowListener& l) { l.Selected(data, byUser); });
    return 0;
}

LRESULT TreeRows::OnDeleted(const NMTREEVIEWW& change)
{
    if (!m_ownSelectedImage.empty()) m_ownSelectedImage.erase(change.itemOld.hItem);
    m_core.input.Forget(change.itemOld.hItem);
    for (auto& order : m_orders)
        if (order.item == change.itemOld.hItem) order.item = nullptr;
    return 0;
}

LRESULT TreeRows::OnAsked(NMTVDISPINFOW& question)
{
    auto& item = question.item;
    const auto data = Owned(item.hItem, item.lParam);
    if (!data) return 0;
    m_core.Tell([&](TreeWindowListener& l) {
        if (item.mask & TVIF_CHILDREN) item.cChildren = l.HasChildren(*data) ? 1 : 0;
        if ((item.mask & (TVIF_IMAGE | TVIF_SELECTEDIMAGE)) == 0) return;
        const auto image = PictureOf(l.Marks(*data).image);
        if (item.mask & TVIF_IMAGE) item.iImage = image;
        if (item.mask & TVIF_SELECTEDIMAGE) item.iSelectedImage = image;
    });
    return 0;
}

}  // namespace sylvex
