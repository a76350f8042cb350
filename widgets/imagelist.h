#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/images.h"
#include "platform/shell.h"

namespace sylvex {

/// A picture that owns its icon.
struct Picture {
    OwnedIcon icon;
};

/// An image list whose pictures are found by key.
class ImageList {
public:
    static constexpr const wchar_t* kReportName = L"{ImageList}";

    explicit ImageList(Images& images);
    ~ImageList();
    ImageList(const ImageList&) = delete;
    ImageList& operator=(const ImageList&) = delete;

    /// Appends a copy of the picture under `key`; an empty picture takes a key all the same and shows nothing. Raises
    /// 35602 when the key is in use, 35603 when it is a number.
    void Add(const std::wstring& key, const Picture& picture);
    /// Index from 0 of the key's picture; -1 when there is none.
    int IndexOf(const std::wstring& key) const;
    bool Contains(const std::wstring& key) const { return m_pictures.contains(key); }
    int Count() const { return static_cast<int>(m_keys.size()); }
    /// The keys in the order of their adding.
    const std::vector<std::wstring>& Keys() const { return m_keys; }
    ImageListHandle Handle() const { return m_handle; }

private:
    Images& m_images;
    ImageListHandle m_handle = 0;
    std::vector<std::wstring> m_keys;
    std::unordered_map<std::wstring, int> m_pictures;
};

/// True for a text that reads as a number, which collections refuse as a key.
bool IsNumeric(const std::wstring& text);

}  // namespace sylvex
