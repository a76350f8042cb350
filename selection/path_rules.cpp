#include "selection/path_rules.h"

#include <algorithm>

#include "platform/text.h"

namespace sylvex {

namespace {

using Entry = PathRules::Entry;

/// The path with one more name, which a drive's root has its separator for already.
std::wstring Joined(const std::wstring& path, const std::wstring& name)
{
    if (path.empty()) return name;
    return path.ends_with(L'\\') ? path + name : path + L'\\' + name;
}

/// As rules have it: with its separator when it is a drive's root.
std::wstring AsRule(std::wstring path)
{
    constexpr std::size_t kDriveLength = 2;
    return path.size() == kDriveLength && path.back() == L':' ? path + L'\\' : path;
}

void List(const Entry& entry, const std::wstring& path, std::vector<PathRules::Rule>& rules)
{
    if (entry.branch) rules.push_back({AsRule(path), *entry.branch, PathRules::Reach::Branch});
    if (entry.files) rules.push_back({AsRule(path), *entry.files, PathRules::Reach::Files});
    for (const auto& [lower, child] : entry.below)
        List(*child, Joined(path, child->name), rules);
}

/// Gives whether nothing is left to say of the entry, around which `folders` and `files` are taken or left out.
bool MinimiseBelow(Entry& entry, bool folders, bool files)
{
    const bool state = entry.branch.value_or(folders);
    const bool stateOfFiles = entry.files.value_or(state);
    if (entry.files == state) entry.files.reset();
    std::erase_if(entry.below, [&](auto& child) { return MinimiseBelow(*child.second, state, stateOfFiles); });
    // What nothing else is said of may be a file as well as a folder.
    if (entry.branch == folders && (entry.IsFolder() || files == folders)) entry.branch.reset();
    return !entry.branch && !entry.IsFolder();
}

}  // namespace

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

void PathRules::Add(const Rule& rule)
{
    Entry* entry = m_root.get();
    for (const std::wstring_view name : NamesOf(rule.path)) {
        std::unique_ptr<Entry>& child = entry->below[LowerText(*m_regional, name)];
        if (child == nullptr) {
            child = std::make_unique<Entry>();
            child->name = name;
        }
        entry = child.get();
    }
    (rule.reach == Reach::Branch ? entry->branch : entry->files) = rule.include;
}

void PathRules::Minimise()
{
    MinimiseBelow(*m_root, false, false);
}

const PathRules::Entry* PathRules::Find(const Entry& entry, std::wstring_view name) const
{
    const auto found = entry.below.find(LowerText(*m_regional, name));
    return found != entry.below.end() ? found->second.get() : nullptr;
}

bool PathRules::Includes(std::wstring_view path) const
{
    const std::vector<std::wstring_view> names = NamesOf(path);
    const bool isFolder = path.ends_with(L'\\');
    const Entry* entry = m_root.get();
    bool state = false;
    for (std::size_t at = 0; at < names.size(); ++at) {
        const Entry* const child = Find(*entry, names[at]);
        const bool isLast = at + 1 == names.size();
        if (child == nullptr) return isLast && !isFolder ? entry->files.value_or(state) : state;
        // What has a rule below it and none of its own is a folder.
        entry = child;
        state = entry->branch.value_or(state);
    }
    return isFolder ? entry->files.value_or(state) : state;
}

std::vector<PathRules::Rule> PathRules::Rules() const
{
    std::vector<Rule> rules;
    List(*m_root, {}, rules);
    return rules;
}

}  // namespace sylvex
