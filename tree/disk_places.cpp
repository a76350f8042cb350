#include "tree/disk_places.h"

#include "platform/text.h"

namespace sylvex {

const DiskPlaces::Place* DiskPlaces::Find(const Node& node) const
{
    for (const Place& place : m_places)
        if (place.node.IfAlive() == &node) return &place;
    return nullptr;
}

std::wstring DiskPlaces::Of(const Node& node) const
{
    if (m_places.empty()) return {};
    std::wstring below;
    for (const Node* at = &node; at != nullptr; at = at->Parent()) {
        if (const Place* place = Find(*at)) {
            const bool isRoot = place->path.ends_with(L'\\');
            return place->path + (isRoot && !below.empty() ? below.substr(1) : below);
        }
        below.insert(0, at->Text()).insert(0, 1, L'\\');
    }
    return {};
}

void DiskPlaces::Note(Node& node, const std::wstring& path)
{
    Forget(node);
    m_places.push_back({NodeRef(&node), path});
}

void DiskPlaces::Settle(Node& node, const std::wstring& path, const std::wstring& told)
{
    EqualName(m_regional, path, told) ? Forget(node) : Note(node, path);
}

void DiskPlaces::Forget(const Node& node)
{
    std::erase_if(m_places,
                  [&](const Place& place) { return place.node.IfAlive() == nullptr || place.node.IfAlive() == &node; });
}

void DiskPlaces::Moved(const std::wstring& from, const std::wstring& to)
{
    for (Place& place : m_places) {
        const std::wstring_view start = std::wstring_view(place.path).substr(0, from.size());
        const bool within = place.path.size() == from.size() || place.path[start.size()] == L'\\';
        if (EqualName(m_regional, start, from) && within) place.path.replace(0, from.size(), to);
    }
}

}  // namespace sylvex
