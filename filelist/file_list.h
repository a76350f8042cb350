#pragma once

#include <string>

#include "filelist/file_types.h"
#include "filelist/list_binding.h"
#include "filelist/ticked.h"
#include "instance/instance.h"
#include "tree/folder_tree.h"

namespace sylvex {

/// Fills the bound list view with what is ticked in the tree.
class FileList {
public:
    FileList(Instance& instance, FolderTree& tree);

    /// Adds the ticked nodes below `pNode` to the bound list: a row for each file, a row for each folder and pattern.
    /// Null: nothing happens. The outermost call (`RecursiveCall` false) ends with LoadCleanup. Never clears the list.
    void BuildFileList(Node* pNode, bool RecursiveCall);
    /// The part of `Arq` behind its last separator; empty without one.
    std::wstring ReturnFileName(const std::wstring& Arq);
    /// The patterns of a ticked folder, joined by bars. The error trap of both is the caller's.
    std::wstring BuildFileListFilter() const;
    void LetBuildFileListFilter(const std::wstring& New_BuildFileListFilter);

    ListBinding& Binding() { return m_binding; }

private:
    Ticked FindTicked(Node& top, std::wstring& sPath);

    Instance& m_instance;
    FolderTree& m_tree;
    ListBinding m_binding;
    FileTypes m_types;
};

}  // namespace sylvex
