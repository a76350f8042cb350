#include "tree/relocation.h"

#include "platform/path_names.h"

namespace sylvex {

Relocation::Relocation(FolderTree& tree, Node& moved, Node& folder, const std::wstring& source,
                       const std::wstring& target)
    : m_tree(tree), m_moved(&moved), m_folder(&folder), m_source(WithoutSeparator(source)), m_target(target)
{
    if (IsWholePath(m_source)) tree.m_places.Note(moved, m_source);
    tree.m_relocation = this;
}

Relocation::~Relocation()
{
    m_tree.m_relocation = nullptr;
}

void Relocation::PutUnder()
{
    // Read before the newcomer is there: a folder with a child would not be read any more.
    m_folder->SetExpanded(true);
    m_isPutting = true;
    m_moved->SetParent(*m_folder);
    m_tree.m_context.TV.SetSelectedItem(&*m_moved);
    m_moved->EnsureVisible();
    m_isPutting = false;
}

void Relocation::Arrived()
{
    DiskPlaces& places = m_tree.m_places;
    const std::wstring place = m_tree.QualifyPath(m_target) + m_source.substr(m_source.rfind(L'\\') + 1);
    places.Moved(m_source, place);
    if (m_moved) places.Settle(*m_moved, place, m_tree.FolderOf(*m_moved->Parent()) + m_moved->Text());
}

bool FolderTree::IsArriving(const Node& folder) const
{
    return m_relocation != nullptr && m_relocation->m_isPutting && m_relocation->m_folder.IfAlive() == &folder;
}

void FolderTree::RestoreButton(Node& folder)
{
    const std::wstring path = FolderOf(folder);
    if (folder.Children() > 0 || !IsWholePath(path) || !hasSubDirectory(path)) return;
    folder.Collection().AddChild(folder, L"", 0).WriteMarks(folder.Checked(), false);
}

}  // namespace sylvex
