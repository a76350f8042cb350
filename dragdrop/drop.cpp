#include "dragdrop/drop.h"

#include "dragdrop/drag_tree.h"
#include "platform/path_names.h"
#include "platform/text.h"
#include "tree/relocation.h"

namespace sylvex {

namespace {

constexpr short kMoveFlavor = 4;

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
    return RefusalByPath(m_tree.DiskPathOf(*m_state.m_nodDrag), m_tree.DiskPathOf(target));
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

void Drop::Move(DropLocals& locals, const NodeRef& moved, const NodeRef& target, int& line)
{
    line = 5;
    locals.DropDestin = m_tree.DiskPathOf(*target);
    locals.DropSource = m_tree.DiskPathOf(*moved);
    const NodeRef node(&*moved);  // what is passed is the variable of dragging, which another press changes
    const NodeRef oldParent(moved->Parent());
    {
        Relocation relocation(m_tree, *node, *target, locals.DropSource, locals.DropDestin);
        line = 6;
        relocation.PutUnder();
        line = 7;
        m_disk.WindowsDiskOps(locals.DropSource, locals.DropDestin, kMoveFlavor);
        if (m_disk.Done()) relocation.Arrived();
    }
    line = 8;
    Say(L"Successful drop of folder " + locals.DropSource + L"\ronto " + locals.DropDestin);
    line = 9;
    Settle(node.IfAlive(), oldParent.IfAlive(), locals.DropSource);
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
        m_tree.RestoreButton(*oldParent);
        m_checks.LostChild(*oldParent);
    }
    if (moved != nullptr) m_checks.GainedChild(*moved);
    m_context.TV.GetNodes().MarksWritten();
    if (changesList) m_owner.RebuildBoundList();
}

}  // namespace sylvex
