#include "selection/path_rules.h"

#include <algorithm>

#include "platform/text.h"

namespace sylvex {

std::vector<std::wstring_view> NamesOf(std::wstring_view path)
{
    std::vector<std::wstring_view> names;
    std::size_t from = 0;
    std::size_t at = path.starts_with(L"\\\\") ? 2 : 0;
    while (from < path.size()) {
        at = std::min(path.find(L'\\', at), path.size());
        if (at > from) names.push_back(path.substr(from, at - from));
        from = ++at;
    }
    return names;
}

PathRules::Children PathRules::ChildrenOf(Name name) const
{
    return {m_below.lower_bound({name, std::wstring()}), m_below.lower_bound({name + 1, std::wstring()})};
}

std::optional<PathRules::Name> PathRules::Below(Name above, std::wstring_view name) const
{
    const auto found = m_below.find({above, LowerText(*m_regional, name)});
    return found != m_below.end() ? std::optional(found->second) : std::nullopt;
}

PathRules::Name PathRules::NeedBelow(Name above, std::wstring_view name)
{
    const auto [place, isNew] =
        m_below.try_emplace({above, LowerText(*m_regional, name)}, static_cast<Name>(m_entries.size()));
    if (isNew) m_entries.push_back({std::wstring(name), above, {}, {}});
    return place->second;
}

void PathRules::Add(const Rule& rule)
{
    Name at = kDisks;
    for (const std::wstring_view name : NamesOf(rule.path))
        at = NeedBelow(at, name);
    (rule.reach == Reach::Branch ? m_entries[at].branch : m_entries[at].files) = rule.include;
}

PathRules::Taken PathRules::Inside(Name name, Taken around) const
{
    const bool folders = m_entries[name].branch.value_or(around.folders);
    return {folders, m_entries[name].files.value_or(folders)};
}

bool PathRules::IsFolder(Name name) const
{
    const Children children = ChildrenOf(name);
    return m_entries[name].files.has_value() || children.first != children.second;
}

std::wstring PathRules::PathOf(Name name) const
{
    if (m_entries[name].above == kDisks && m_entries[name].name.ends_with(L':')) return m_entries[name].name + L'\\';
    std::wstring path;
    for (Name at = name; at != kDisks; at = m_entries[at].above)
        path.insert(0, m_entries[at].above == kDisks ? m_entries[at].name : L'\\' + m_entries[at].name);
    return path;
}

/// What one leaves out and the other takes is taken.
void PathRules::Unite(const PathRules& others)
{
    PathRules both(*m_regional);
    const auto add = [&](const PathRules& ours, const PathRules& theirs) {
        for (const Rule& rule : ours.Rules()) {
            const std::wstring inside = rule.path.ends_with(L'\\') ? rule.path : rule.path + L'\\';
            const bool taken = theirs.Includes(rule.reach == Reach::Files ? inside + L'*' : rule.path) ||
                               (rule.reach == Reach::Branch && theirs.Includes(inside));
            if (rule.include || !taken) both.Add(rule);
        }
    };
    add(*this, others);
    add(others, *this);
    *this = std::move(both);
}

void PathRules::Minimise()
{
    PathRules fewer(*m_regional);
    std::vector<Taken> open{{}};
    std::vector<bool> speaksBelow(m_entries.size());
    Walk(
        kDisks,
        [&](Name name) {
            open.push_back(Inside(name, open.back()));
            return true;
        },
        [&](Name name) {
            const Entry& entry = m_entries[name];
            const bool inside = open.back().folders;
            open.pop_back();
            const Taken around = open.back();
            const bool keepsFiles = entry.files.value_or(inside) != inside;
            // What nothing is said of below may be a file as well as a folder.
            const bool isFolder = keepsFiles || speaksBelow[name];
            const bool keepsBranch = inside != around.folders || (!isFolder && entry.branch && inside != around.files);
            if (keepsBranch) fewer.Add({PathOf(name), inside, Reach::Branch});
            if (keepsFiles) fewer.Add({PathOf(name), *entry.files, Reach::Files});
            if (keepsBranch || isFolder) speaksBelow[entry.above] = true;
        });
    *this = std::move(fewer);
}

bool PathRules::Includes(std::wstring_view path) const
{
    const std::vector<std::wstring_view> names = NamesOf(path);
    const bool isFolder = path.ends_with(L'\\');
    Name at = kDisks;
    Taken taken;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto next = Below(at, names[i]);
        const bool isLast = i + 1 == names.size();
        if (!next) return isLast && !isFolder ? taken.files : taken.folders;
        at = *next;
        taken = Inside(at, taken);
    }
    return isFolder ? taken.files : taken.folders;
}

std::vector<PathRules::Rule> PathRules::Rules() const
{
    std::vector<Rule> rules;
    Walk(
        kDisks,
        [&](Name name) {
            if (Branch(name)) rules.push_back({PathOf(name), *Branch(name), Reach::Branch});
            if (m_entries[name].files) rules.push_back({PathOf(name), *m_entries[name].files, Reach::Files});
            return true;
        },
        [](Name) {});
    return rules;
}

}  // namespace sylvex
