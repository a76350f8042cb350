#pragma once

#include <memory>
#include <string>

#include "dragdrop/disk_operations.h"
#include "dragdrop/drag_owner.h"
#include "dragdrop/drag_state.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// The variables of one rename, as the report of its procedure shows them.
struct RenameLocals {
    short i = 0;
    std::wstring Temp;
    long Success = 0;
};

/// Renames a folder or file on the disk after its label has been edited, and opens a label again whose text was no
/// name.
class Rename {
public:
    /// The arguments outlive the object.
    Rename(const Context& context, FolderTree& tree, DragState& state, DiskOperations& disk, DragOwner& owner);

    /// Notes the selected node's text. Raises 91 without a selection.
    void BeforeLabelEdit();
    /// Gives the selected node that text back when it is the one whose edit began last, and the text that was typed has
    /// not been taken.
    void PutBack(Node& selected);
    /// `Cancel` is set when the node keeps its name. `line` is the statement in error reports.
    void AfterLabelEdit(bool& Cancel, const std::wstring& NewString, RenameLocals& locals, int& line);

private:
    void Timer2_Timer();
    void Keep(const NodeRef& edited, const std::wstring& name, const std::wstring& typed, bool& Cancel);
    std::wstring PathOf(Node& edited);
    void SplitPath(RenameLocals& locals);
    void RenameOnDisk(const NodeRef& edited, const std::wstring& name, RenameLocals& locals);
    void EditAgain(const NodeRef& edited, const std::wstring& typed);

    const Context& m_context;
    FolderTree& m_tree;
    DragState& m_state;
    DiskOperations& m_disk;
    NodeRef m_begun;    // the node whose text was noted, until what was typed has been taken
    NodeRef m_refused;  // the node whose typed text was no name
    std::wstring m_typed;
    std::unique_ptr<Timer> Timer2;
};

}  // namespace sylvex
