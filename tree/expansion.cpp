#include <optional>
#include <string>
#include <vector>

#include "platform/sort_keys.h"
#include "platform/text.h"
#include "tree/folder_tree.h"
#include "tree/tree_icons.h"
#include "tree/version.h"

namespace sylvex {

/// The shown entries of one folder in the order of the listing; the names stand one behind the other in `names`.
struct FolderTree::Listing {
    struct Entry {
        std::size_t start;
        std::size_t length;
        std::uint8_t kind;
    };
    std::wstring names;
    std::vector<Entry> folders;
    std::vector<Entry> files;

    std::wstring_view NameOf(const Entry& entry) const
    {
        return std::wstring_view(names).substr(entry.start, entry.length);
    }
};

namespace {

// What the platform reads field by field, and what sorting needs no longer: reports know them all the same.
constexpr Marker si{L"{SHFILEINFO}"};
constexpr Marker FolderPic{L"{Nothing}"};
constexpr Marker TempNode{L"{Nothing}"};

}  // namespace

void FolderTree::LoadChildren(Node& node)
{
    if (node.Children() != 1 || node.Child()->Children() != 0) return;
    const NodeRef kept(&node);
    // Letting go of the child's tag may run code of the host.
    node.Collection().Remove(*node.Child());
    if (kept) EnumFilesUnder(node);
}

/// The variables of one reading of a folder.
struct FolderTree::FolderLocals {
    std::wstring sPath;
    std::wstring sExt;
    std::uintptr_t hFind = 0;  ///< not 0 while the folder is being read
    std::wstring oldPath;
    FileEntry W32FD;
    IconHandle hIcon = 0;
    Node* n2 = nullptr;
    std::size_t L4 = 0;
    NodeRef n;
};

void FolderTree::EnumFilesUnder(Node& n)
{
    FolderLocals own;
    own.n = NodeRef(&n);
    const auto locals = VARIABLES(own.sPath, own.sExt, own.hFind, own.oldPath, own.W32FD, si, own.hIcon, FolderPic,
                                  TempNode, own.n2, own.L4, own.n);
    std::optional<TreeView::Updating> hidden;
    Trapped(m_context.module, VARIABLES(own.n), locals, [&](int& line) {
        hidden.emplace(m_context.TV);
        line = 2;
        own.sPath = FolderOf(n);
        line = 3;
        const Listing listing = ReadFolder(own);
        line = 4;
        AddFolders(n, listing, own);
        line = 5;
        n.SetSorted(true);
        n.SetSorted(false);
        line = 6;
        AddFiles(listing, own);
        line = 8;
        hidden->End();
        if (!m_context.TV.Visible()) m_context.TV.SetVisible(true);
    });
}

/// Reads the folder once. The end of the listing is a name that does not change but for letter case; that names are
/// equal to the user's language (as "strasse" and its other spelling are) is no such end.
FolderTree::Listing FolderTree::ReadFolder(FolderLocals& own)
{
    Listing listing;
    Regional& regional = m_context.platform.regional;
    const auto search = m_context.platform.files.Search(own.sPath + L"*.*");
    own.hFind = search != nullptr ? 1 : 0;
    for (bool more = search != nullptr; more; more = search->Next()) {
        const FileEntry& entry = search->Entry();
        if (entry.name.empty() || EqualName(regional, entry.name, own.oldPath)) break;
        own.oldPath = entry.name;
        if (entry.name.starts_with(L'.')) continue;
        auto& group = entry.IsDirectory() ? listing.folders : listing.files;
        group.push_back({listing.names.size(), entry.name.size(), KindOf(entry)});
        listing.names += entry.name;
    }
    own.hFind = 0;
    return listing;
}

void FolderTree::AddFolders(Node& n, const Listing& listing, FolderLocals& own)
{
    Nodes& nodes = n.Collection();
    const int closed = nodes.Images().NumberOfKey(L"cl");
    const int open = nodes.Images().NumberOfKey(L"op");
    for (const Listing::Entry& folder : listing.folders) {
        own.n2 = &nodes.AddChild(n, listing.NameOf(folder), closed, open);
        own.n2->SetKind(folder.kind);
        nodes.DeferPlaceholder(*own.n2);
        ++own.L4;
    }
}

void FolderTree::AddFiles(const Listing& listing, FolderLocals& own)
{
    const bool byType = CheckVersion(m_context.platform);
    // The listing's order, not the sorted one, settles which file gives its type the picture.
    std::vector<int> images(listing.files.size());
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = ImageOfFile(listing.NameOf(listing.files[i]), byType, own);
    // The shell may have let messages through, and with them a host that removes the node.
    Node& parent = *own.n;
    Nodes& nodes = parent.Collection();
    SortKeys keys(listing.files.size());
    for (const Listing::Entry& file : listing.files)
        m_context.platform.regional.AppendSortKey(listing.NameOf(file), keys.Next());
    for (const std::uint32_t place : keys.Sorted()) {
        own.n2 = &nodes.AddChild(parent, listing.NameOf(listing.files[place]), images[place]);
        own.n2->SetKind(listing.files[place].kind);
        ++own.L4;
    }
}

/// The number of the file's picture; a type's first file adds it to the image list.
int FolderTree::ImageOfFile(std::wstring_view name, bool byType, FolderLocals& own)
{
    ImageNames& names = m_context.TV.Images();
    if (!byType) return names.NumberOfKey(L"new");
    ImageList& pictures = m_context.ImageList1;
    const std::wstring extension = GetExt(name);
    std::wstring& sExt = own.sExt;
    sExt = extension;
    if (sExt.empty()) sExt = L"None";
    if (IsNumeric(sExt)) sExt += L"@@";
    if (!KeyExists(pictures, sExt)) {
        Shell& shell = m_context.platform.shell;
        const std::wstring path = own.sPath + std::wstring(name);
        OwnedIcon icon = extension == L"ico" ? shell.IconInFile(path, 0) : shell.FileIcon(path);
        own.hIcon = icon.Get();
        LoadImageList(m_context.platform, pictures, std::move(icon), sExt);
        own.hIcon = 0;
    }
    return names.NumberOfKey(sExt);
}

bool FolderTree::MatchesFilter(std::wstring_view name)
{
    for (const std::wstring& pattern : m_state.SylvexFilter)
        if (LikePattern(m_context.platform.regional, name, pattern)) return true;
    return false;
}

bool FolderTree::hasSubDirectory(const std::wstring& sPath)
{
    return Trapped(m_context.module, VARIABLES(sPath), [&](int& line) {
        const auto search = m_context.platform.files.Search(sPath + L"*.*");
        for (bool more = search != nullptr; more; more = search->Next()) {
            line = 2;
            const FileEntry& entry = search->Entry();
            if (entry.name.starts_with(L'.')) continue;
            if (entry.IsDirectory() || MatchesFilter(entry.name)) return true;
        }
        return false;
    });
}

}  // namespace sylvex
