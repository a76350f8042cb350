#pragma once

#include <string>

#include "tree/folder_tree.h"

namespace sylvex {

/// A node on its way under another. While it lives, the node stands for the folder at the old place, wherever the tree
/// shows it, and so it does afterwards unless the disk has followed.
class Relocation {
public:
    /// `source` and `target` are where both are on the disk (FolderTree::DiskPathOf). The arguments outlive the object;
    /// one tree has one relocation at a time.
    Relocation(FolderTree& tree, Node& moved, Node& folder, const std::wstring& source, const std::wstring& target);
    ~Relocation();
    Relocation(const Relocation&) = delete;
    Relocation& operator=(const Relocation&) = delete;

    /// Puts the node under the folder in the tree, and shows it there. Opening the folder may run code of the host;
    /// raises 35605 when one of them is gone.
    void PutUnder();
    /// The disk has followed: the node stands for the folder at the new place, where that is.
    void Arrived();

private:
    friend class FolderTree;

    FolderTree& m_tree;
    const NodeRef m_moved;
    const NodeRef m_folder;
    const std::wstring m_source;
    const std::wstring& m_target;
    bool m_isPutting = false;
};

}  // namespace sylvex
