#include "navigation/path_search.h"

#include <algorithm>
#include <cstdint>

#include "platform/text.h"

namespace sylvex {

namespace {

constexpr bool IsAscii(wchar_t c)
{
    return static_cast<std::uint32_t>(c) < 128;
}

constexpr wchar_t AsciiLower(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
}

/// Whether a node's text is one part of its path, spelt as in the path. Others (a drive's, the documents folder's, a
/// placeholder's) have their path worked out.
bool IsOnePart(std::wstring_view text)
{
    for (const wchar_t c : text)
        if (c == L':' || c == L'\\') return false;
    return !text.empty();
}

/// Whether the path of the documents folder may stand in place of this text and what follows it.
bool MayBeReplaced(std::wstring_view text)
{
    constexpr std::wstring_view kDesktop = L"desktop";
    if (text.size() < kDesktop.size()) return false;
    const std::wstring_view end = text.substr(text.size() - kDesktop.size());
    for (std::size_t i = 0; i < kDesktop.size(); ++i)
        if (AsciiLower(end[i]) != kDesktop[i]) return false;
    return true;
}

std::wstring_view WithoutStar(std::wstring_view text)
{
    return text.ends_with(L'*') ? text.substr(0, text.size() - 1) : text;
}

/// How a child with path `p` stands to a target followed by a separator.
ChildOnPath Judge(Node& child, std::wstring_view p, const CaselessText& target)
{
    if (!target.BeginsWith(p)) return {};
    std::wstring_view rest = target.Text().substr(p.size());
    if (!p.ends_with(L'\\')) {  // a type that the file filter lists
        if (rest.starts_with(L'\\')) {
            rest.remove_prefix(1);
        } else if (rest != L"*\\") {  // only the beginning of another name
            return {};
        }
    }
    return {&child, rest.empty() || rest == L"*\\"};
}

}  // namespace

CaselessText::CaselessText(Regional& regional, std::wstring_view text)
    : m_regional(&regional), m_text(text), m_lower(LowerText(regional, text))
{
    if (m_lower.size() != m_text.size()) m_lower = m_text;  // compared place by place
}

bool CaselessText::BeginsWith(std::wstring_view start) const
{
    if (start.size() > m_text.size()) return false;
    bool settled = true;
    for (std::size_t i = 0; i < start.size(); ++i) {
        const wchar_t c = start[i];
        if (c == m_text[i] || c == m_lower[i]) continue;
        if (!IsAscii(c)) {
            settled = false;
        } else if (AsciiLower(c) != m_lower[i]) {
            return false;
        }
    }
    return settled || m_lower.starts_with(m_regional->Lower(start));
}

/// Whether the path of a node with this text can end as `parts` do.
bool PathSearch::MayEnd(const Node& node, const std::vector<CaselessText>& parts)
{
    const std::wstring& text = node.Text();
    const CaselessText& last = parts.back();
    // A placeholder, which is never right below a root, has its parent's path and the higher index.
    if (text.empty()) return node.Parent() == nullptr || node.Parent()->Parent() == nullptr || !node.Key().empty();
    if (last.Equals(text)) return true;
    // A drive's text gives nothing but its letter and the colon.
    if (parts.size() == 1) return text.find(L':') != std::wstring::npos;
    const std::size_t behind = last.Text().size() + 1;
    return text.size() >= behind && (text[text.size() - behind] == L'\\' || text.back() == L'\\');
}

/// False only when the node cannot have the path of these parts: its own text and those above it are compared from the
/// end of the path as far as they stand in it as they are.
bool PathSearch::MayBe(const Node& node, const std::vector<CaselessText>& parts)
{
    if (!MayEnd(node, parts)) return false;
    if (!IsOnePart(node.Text())) return true;
    std::size_t part = parts.size() - 1;
    for (const Node* above = node.Parent(); above != nullptr && above->Parent() != nullptr; above = above->Parent()) {
        const std::wstring& text = above->Text();
        if (part == 0 || !IsOnePart(text)) return true;
        if (!parts[--part].Equals(text)) return MayBeReplaced(text);
    }
    return true;
}

Node* PathSearch::First(const std::wstring& path)
{
    Regional& regional = m_context.platform.regional;
    const Nodes& nodes = m_context.TV.GetNodes();
    const CaselessText wanted(regional, m_tree.QualifyPath(path));
    std::vector<CaselessText> parts;
    for (const std::wstring& part : SplitText(wanted.Text().substr(0, wanted.Text().size() - 1), L'\\'))
        parts.emplace_back(regional, part);
    if (parts.empty()) parts.emplace_back(regional, L"");
    // With another separator, or a documents folder whose path would grow together with a name, the texts do not stand
    // in the path as they are.
    const bool narrowed =
        nodes.PathSeparator() == L"\\" && m_tree.DocumentsFolder().find(L'\\', 2) != std::wstring::npos;
    return nodes.FirstOf([&](const Node& node) {
        return (!narrowed || MayBe(node, parts)) && wanted.Equals(m_tree.QualifyPath(m_tree.BuildFullPath(&node)));
    });
}

Descent PathSearch::To(const std::wstring& pText) const
{
    return {CaselessText(m_context.platform.regional, pText + L'\\')};
}

ChildOnPath PathSearch::Towards(Node& parent, Descent& descent)
{
    Regional& regional = m_context.platform.regional;
    const CaselessText& target = descent.target;
    const std::wstring above = parent.FullPath() + parent.Collection().PathSeparator();
    const std::wstring folder = m_tree.PathOf(above, {});
    const bool inside = target.BeginsWith(folder);
    if (inside) descent.reached = std::max(descent.reached, folder.size());
    const std::wstring_view below = inside ? target.Text().substr(folder.size()) : std::wstring_view();
    const CaselessText next(regional, WithoutStar(below.substr(0, below.find(L'\\'))));
    for (Node* child = parent.Child(); child != nullptr; child = child->Next()) {
        const std::wstring& text = child->Text();
        if (inside && !next.Equals(text) && IsOnePart(text)) continue;
        const std::wstring path = m_tree.PathOf(above + text, text);
        if (path.size() <= descent.reached) continue;
        const ChildOnPath found = Judge(*child, path, target);
        if (found.child == nullptr) continue;
        descent.reached = path.size();
        return found;
    }
    return {};
}

}  // namespace sylvex
