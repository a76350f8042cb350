#pragma once

#include <string>
#include <unordered_map>
#include <utility>

#include "platform/types.h"

namespace sylvex {

/// The icons that exist on the simulated desktop. An icon's picture is told in words, such as "Shell32.dll,34".
class IconTable {
public:
    IconHandle Create(std::string picture)
    {
        const IconHandle icon = 0x1C000 + ++m_created;
        m_pictures.emplace(icon, std::move(picture));
        return icon;
    }
    void Destroy(IconHandle icon) noexcept
    {
        if (m_pictures.erase(icon) == 0) ++m_badFrees;
    }
    /// Null for an icon that does not exist (any more).
    const std::string* Picture(IconHandle icon) const
    {
        const auto found = m_pictures.find(icon);
        return found == m_pictures.end() ? nullptr : &found->second;
    }
    int Created() const { return static_cast<int>(m_created); }
    /// Icons not destroyed yet: above 0 at the end of a test is a leak.
    int Live() const { return static_cast<int>(m_pictures.size()); }
    /// Icons destroyed twice, or that never were.
    int BadFrees() const { return m_badFrees; }

private:
    std::unordered_map<IconHandle, std::string> m_pictures;
    IconHandle m_created = 0;
    int m_badFrees = 0;
};

}  // namespace sylvex
