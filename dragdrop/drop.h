#pragma once

#include <string>

#include "checks/tree_select.h"
#include "dragdrop/disk_operations.h"
#include "dragdrop/drag_session.h"
#include "dragdrop/drag_state.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// The variables of one drop, as the report of its procedure shows them.
struct DropLocals {
    ItemHandle hitemDest = 0;
    std::wstring DropSource;
    std::wstring DropDestin;
};

/// What a release of the mouse does with a dragged folder: it is moved in the tree and then on the disk, unless a rule
/// refuses it.
class Drop {
public:
    /// The arguments outlive the object.
    Drop(const Context& context, FolderTree& tree, DragState& state, TreeSelect& checks, DragSession& session,
         DiskOperations& disk, DragOwner& owner);

    /// A button has been released at `where`, in client pixels; without a drag nothing happens. `line` is the statement
    /// in error reports.
    void Released(Point where, DropLocals& locals, int& line);

private:
    void ActOn(const NodeRef& target, DropLocals& locals, int& line);
    const wchar_t* Refusal(const DropLocals& locals, Node& target);
    const wchar_t* RefusalByPath(const std::wstring& source, const std::wstring& target);
    void Move(DropLocals& locals, const NodeRef& moved, const NodeRef& target, int& line);
    void Settle(Node* moved, Node* oldParent, const std::wstring& source);
    void Say(const std::wstring& text);

    const Context& m_context;
    FolderTree& m_tree;
    DragState& m_state;
    TreeSelect& m_checks;
    DragSession& m_session;
    DiskOperations& m_disk;
    DragOwner& m_owner;
};

}  // namespace sylvex
