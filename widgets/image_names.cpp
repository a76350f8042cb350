#include "widgets/image_names.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace sylvex {

void ImageNames::Bind(const ImageList* images)
{
    m_images = images;
    m_shownInstead = 0;
    for (Entry& entry : m_names)
        entry.picture = -1;
}

int ImageNames::Number(const ImageName& name)
{
    if (const auto* key = std::get_if<std::wstring>(&name)) return key->empty() ? 0 : NumberOfKey(*key);
    if (std::holds_alternative<std::monostate>(name) || std::get<int>(name) == 0) return 0;
    for (std::size_t i = 1; i < m_names.size(); ++i)
        if (m_names[i].name == name) return static_cast<int>(i);
    m_names.push_back({name});
    return static_cast<int>(m_names.size()) - 1;
}

int ImageNames::NumberOfKey(const std::wstring& key)
{
    const auto [place, isNew] = m_keys.try_emplace(key, static_cast<int>(m_names.size()));
    if (isNew) m_names.push_back({ImageName(key)});
    return place->second;
}

int ImageNames::NumberOfShown(const ImageName& name)
{
    const int number = Number(name);
    if (number != 0 && Picture(number) < 0) throw ElementNotFound();
    return number;
}

int ImageNames::Picture(int number) const
{
    const Entry& entry = m_names[static_cast<std::size_t>(number)];
    if (entry.picture >= 0 || number == 0 || m_images == nullptr) return entry.picture;
    // A picture may join the list after its name was first used, so only what was found is kept.
    if (const auto* key = std::get_if<std::wstring>(&entry.name))
        entry.picture = m_images->IndexOf(*key);
    else if (std::get<int>(entry.name) <= std::max(m_images->Count(), m_shownInstead))
        entry.picture = std::get<int>(entry.name) - 1;
    return entry.picture;
}

}  // namespace sylvex
