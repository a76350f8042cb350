#include "widgets/imagelist.h"

#include "platform/runtime_error.h"

namespace sylvex {

bool IsNumeric(const std::wstring& text)
{
    const auto digits = [&](std::size_t& at) {
        const std::size_t start = at;
        while (at < text.size() && text[at] >= L'0' && text[at] <= L'9')
            ++at;
        return at - start;
    };
    std::size_t at = text.starts_with(L'-') || text.starts_with(L'+') ? 1 : 0;
    std::size_t count = digits(at);
    if (at < text.size() && text[at] == L'.') count += digits(++at);
    if (count == 0) return false;
    if (at < text.size() && (text[at] == L'e' || text[at] == L'E' || text[at] == L'd' || text[at] == L'D')) {
        ++at;
        if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) ++at;
        if (digits(at) == 0) return false;
    }
    return at == text.size();
}

ImageList::ImageList(Images& images) : m_images(images), m_handle(images.Create())
{
    if (m_handle == 0) throw OutOfMemory();
}

ImageList::~ImageList()
{
    m_images.Destroy(m_handle);
}

void ImageList::Add(const std::wstring& key, const Picture& picture)
{
    if (IsNumeric(key)) throw InvalidKey();
    if (Contains(key)) throw KeyNotUnique();
    const int index = picture.icon ? m_images.Add(m_handle, picture.icon.Get()) : -1;
    m_pictures.emplace(key, index);
    m_keys.push_back(key);
}

int ImageList::IndexOf(const std::wstring& key) const
{
    const auto found = m_pictures.find(key);
    return found == m_pictures.end() ? -1 : found->second;
}

}  // namespace sylvex
