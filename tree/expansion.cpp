#include <algorithm>
#include <string>
#include <vector>

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
        int image;
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

/// Hides the tree's painting for its lifetime.
class Updating {
public:
    explicit Updating(TreeView& tree) : m_tree(tree) { m_tree.BeginUpdate(); }
    ~Updating() { m_tree.EndUpdate(); }
    Updating(const Updating&) = delete;
    Updating& operator=(const Updating&) = delete;

private:
    TreeView& m_tree;
};

/// The order of the entries by name: places in `count` entries whose names `nameAt` gives.
template <class NameAt>
std::vector<std::uint32_t> SortedPlaces(Regional& regional, std::size_t count, NameAt&& nameAt)
{
    struct Key {
        std::uint64_t head;  // the key's first bytes, which settle most comparisons
        std::size_t start;
        std::uint32_t length;
        std::uint32_t place;
    };
    std::string bytes;
    std::vector<Key> keys(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t start = bytes.size();
        regional.AppendSortKey(nameAt(i), bytes);
        keys[i] = {0, start, static_cast<std::uint32_t>(bytes.size() - start), static_cast<std::uint32_t>(i)};
        for (std::size_t b = 0; b < sizeof keys[i].head; ++b)
            keys[i].head = keys[i].head << 8 | (start + b < bytes.size() ? static_cast<unsigned char>(bytes[start + b]) : 0);
    }
    const std::string_view all = bytes;
    std::stable_sort(keys.begin(), keys.end(), [all](const Key& left, const Key& right) {
        if (left.head != right.head) return left.head < right.head;
        return all.substr(left.start, left.length) < all.substr(right.start, right.length);
    });
    std::vector<std::uint32_t> places(count);
    for (std::size_t i = 0; i < count; ++i) places[i] = keys[i].place;
    return places;
}

}  // namespace

void FolderTree::LoadChildren(Node& node)
{
    if (node.Children() != 1 || node.Child()->Children() != 0) return;
    node.Collection().Remove(*node.Child());
    EnumFilesUnder(node);
}

void FolderTree::EnumFilesUnder(Node& n)
{
    std::wstring sPath;
    Trapped(m_instance, L"EnumFilesUnder", VARIABLES(n), VARIABLES(sPath), [&](int& line) {
        line = 1;
        const Updating hidden(m_instance.TV);
        line = 2;
        sPath = BuildFullPath(&n);
        line = 3;
        const Listing listing = ReadFolder(sPath);
        line = 4;
        AddFolders(n, listing);
        line = 6;
        AddFiles(n, sPath, listing);
    });
}

/// Reads the folder once. The end of the listing is a name that does not change.
FolderTree::Listing FolderTree::ReadFolder(const std::wstring& sPath)
{
    Listing listing;
    Regional& regional = m_instance.platform.regional;
    const auto search = m_instance.platform.files.Search(sPath + L"*.*");
    std::wstring oldPath;
    for (bool more = search != nullptr; more; more = search->Next()) {
        const FileEntry& entry = search->Entry();
        if (entry.name.empty() || EqualText(regional, entry.name, oldPath)) break;
        oldPath = entry.name;
        if (entry.name.starts_with(L'.')) continue;
        auto& group = entry.IsDirectory() ? listing.folders : listing.files;
        group.push_back({listing.names.size(), entry.name.size(), 0});
        listing.names += entry.name;
    }
    return listing;
}

void FolderTree::AddFolders(Node& n, const Listing& listing)
{
    Nodes& nodes = n.Collection();
    const int closed = nodes.Images().NumberOfKey(L"cl");
    const int open = nodes.Images().NumberOfKey(L"op");
    const auto nameAt = [&](std::size_t place) { return listing.NameOf(listing.folders[place]); };
    for (const std::uint32_t place : SortedPlaces(m_instance.platform.regional, listing.folders.size(), nameAt))
        nodes.DeferPlaceholder(nodes.AddChild(n, nameAt(place), closed, open));
}

void FolderTree::AddFiles(Node& n, const std::wstring& sPath, const Listing& listing)
{
    std::wstring sExt;
    const bool byType = CheckVersion(m_instance, m_instance.platform.system);
    // The listing's order, not the sorted one, settles which file gives its type the picture.
    std::vector<int> images(listing.files.size());
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = ImageOfFile(sPath, listing.NameOf(listing.files[i]), sExt, byType);
    Nodes& nodes = n.Collection();
    const auto nameAt = [&](std::size_t place) { return listing.NameOf(listing.files[place]); };
    for (const std::uint32_t place : SortedPlaces(m_instance.platform.regional, images.size(), nameAt))
        nodes.AddChild(n, nameAt(place), images[place]);
}

/// The number of the file's picture; a type's first file adds it to the image list.
int FolderTree::ImageOfFile(const std::wstring& sPath, std::wstring_view name, std::wstring& sExt, bool byType)
{
    ImageNames& names = m_instance.TV.Images();
    if (!byType) return names.NumberOfKey(L"new");
    ImageList& pictures = m_instance.ImageList1;
    const std::wstring extension = GetExt(name);
    sExt = extension;
    if (sExt.empty()) sExt = L"None";
    if (IsNumeric(sExt)) sExt += L"@@";
    if (!KeyExists(pictures, sExt)) {
        Shell& shell = m_instance.platform.shell;
        const std::wstring path = sPath + std::wstring(name);
        LoadImageList(m_instance, pictures, extension == L"ico" ? shell.ExtractIcon(path, 0) : shell.FileIcon(path), sExt);
    }
    return names.NumberOfKey(sExt);
}

bool FolderTree::MatchesFilter(std::wstring_view name)
{
    for (const std::wstring& pattern : m_instance.SylvexFilter)
        if (LikePattern(m_instance.platform.regional, name, pattern)) return true;
    return false;
}

bool FolderTree::hasSubDirectory(const std::wstring& sPath)
{
    return Trapped(m_instance, L"hasSubDirectory", VARIABLES(sPath), kNone, [&](int& line) {
        line = 1;
        const auto search = m_instance.platform.files.Search(sPath + L"*.*");
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
