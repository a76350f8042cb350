#pragma once

#include <string>
#include <vector>

#include "platform/regional.h"
#include "widgets/node.h"

namespace sylvex {

/// Where nodes really are on the disk whose texts tell another place: what a move or a rename that was not done leaves
/// behind. What is known of a node ends with the node, so the next reading of its branch forgets it. Paths are whole
/// ones without a separator at their end, but for a drive's root.
class DiskPlaces {
public:
    explicit DiskPlaces(Regional& regional) : m_regional(regional) {}

    /// The node's place when that of the node or of one above is known; empty when the texts tell it.
    std::wstring Of(const Node& node) const;
    /// The node is at `path`, as what is below it is at paths below.
    void Note(Node& node, const std::wstring& path);
    /// The node is at `path`; nothing has to be known of it where that is the place that its text tells.
    void Settle(Node& node, const std::wstring& path, const std::wstring& told);
    /// What was at `from`, or below it, is at `to` now.
    void Moved(const std::wstring& from, const std::wstring& to);

private:
    struct Place {
        NodeRef node;
        std::wstring path;
    };
    const Place* Find(const Node& node) const;
    void Forget(const Node& node);

    Regional& m_regional;
    std::vector<Place> m_places;
};

}  // namespace sylvex
