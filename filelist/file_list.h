#pragma once

#include <string>

#include "checks/tree_select.h"
#include "filelist/file_types.h"
#include "filelist/list_binding.h"
#include "filelist/ticked.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// Fills the bound list view with what is ticked in the tree.
class FileList {
public:
    /// The arguments outlive the object.
    FileList(const Context& context, FolderTree& tree, const TreeSelect& checks, FileListState& state);

    /// The list view bound, kept in existence by the caller. Raises 91 when none is.
    std::shared_ptr<ListView> Bound() const { return m_state.BoundList(); }
    bool IsBound() const { return m_state.m_ReqListView != nullptr; }
    /// What stands in the type column of a folder's row.
    const std::wstring& FolderCaption() const { return m_state.sFolder; }

    /// Adds the ticked nodes below `pNode` to the bound list: a row for each file, a row for each folder and pattern.
    /// Null: nothing happens. The outermost call (`RecursiveCall` false) ends with LoadCleanup. Never clears the list.
    void BuildFileList(Node* pNode, bool RecursiveCall);
    /// Hides the bound list, fills it anew from the tree's first node when `refill`, and shows it again; where filling
    /// fails it stays hidden. `line` is the statement in error reports, which moves on by two. Raises 91 without a
    /// list.
    void Rebuild(int& line, bool refill = true);
    /// Ticks those children of the node that the bound list shows: a row's text is their path, and for a folder that
    /// path, the separator and one of the patterns. `SearchString` is the path that is being looked for.
    void MarkListed(const NodeRef& node, std::wstring& SearchString);
    /// The part of `Arq` behind its last separator; empty without one.
    std::wstring ReturnFileName(const std::wstring& Arq);
    /// The patterns of a ticked folder, joined by bars. The error trap of both is the caller's.
    std::wstring BuildFileListFilter() const;
    void LetBuildFileListFilter(const std::wstring& New_BuildFileListFilter);

    ListBinding& Binding() { return m_binding; }

private:
    void Refill();
    Ticked FindTicked(Node& top, std::wstring& sPath);

    const Context& m_context;
    FolderTree& m_tree;
    const TreeSelect& m_checks;
    FileListState& m_state;
    ListBinding m_binding;
    FileTypes m_types;
};

}  // namespace sylvex
