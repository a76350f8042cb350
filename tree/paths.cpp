#include "platform/path_names.h"
#include "platform/star_match.h"
#include "platform/text.h"
#include "tree/folder_tree.h"

namespace sylvex {

std::wstring FolderTree::QualifyPath(const std::wstring& MyString)
{
    return Trapped(m_context.module, VARIABLES(MyString),
                   [&] { return MyString.ends_with(L'\\') ? MyString : MyString + L'\\'; });
}

std::wstring FolderTree::StripNull(const std::wstring& strIn)
{
    std::size_t nul = 0;
    return Trapped(m_context.module, VARIABLES(strIn), VARIABLES(nul), [&](int& line) {
        nul = strIn.find(L'\0');
        if (nul != std::wstring::npos) return strIn.substr(0, nul);
        line = 2;
        const std::size_t first = strIn.find_first_not_of(L' ');
        if (first == std::wstring::npos) return std::wstring();
        return strIn.substr(first, strIn.find_last_not_of(L' ') - first + 1);
    });
}

std::wstring FolderTree::GetExt(std::wstring_view Name)
{
    std::size_t dot = 0;
    return Trapped(m_context.module, VARIABLES(Name), VARIABLES(dot), [&](int& line) {
        dot = Name.rfind(L'.');
        if (dot == std::wstring_view::npos || dot + 1 == Name.size()) return std::wstring();
        line = 2;
        return LowerText(m_context.platform.regional, Name.substr(dot + 1));
    });
}

std::wstring FolderTree::FolderLocation(int lFolder)
{
    return Trapped(m_context.module, VARIABLES(lFolder),
                   [&] { return m_context.platform.shell.SpecialFolder(lFolder); });
}

void FolderTree::ReadDocumentsFolder()
{
    constexpr int kDocumentsFolder = 5;
    m_state.m_MyDocs = FolderLocation(kDocumentsFolder);
}

std::wstring FolderTree::GetResourceStringFromFile(const std::wstring& sModule, unsigned idString)
{
    return Trapped(m_context.module, VARIABLES(sModule, idString),
                   [&] { return m_context.platform.shell.ResourceString(sModule, idString); });
}

std::wstring FolderTree::BuildFullPath(const Node* nod)
{
    std::wstring sFullPath;
    return Trapped(m_context.module, VARIABLES(nod), VARIABLES(sFullPath), [&](int& line) {
        if (nod == nullptr) throw ObjectNotSet();
        sFullPath = nod->FullPath();
        line = 2;
        return PathOf(sFullPath, nod->Text());
    });
}

std::wstring FolderTree::FolderOf(const Node& node)
{
    const std::wstring place = m_places.Of(node);
    // A folder whose own name has a listed extension is a folder all the same.
    return QualifyPath(place.empty() ? BuildFullPath(&node) : place);
}

std::wstring FolderTree::DiskPathOf(Node& node)
{
    std::wstring place = m_places.Of(node);
    if (!place.empty()) return place;
    if (IsWholePath(node.Key())) return node.Key();
    return node.Text().empty() ? std::wstring() : WithoutSeparator(BuildFullPath(&node));
}

namespace {

/// Replaces every occurrence of `find`, whatever its letter case.
std::wstring ReplaceText(Regional& regional, std::wstring_view text, std::wstring_view find, std::wstring_view by)
{
    const std::wstring lowerText = LowerText(regional, text);
    const std::wstring lowerFind = LowerText(regional, find);
    std::wstring result;
    std::size_t from = 0;
    for (;;) {
        const std::size_t at = lowerText.find(lowerFind, from);
        result += text.substr(from, at - from);
        if (at == std::wstring::npos) return result;
        result += by;
        from = at + find.size();
    }
}

/// The path of a node that runs through a drive: its letter and colon, then what follows the drive's own text.
std::wstring PathFromDrive(std::wstring_view fullPath, std::size_t colon)
{
    const std::wstring_view fromLetter = fullPath.substr(colon - 1);
    std::wstring path(fromLetter.substr(0, 2));
    const std::size_t separator = fromLetter.find(L'\\');
    if (separator != std::wstring_view::npos && separator > 0) path += fromLetter.substr(separator);
    return path;
}

}  // namespace

std::wstring FolderTree::PathOf(std::wstring_view fullPath, std::wstring_view text)
{
    const std::size_t colon = fullPath.rfind(L':');
    std::wstring path;
    if (colon != std::wstring_view::npos && colon > 0) {
        path = PathFromDrive(fullPath, colon);
    } else {
        const std::wstring& documents = m_state.m_MyDocs;
        const std::wstring documentsText = documents.size() > 3 ? documents.substr(3) : std::wstring();
        path = ReplaceText(m_context.platform.regional, fullPath, L"Desktop\\" + documentsText, documents);
    }
    const std::wstring sExt = m_state.SylvexFilter.empty() ? std::wstring() : GetExt(text);
    if (!sExt.empty())
        for (const std::wstring& pattern : m_state.SylvexFilter)
            if (EqualText(m_context.platform.regional, sExt, GetExt(pattern))) return path;
    return QualifyPath(path);
}

bool LikePattern(Regional& regional, std::wstring_view text, std::wstring_view pattern)
{
    const std::wstring lowerText = LowerText(regional, text);
    const std::wstring lowerPattern = LowerText(regional, pattern);
    const auto used = MatchStars(
        lowerPattern.size(), lowerText.size(), [&](std::size_t p) { return lowerPattern[p] == L'*'; },
        [&](std::size_t p, std::size_t t) { return lowerPattern[p] == L'?' || lowerPattern[p] == lowerText[t]; });
    return used && lowerPattern.find_first_not_of(L'*', *used) == std::wstring::npos;
}

}  // namespace sylvex
