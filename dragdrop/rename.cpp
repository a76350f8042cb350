#include "dragdrop/rename.h"

namespace sylvex {

namespace {

constexpr short kRenameFlavor = 128;
constexpr long kCancelled = -1;
constexpr int kEditAgainAfter = 100;  // milliseconds

}  // namespace

Rename::Rename(Instance& instance, FolderTree& tree, DiskOperations& disk, DragOwner& owner)
    : m_instance(instance),
      m_tree(tree),
      m_disk(disk),
      Timer2(instance.platform.timers.Create([this, &owner] { FromPlatform(owner, [this] { Timer2_Timer(); }); }))
{
}

void Rename::BeforeLabelEdit()
{
    const Node* selected = m_instance.TV.SelectedItem();
    if (selected == nullptr) throw ObjectNotSet();
    if (!selected->Text().empty()) m_instance.sNodeText = selected->Text();
}

void Rename::AfterLabelEdit(bool& Cancel, const std::wstring& NewString, RenameLocals& locals, int& line)
{
    line = 2;
    m_instance.nodX = NodeRef(m_instance.TV.SelectedItem());
    if (!m_instance.nodX) throw ObjectNotSet();
    // The host may have selected another node meanwhile, which nobody wants to rename.
    if (m_instance.nodX.IfAlive() != m_instance.TV.EditedNode()) {
        Cancel = true;
        return;
    }
    // While the shell asks, the person may drag, which has the control's member for itself.
    const NodeRef edited = m_instance.nodX;
    if (IsFileName(NewString)) {
        const std::wstring name = NewString.substr(0, NewString.find_last_not_of(L". ") + 1);
        m_instance.FullPath =
            m_instance.nodX->Text().empty() ? std::wstring() : m_tree.BuildFullPath(&*m_instance.nodX);
        line = 3;
        SplitPath(locals);
        line = 5;
        locals.Success = m_disk.WindowsDiskOps(m_instance.FullPath, locals.Temp + name, kRenameFlavor);
        line = 6;
        if (locals.Success != kCancelled) return Keep(edited, name, NewString, Cancel);
    }
    line = 7;
    // The disk has the old name still; under the typed one the node would stand for another folder.
    Cancel = true;
    EditAgain(edited, NewString);
}

/// The disk takes no blanks and full stops at the end of a name, so the node has none either.
void Rename::Keep(const NodeRef& edited, const std::wstring& name, const std::wstring& typed, bool& Cancel)
{
    if (name == typed) return;
    Cancel = true;
    if (edited) edited->SetText(name);
}

/// The folder's part of the path, with its separator, and the path without the separator at its end.
void Rename::SplitPath(RenameLocals& locals)
{
    std::wstring& path = m_instance.FullPath;
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
    m_instance.platform.boxes.Show(m_instance.TV.hWnd(), L"Error. Enter a valid file name (or Esc).", {}, kBoxOk);
    Timer2->SetInterval(kEditAgainAfter);
    Timer2->SetEnabled(true);
}

void Rename::Timer2_Timer()
{
    Trapped(m_instance, L"Timer2_Timer", kNone, kNone, [&](int& line) {
        line = 1;
        Timer2->SetEnabled(false);  // at once, so that it ticks once whatever opening the label runs
        line = 2;
        const Node* selected = m_instance.TV.SelectedItem();
        const bool same = selected != nullptr && selected == m_refused.IfAlive();
        m_refused = NodeRef();
        same ? m_instance.TV.StartLabelEdit(m_typed) : m_instance.TV.StartLabelEdit();
    });
}

}  // namespace sylvex
