#include "tests/simulated/simulated_search.h"

#include "tests/simulated/text.h"

namespace sylvex {

namespace {

const DiskEntry* Lookup(const DiskEntry& folder, std::wstring_view name)
{
    if (const DiskEntry* const child = folder.Child(name)) return child;
    if (name.find(L'~') == name.npos) return nullptr;
    for (const auto& child : folder.children) {
        if (CompareFolded(child->shortName, name) == 0) return child.get();
    }
    return nullptr;
}

}  // namespace

SimulatedSearch::SimulatedSearch(std::shared_ptr<const DiskEntry> folder, bool root, std::wstring_view name,
                                 CallGate& gate, std::shared_ptr<int> open)
    : m_folder(std::move(folder)),
      m_wildcards(name),
      m_gate(gate),
      m_open(std::move(open)),
      m_dots(root ? 0 : 2),
      m_single(!Wildcards::Present(name))
{
    ++*m_open;
    const DiskEntry* const single = m_single ? Lookup(*m_folder, name) : nullptr;
    if (single != nullptr) m_current = single->shared_from_this();
    m_found = single != nullptr ? Show(*single, single->name) : !m_single && Advance();
}

bool SimulatedSearch::Next()
{
    m_gate.Enter("FileSearch::Next");
    return !m_single && Advance();
}

bool SimulatedSearch::Advance()
{
    while (m_place < m_dots) {
        const std::wstring_view name = m_place++ == 0 ? L"." : L"..";
        if (m_wildcards.Matches(name)) return Show(*m_folder, name);
    }
    while (m_place - m_dots < m_folder->children.size()) {
        m_current = m_folder->children[m_place++ - m_dots];
        const bool matches = m_wildcards.Matches(m_current->name) ||
                             (!m_current->shortName.empty() && m_wildcards.Matches(m_current->shortName));
        if (matches) return Show(*m_current, m_current->name);
    }
    return false;
}

bool SimulatedSearch::Show(const DiskEntry& entry, std::wstring_view name)
{
    const bool dots = &entry == m_folder.get();
    m_entry = {entry.attributes,
               entry.creationTime,
               entry.lastAccessTime,
               entry.lastWriteTime,
               entry.size,
               name,
               dots ? std::wstring_view() : std::wstring_view(entry.shortName),
               entry.reparseTag};
    return true;
}

}  // namespace sylvex
