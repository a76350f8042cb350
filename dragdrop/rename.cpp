#include "dragdrop/rename.h"

#include "platform/path_names.h"

namespace sylvex {

namespace {

constexpr short kRenameFlavor = 128;
constexpr long kCancelled = -1;
constexpr int kEditAgainAfter = 100;  // milliseconds

}  // namespace

Rename::Rename(const Context& context, FolderTree& tree, DragState& state, DiskOperations& disk, DragOwner& owner)
    : m_context(context),
      m_tree(tree),
      m_state(state),
      m_disk(disk),
      Timer2(context.platform.timers.Create([this, &owner] { FromPlatform(owner, [this] { Timer2_Timer(); }); }))
{
}

void Rename::BeforeLabelEdit()
{
    Node* selected = m_context.TV.SelectedItem();
    if (selected == nullptr) throw ObjectNotSet();
    const bool noted = !selected->Text().empty();
    if (noted) m_state.sNodeText = selected->Text();
    m_begun = NodeRef(noted && selected == m_context.TV.EditedNode() ? selected : nullptr);
}

void Rename::PutBack(Node& selected)
{
    if (&selected == m_begun.IfAlive()) selected.SetText(m_state.sNodeText);
}

namespace {

/// True for the desktop, the documents folder, the computer and the drives, whose texts are no names on the disk but
/// parts of the paths of all that is below them.
bool IsRootOfTheTree(const Node& node)
{
    return node.Parent() == nullptr || node.Key() == L"MyComputer" || IsWholePath(node.Key());
}

}  // namespace

void Rename::AfterLabelEdit(bool& Cancel, const std::wstring& NewString, RenameLocals& locals, int& line)
{
    line = 2;
    m_state.nodX = NodeRef(m_context.TV.SelectedItem());
    if (!m_state.nodX) throw ObjectNotSet();
    // The host may have selected another node meanwhile, which nobody wants to rename.
    if (m_state.nodX.IfAlive() != m_context.TV.EditedNode()) {
        Cancel = true;
        return;
    }
    // While the shell asks, the person may drag, which has the control's member for itself.
    const NodeRef edited = m_state.nodX;
    if (IsFileName(NewString)) {
        const std::wstring name = NewString.substr(0, NewString.find_last_not_of(L". ") + 1);
        if (name == edited->Text()) return Keep(edited, name, NewString, Cancel);
        const bool isRoot = IsRootOfTheTree(*edited);
        m_state.FullPath = isRoot ? std::wstring() : PathOf(*edited);
        line = 3;
        SplitPath(locals);
        line = 5;
        RenameOnDisk(edited, name, locals);
        line = 6;
        if (isRoot) {
            Cancel = true;
            return;
        }
        if (locals.Success != kCancelled) return Keep(edited, name, NewString, Cancel);
    }
    line = 7;
    // The disk has the old name still; under the typed one the node would stand for another folder.
    Cancel = true;
    EditAgain(edited, NewString);
}

/// The node's path as its folder is to be read; empty for a node without a text, whose path would be that of its
/// folder.
std::wstring Rename::PathOf(Node& edited)
{
    if (edited.Text().empty()) return {};
    const std::wstring place = m_tree.Places().Of(edited);
    return place.empty() ? m_tree.BuildFullPath(&edited) : m_tree.QualifyPath(place);
}

/// The label stays as typed whatever the shell answers but for a cancel; the node goes on standing for its own folder.
void Rename::RenameOnDisk(const NodeRef& edited, const std::wstring& name, RenameLocals& locals)
{
    // While the shell asks, another edit may have the variable for itself.
    const std::wstring from = m_state.FullPath;
    const std::wstring to = locals.Temp + name;
    locals.Success = m_disk.WindowsDiskOps(from, to, kRenameFlavor);
    if (locals.Success == kCancelled) return;
    const bool done = m_disk.Done();
    DiskPlaces& places = m_tree.Places();
    if (done) places.Moved(from, to);
    if (edited && edited->Parent() != nullptr && IsWholePath(from))
        places.Settle(*edited, done ? to : from, m_tree.FolderOf(*edited->Parent()) + name);
}

/// The typed text has been taken, but for blanks and full stops at its end, of which the disk takes none.
void Rename::Keep(const NodeRef& edited, const std::wstring& name, const std::wstring& typed, bool& Cancel)
{
    m_begun = NodeRef();
    if (name == typed) return;
    Cancel = true;
    if (edited) edited->SetText(name);
}

/// The folder's part of the path, with its separator, and the path without the separator at its end.
void Rename::SplitPath(RenameLocals& locals)
{
    std::wstring& path = m_state.FullPath;
    for (std::size_t length = path.empty() ? 0 : path.size() - 1; length > 0; --length) {
        locals.i = static_cast<short>(length);
        if (path[length - 1] != L'\\') continue;
        locals.Temp = path.substr(0, length);
        break;
    }
    if (path.ends_with(L'\\')) path.pop_back();
}

void Rename::EditAgain(const NodeRef& edited, const std::wstring& typed)
{
    m_refused = edited;
    m_typed = typed;
    m_context.platform.boxes.Show(m_context.TV.hWnd(), L"Error. Enter a valid file name (or Esc).", {}, kBoxOk);
    Timer2->SetInterval(kEditAgainAfter);
    Timer2->SetEnabled(true);
}

void Rename::Timer2_Timer()
{
    Trapped(m_context.module, [&](int& line) {
        Timer2->SetEnabled(false);  // at once, so that it ticks once whatever opening the label runs
        line = 2;
        const Node* selected = m_context.TV.SelectedItem();
        const bool same = selected != nullptr && selected == m_refused.IfAlive();
        m_refused = NodeRef();
        same ? m_context.TV.StartLabelEdit(m_typed) : m_context.TV.StartLabelEdit();
    });
}

}  // namespace sylvex
