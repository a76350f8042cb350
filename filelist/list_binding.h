#pragma once

#include <memory>
#include <string>

#include "filelist/list_state.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// Binds the host's list view and owns its columns, image lists and sorting.
class ListBinding {
public:
    /// The arguments outlive the object.
    ListBinding(const Context& context, FolderTree& tree, FileListState& state)
        : m_context(context), m_tree(tree), m_state(state)
    {
    }

    /// The whole sequence of handing over a list view: image lists, folders, captions, columns, show. Null stores
    /// nothing, shows the message that the image lists could not be attached, and fails for want of a list. The error
    /// trap is the caller's, as for all that is the body of a property.
    void Bind(const std::shared_ptr<ListView>& New_ReqListView);
    /// Attaches the system's image lists; false when no list is bound.
    bool AssignSysIL();
    /// Empties the bound list and makes its sixteen columns anew.
    void LVColumnHeaders();
    /// False only when the volume of SourcePath reports a file system whose name does not begin with FAT.
    bool CheckFAT();
    /// The same of the volume with this root; an empty root is the current one.
    bool IsFatVolume(const std::wstring& root);
    /// The sub-item index of the column with this key.
    short LVIdx(const std::wstring& sKey);
    /// Gives the hidden columns their width of 0 again.
    void HideSortColumns();
    /// Ends a build: sorts by a column, attaches the image lists again, resets the pointer.
    void LoadCleanup(short SortCol);

private:
    void LoadCaptions();
    std::wstring Caption(const wchar_t* sModule, unsigned idString, const wchar_t* otherwise);

    const Context& m_context;
    FolderTree& m_tree;
    FileListState& m_state;
};

}  // namespace sylvex
