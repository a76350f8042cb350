#include "dragdrop/drop.h"

#include "dragdrop/drag_tree.h"
#include "platform/text.h"

namespace sylvex {

namespace {

constexpr short kMoveFlavor = 4;
constexpr long kChecked = -1;
constexpr long kUnchecked = 0;
constexpr long kMixed = 1;

/// Runs a statement now and another at the end of its scope, whatever happens between.
template <class End>
class AtEnd {
public:
    explicit AtEnd(End end) : m_end(std::move(end)) {}
    ~AtEnd() { m_end(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

private:
    End m_end;
};

bool IsMarked(const Node& node)
{
    return node.Checked() || node.Bold();
}

}  // namespace

Drop::Drop(const Context& context, FolderTree& tree, DragState& state, TreeSelect& checks, DragSession& session,
           DiskOperations& disk, DragOwner& owner)
    : m_context(context),
      m_tree(tree),
      m_state(state),
      m_checks(checks),
      m_session(session),
      m_disk(disk),
      m_owner(owner)
{
}

void Drop::Released(Point where, DropLocals& locals, int& line)
{
    if (!m_session.Dragging()) return m_session.Released();
    // The shell's dialogs leave the tree usable: nothing is dragged while a drop is under way.
    m_session.SetBusy(true);
    const AtEnd free([this] { m_session.SetBusy(false); });
    const NodeRef moved(m_session.Dragged());
    try {
        const NodeRef target(m_session.TargetAt(where));
        line = 2;
        m_session.EndDrag1();
        if (moved && target) ActOn(target, locals, line);
    } catch (...) {
        m_session.Cancel();
        m_session.EndDrag2();
        throw;
    }
    line = 10;
    m_session.EndDrag2();
}

void Drop::ActOn(const NodeRef& target, DropLocals& locals, int& line)
{
    line = 3;
    m_state.nodX = target;
    locals.hitemDest = m_context.TV.ItemOf(*m_state.nodX);
    line = 4;
    if (const wchar_t* refusal = Refusal(locals, *m_state.nodX)) return Say(refusal);
    Move(locals, m_state.m_nodDrag, m_state.nodX, line);
}

namespace {

constexpr const wchar_t* kOntoItself = L"A folder cannot be dropped onto itself.";
constexpr const wchar_t* kOntoParent = L"A folder cannot be dropped onto its parent folder.";
constexpr const wchar_t* kOntoSubfolder = L"A folder cannot be dropped onto a subfolder of itself.";
constexpr const wchar_t* kFileOntoFile = L"A File cannot be dropped onto another File.";

}  // namespace

/// Why the drop is refused, null when it is not.
const wchar_t* Drop::Refusal(const DropLocals& locals, Node& target)
{
    const WindowHandle tree = m_context.TV.hWnd();
    const ItemHandle dragged = m_state.m_hitemDrag;
    DragTree& items = m_session.Tree();
    if (locals.hitemDest == dragged) return kOntoItself;
    if (locals.hitemDest == items.TreeView_GetParent(tree, dragged)) return kOntoParent;
    if (items.AreTVItemsParentChild(tree, dragged, locals.hitemDest)) return kOntoSubfolder;
    if (!target.Key().empty() && !m_state.m_nodDrag->Key().empty()) return kFileOntoFile;
    return RefusalByPath(DiskPathOf(*m_state.m_nodDrag), DiskPathOf(target));
}

/// The same for a folder that the tree shows in two places, as the documents folder.
const wchar_t* Drop::RefusalByPath(const std::wstring& source, const std::wstring& target)
{
    if (!IsWholePath(source) || !IsWholePath(target)) return nullptr;
    Regional& regional = m_context.platform.regional;
    const std::wstring from = WithoutSeparator(source);
    const std::wstring to = WithoutSeparator(target);
    if (EqualName(regional, from, to)) return kOntoItself;
    const std::wstring above = from.substr(0, from.rfind(L'\\') + 1);
    if (EqualName(regional, WithoutSeparator(above), to)) return kOntoParent;
    const std::wstring below = from + L"\\";
    return EqualName(regional, std::wstring_view(to).substr(0, below.size()), below) ? kOntoSubfolder : nullptr;
}

/// The node's place where it is known to be another than its texts tell, else its key when that is a path, otherwise
/// its path without the separator at its end; empty for a node without a text, whose path would be that of its folder.
std::wstring Drop::DiskPathOf(Node& node)
{
    const std::wstring place = m_tree.Places().Of(node);
    if (!place.empty()) return place;
    if (IsWholePath(node.Key())) return node.Key();
    return node.Text().empty() ? std::wstring() : WithoutSeparator(m_tree.BuildFullPath(&node));
}

void Drop::Move(DropLocals& locals, const NodeRef& moved, const NodeRef& target, int& line)
{
    line = 5;
    locals.DropDestin = DiskPathOf(*target);
    locals.DropSource = DiskPathOf(*moved);
    const NodeRef node = moved;
    const NodeRef oldParent(moved->Parent());
    line = 6;
    PutUnder(node, target);
    line = 7;
    Relocate(node, locals);
    line = 8;
    Say(L"Successful drop of folder " + locals.DropSource + L"\ronto " + locals.DropDestin);
    line = 9;
    Settle(node.IfAlive(), oldParent.IfAlive(), locals.DropSource);
}

/// Has the disk follow the tree. Until it has, and where it does not, the node stands for the folder at the old place.
void Drop::Relocate(const NodeRef& moved, const DropLocals& locals)
{
    const NodeRef node = moved;
    DiskPlaces& places = m_tree.Places();
    const std::wstring source = WithoutSeparator(locals.DropSource);
    if (IsWholePath(source)) places.Note(*node, source);
    m_tree.SetMoving(true);
    const AtEnd arrived([this] { m_tree.SetMoving(false); });
    m_disk.WindowsDiskOps(locals.DropSource, locals.DropDestin, kMoveFlavor);
    if (!m_disk.Done()) return;
    const std::wstring arrival = m_tree.QualifyPath(locals.DropDestin) + source.substr(source.rfind(L'\\') + 1);
    places.Moved(source, arrival);
    if (node) places.Settle(*node, arrival, m_tree.FolderOf(*node->Parent()) + node->Text());
}

/// Moves the node in the tree, and shows it there.
void Drop::PutUnder(const NodeRef& moved, const NodeRef& target)
{
    const NodeRef node = moved;
    const NodeRef folder = target;
    // Read before the newcomer is there: a folder with a child would not be read any more.
    folder->SetExpanded(true);
    m_arriving = folder;
    const AtEnd arrived([this] { m_arriving = NodeRef(); });
    node->SetParent(*folder);
    m_context.TV.SetSelectedItem(&*node);
    node->EnsureVisible();
}

void Drop::Say(const std::wstring& text)
{
    m_context.platform.boxes.Show(m_context.TV.hWnd(), text, {}, kBoxOk);
}

// ---- what a move leaves behind. Disk and message may have taken a while: any node may be gone.

void Drop::Settle(Node* moved, Node* oldParent, const std::wstring& source)
{
    if (moved != nullptr && m_disk.Done() && IsWholePath(moved->Key())) {
        // A root of the tree has become a folder like any other.
        const std::wstring path = WithoutSeparator(source);
        moved->SetKey({});
        moved->SetText(std::wstring_view(path).substr(path.rfind(L'\\') + 1));
    }
    const auto isMarked = [](const Node* node) { return node != nullptr && IsMarked(*node); };
    const bool changesList = isMarked(moved) || isMarked(oldParent) || (moved && isMarked(moved->Parent()));
    if (oldParent != nullptr) {
        RestoreButton(*oldParent);
        m_checks.Recursive() ? FollowChildren(*oldParent) : ClearEmptied(*oldParent);
    }
    if (moved != nullptr && (m_checks.Recursive() || IsMarked(*moved)))
        m_checks.TreeSetParents(*moved, m_checks.Recursive() ? StateOfRow(*moved) : kMixed);
    m_context.TV.GetNodes().MarksWritten();
    if (changesList) m_owner.RebuildBoundList();
}

/// A folder that looks empty now but is not, since the move failed, can be opened again.
void Drop::RestoreButton(Node& folder)
{
    const std::wstring path = m_tree.FolderOf(folder);
    if (folder.Children() > 0 || !IsWholePath(path) || !m_tree.hasSubDirectory(path)) return;
    m_context.TV.GetNodes().AddChild(folder, L"", 0).WriteMarks(folder.Checked(), false);
}

/// The state that a node and its siblings give to their parent.
long Drop::StateOfRow(Node& node)
{
    if (!m_checks.TreeCheckSibling(node, node.Checked())) return kMixed;
    return node.Checked() ? kChecked : kUnchecked;
}

/// Gives a folder that has lost a child, and those above it, the state that the others make.
void Drop::FollowChildren(Node& folder)
{
    if (Node* child = folder.Child()) return m_checks.TreeSetParents(*child, StateOfRow(*child));
    if (folder.Bold()) folder.WriteMarks(false, false);
    if (folder.Parent() != nullptr) m_checks.TreeSetParents(folder, StateOfRow(folder));
}

/// The same where a tick stands for one folder only: what was mixed for the sake of the lost child is mixed no more.
void Drop::ClearEmptied(Node& folder)
{
    for (Node* at = &folder; at != nullptr && at->Bold() && !at->Checked(); at = at->Parent()) {
        for (Node* child = at->Child(); child != nullptr; child = child->Next())
            if (IsMarked(*child)) return;
        at->WriteMarks(false, false);
    }
}

}  // namespace sylvex
