#include "tests/simulated/simulated_images.h"

namespace sylvex {

std::vector<std::string> SimulatedImages::Pictures(ImageListHandle list) const
{
    const auto found = m_lists.find(list);
    return found == m_lists.end() ? std::vector<std::string>() : found->second;
}

std::string SimulatedImages::Picture(ImageListHandle list, int index) const
{
    const auto found = m_lists.find(list);
    if (found == m_lists.end() || index < 0) return {};
    const auto place = static_cast<std::size_t>(index);
    return place < found->second.size() ? found->second[place] : std::string();
}

ImageListHandle SimulatedImages::CreateWith(const std::string& picture, Size size)
{
    m_lists[++m_last] = {picture};
    m_sizes[m_last] = size;
    return m_last;
}

Size SimulatedImages::PictureSize(ImageListHandle list) const
{
    if (m_lists.count(list) == 0) return {};
    const auto found = m_sizes.find(list);
    return found == m_sizes.end() ? Size{16, 16} : found->second;
}

ImageListHandle SimulatedImages::Create()
{
    m_gate.Enter("Images::Create");
    m_lists[++m_last];
    return m_last;
}

void SimulatedImages::Destroy(ImageListHandle list) noexcept
{
    if (m_lists.erase(list) == 0) ++m_badFrees;
}

int SimulatedImages::Add(ImageListHandle list, IconHandle icon)
{
    m_gate.Enter("Images::Add");
    const auto found = m_lists.find(list);
    const std::string* const picture = m_icons.Picture(icon);
    if (found == m_lists.end() || picture == nullptr) return -1;
    found->second.push_back(*picture);
    return static_cast<int>(found->second.size()) - 1;
}

int SimulatedImages::Count(ImageListHandle list)
{
    m_gate.Enter("Images::Count");
    return static_cast<int>(Pictures(list).size());
}

}  // namespace sylvex
