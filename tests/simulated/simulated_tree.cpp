#include "tests/simulated/simulated_tree.h"

#include <stdexcept>

namespace sylvex {

SimulatedTree::SimulatedTree(SimulatedWindows& windows, WindowHandle handle, TreeWindowListener& listener)
    : m_windows(windows), m_listener(listener), m_handle(handle)
{
    m_top.expanded = true;
}

SimulatedTree::~SimulatedTree()
{
    m_windows.Forget(*this);
}

void SimulatedTree::Enter(const char* call) const
{
    m_windows.Gate().Enter(call);
    if (m_gone) throw ObjectGone(L"The tree window");
}

const TreeRow* SimulatedTree::Find(ItemHandle item) const
{
    const auto found = m_rows.find(item);
    return found == m_rows.end() ? nullptr : found->second.get();
}

TreeRow* SimulatedTree::FindRow(ItemHandle item)
{
    const auto found = m_rows.find(item);
    return found == m_rows.end() ? nullptr : found->second.get();
}

TreeRow& SimulatedTree::RowOf(ItemHandle item, const char* call)
{
    Enter(call);
    TreeRow* const row = FindRow(item);
    if (row == nullptr) throw std::logic_error(std::string(call) + ": stale row " + std::to_string(item));
    return *row;
}

TreeRow& SimulatedTree::Change(ItemHandle item, const char* call)
{
    TreeRow& row = RowOf(item, call);
    row.paintedWhen = 0;
    return row;
}

int SimulatedTree::Setting(TreeSetting setting) const
{
    const auto found = m_settings.find(setting);
    if (found != m_settings.end()) return found->second;
    return setting == TreeSetting::Enabled ? 1 : 0;
}

void SimulatedTree::Link(TreeRow& row, TreeRow& parent, TreeRow* after)
{
    row.parent = &parent;
    row.previous = after;
    row.next = after == nullptr ? parent.firstChild : after->next;
    (row.previous == nullptr ? parent.firstChild : row.previous->next) = &row;
    (row.next == nullptr ? parent.lastChild : row.next->previous) = &row;
}

void SimulatedTree::Unlink(TreeRow& row)
{
    (row.previous == nullptr ? row.parent->firstChild : row.previous->next) = row.next;
    (row.next == nullptr ? row.parent->lastChild : row.next->previous) = row.previous;
    if (row.parent->firstChild == nullptr && row.parent != &m_top) row.parent->expanded = false;
}

ItemHandle SimulatedTree::Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look)
{
    Enter("TreeWindow::Insert");
    TreeRow* const above = parent == 0 ? &m_top : FindRow(parent);
    TreeRow* const before = after == kFirstRow ? nullptr : FindRow(after);
    if (above == nullptr) throw std::logic_error("TreeWindow::Insert: stale parent");
    if (after != 0 && after != kFirstRow && (before == nullptr || before->parent != above)) {
        throw std::logic_error("TreeWindow::Insert: the row to stand behind has another parent");
    }
    auto row = std::make_unique<TreeRow>();
    row->handle = m_last += 16;
    row->data = data;
    row->text = look.text;
    row->image = look.image;
    row->selectedImage = look.selectedImage;
    row->button = look.button;
    Link(*row, *above, after == 0 ? above->lastChild : before);
    return m_rows.emplace(row->handle, std::move(row)).first->first;
}

ItemHandle SimulatedTree::HeirOf(const TreeRow& row) const
{
    const TreeRow* const heir = row.next != nullptr ? row.next : row.previous != nullptr ? row.previous : row.parent;
    return heir->handle;
}

void SimulatedTree::Delete(ItemHandle item)
{
    if (item == 0) {
        Enter("TreeWindow::Delete");
        m_selected = m_dropTarget = m_editing = 0;
        m_rows.clear();
        m_top.firstChild = m_top.lastChild = nullptr;
        m_firstLine = 0;
        return;
    }
    TreeRow& row = Change(item, "TreeWindow::Delete");
    const TreeRow* const selected = Find(m_selected);
    const bool takesSelection = selected != nullptr && IsUnder(selected, row);
    const ItemHandle heir = HeirOf(row);
    Unlink(row);
    Drop(row);
    if (!takesSelection) return;
    m_selected = heir;
    TellSelected(false);
}

void SimulatedTree::Drop(TreeRow& row)
{
    std::vector<TreeRow*> doomed{&row};
    while (!doomed.empty()) {
        const TreeRow* const gone = doomed.back();
        doomed.pop_back();
        for (TreeRow* child = gone->firstChild; child != nullptr; child = child->next)
            doomed.push_back(child);
        for (ItemHandle* const held : {&m_selected, &m_dropTarget, &m_editing}) {
            if (*held == gone->handle) *held = 0;
        }
        m_rows.erase(gone->handle);
    }
}

void SimulatedTree::SetText(ItemHandle item, std::wstring_view text)
{
    Change(item, "TreeWindow::SetText").text = text;
}

void SimulatedTree::SetImages(ItemHandle item, int image, int selectedImage)
{
    TreeRow& row = Change(item, "TreeWindow::SetImages");
    row.image = image;
    row.selectedImage = selectedImage;
}

void SimulatedTree::SetButton(ItemHandle item, ExpandButton button)
{
    Change(item, "TreeWindow::SetButton").button = button;
}

bool SimulatedTree::IsUnder(const TreeRow* row, const TreeRow& above) const
{
    while (row != nullptr && row != &above)
        row = row->parent;
    return row != nullptr;
}

void SimulatedTree::SetExpanded(TreeRow& row, bool expand)
{
    row.expanded = expand && row.firstChild != nullptr;
    row.paintedWhen = 0;
    const TreeRow* const selected = Find(m_selected);
    // A selection that would disappear moves up to the closed row.
    if (!expand && selected != nullptr && selected != &row && IsUnder(selected, row)) SelectRow(row.handle, false);
}

void SimulatedTree::Expand(ItemHandle item, bool expand)
{
    SetExpanded(RowOf(item, "TreeWindow::Expand"), expand);
}

bool SimulatedTree::ShowsButton(const TreeRow& row) const
{
    if (row.button == ExpandButton::Ask) return m_listener.HasChildren(row.data);
    return row.button == ExpandButton::Yes;
}

bool SimulatedTree::OpenOrClose(ItemHandle item, bool expand)
{
    const TreeRow* const row = Find(item);
    if (row == nullptr) return false;
    if (row->expanded == expand) return true;
    if (row->firstChild == nullptr && !ShowsButton(*row)) return false;
    const ItemData data = row->data;
    if (!m_listener.Expanding(data, expand)) return false;
    TreeRow* const after = FindRow(item);
    if (after == nullptr || (expand && after->firstChild == nullptr)) return false;
    SetExpanded(*after, expand);
    m_listener.Expanded(data, expand);
    return true;
}

void SimulatedTree::Reveal(ItemHandle item)
{
    std::vector<ItemHandle> closed;
    const TreeRow* const row = Find(item);
    for (const TreeRow* above = row == nullptr ? nullptr : row->parent; above != nullptr; above = above->parent) {
        if (above != &m_top && !above->expanded) closed.push_back(above->handle);
    }
    for (; !closed.empty(); closed.pop_back())
        OpenOrClose(closed.back(), true);
    const TreeRow* const revealed = Find(item);
    const int lines = (m_place.bottom - m_place.top) / kRowHeight;
    if (revealed == nullptr || !IsShown(*revealed) || lines < 1) return;
    const int line = LineOf(*revealed);
    if (line < m_firstLine) m_firstLine = line;
    if (line >= m_firstLine + lines) m_firstLine = line - lines + 1;
}

bool SimulatedTree::EnsureVisible(ItemHandle item)
{
    RowOf(item, "TreeWindow::EnsureVisible");
    const int before = m_firstLine;
    Reveal(item);
    return m_firstLine != before;
}

void SimulatedTree::SelectRow(ItemHandle item, bool byUser)
{
    if (item == m_selected) return;
    m_selected = item;
    TellSelected(byUser);
}

void SimulatedTree::TellSelected(bool byUser)
{
    const TreeRow* const row = Find(m_selected);
    m_listener.Selected(row == nullptr ? 0 : row->data, byUser);
    Reveal(m_selected);
}

void SimulatedTree::Select(ItemHandle item)
{
    if (item == 0) Enter("TreeWindow::Select");
    if (item != 0) RowOf(item, "TreeWindow::Select");
    SelectRow(item, false);
}

void SimulatedTree::SelectDropTarget(ItemHandle item)
{
    if (item == 0) Enter("TreeWindow::SelectDropTarget");
    if (item != 0) RowOf(item, "TreeWindow::SelectDropTarget");
    m_dropTarget = item;
}

std::optional<ItemData> SimulatedTree::DataOf(ItemHandle item)
{
    Enter("TreeWindow::DataOf");
    const TreeRow* const row = FindRow(item);
    if (row == nullptr || !m_listener.Owns(item, row->data)) return std::nullopt;
    return row->data;
}

void SimulatedTree::TypeLabel(const std::wstring& text)
{
    Enter("TreeWindow::TypeLabel");
    if (m_editing != 0) m_editText = text;
}

void SimulatedTree::EditLabel(ItemHandle item)
{
    RowOf(item, "TreeWindow::EditLabel");
    BeginEdit(item);
}

void SimulatedTree::BeginEdit(ItemHandle item)
{
    FinishEdit(std::nullopt);
    const TreeRow* const row = Find(item);
    if (row == nullptr || !m_listener.LabelEditing(row->data) || Find(item) == nullptr) return;
    m_editing = item;
    m_editText = Find(item)->text;
}

void SimulatedTree::CancelEdit()
{
    Enter("TreeWindow::CancelEdit");
    FinishEdit(std::nullopt);
}

void SimulatedTree::FinishEdit(const std::optional<std::wstring>& text)
{
    const ItemHandle item = std::exchange(m_editing, 0);
    const TreeRow* const row = Find(item);
    if (row == nullptr || !m_listener.LabelEdited(row->data, text) || !text) return;
    if (TreeRow* const kept = FindRow(item)) kept->text = *text;
}

void SimulatedTree::SetRedraw(bool)
{
    Enter("TreeWindow::SetRedraw");
    ++m_generation;
}

void SimulatedTree::MarksChanged()
{
    Enter("TreeWindow::MarksChanged");
    ++m_generation;
}

TreeHit SimulatedTree::HitTest(Point where)
{
    Enter("TreeWindow::HitTest");
    return HitAt(where);
}

int SimulatedTree::VisibleCount()
{
    Enter("TreeWindow::VisibleCount");
    return (m_place.bottom - m_place.top) / kRowHeight;
}

void SimulatedTree::SetVisible(bool visible)
{
    Enter("TreeWindow::SetVisible");
    m_visible = visible;
    ++m_generation;
}

void SimulatedTree::Refresh()
{
    Enter("TreeWindow::Refresh");
    ++m_generation;
}

void SimulatedTree::Move(const Rect& place)
{
    Enter("TreeWindow::Move");
    m_place = place;
}

void SimulatedTree::SetImageList(ImageListHandle images)
{
    Enter("TreeWindow::SetImageList");
    m_images = images;
}

void SimulatedTree::Apply(TreeSetting setting, int value)
{
    Enter("TreeWindow::Apply");
    m_settings[setting] = value;
}

void SimulatedTree::SetFont(const ObjectRef& font)
{
    Enter("TreeWindow::SetFont");
    m_font = font;
}

void SimulatedTree::SetMouseIcon(const ObjectRef& picture)
{
    Enter("TreeWindow::SetMouseIcon");
    m_mouseIcon = picture;
}

void SimulatedTree::InstallCheckPictures()
{
    Enter("TreeWindow::InstallCheckPictures");
    if (Setting(TreeSetting::Checkboxes) != 0) ++m_checkPictures;
}

}  // namespace sylvex
