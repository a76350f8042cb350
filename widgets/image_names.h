#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "widgets/imagelist.h"
#include "widgets/node.h"

namespace sylvex {

/// The picture names that nodes use, each under a small number (0: none), with the place of its picture in the bound
/// image list. A name may be known before the list holds a picture for it.
class ImageNames {
public:
    /// Binds the list whose keys the names refer to; null: nothing has a picture. It must outlive the binding.
    void Bind(const ImageList* images);
    /// How many pictures another list holds that is shown in place of the bound one: names that are numbers may go so
    /// far.
    void ShowInstead(int pictures) { m_shownInstead = pictures; }
    /// The bound list; 0 when there is none.
    ImageListHandle Handle() const { return m_images != nullptr ? m_images->Handle() : 0; }
    /// The number of a name; a new name gets the next one.
    int Number(const ImageName& name);
    int NumberOfKey(const std::wstring& key);
    /// The number of a name that the bound list has a picture for, or of none. Raises 35601 otherwise.
    int NumberOfShown(const ImageName& name);
    const ImageName& Name(int number) const { return m_names[static_cast<std::size_t>(number)].name; }
    /// Index from 0 of the number's picture, -1 when the bound list has none.
    int Picture(int number) const;

private:
    struct Entry {
        ImageName name;
        mutable int picture = -1;
    };
    const ImageList* m_images = nullptr;
    int m_shownInstead = 0;
    std::vector<Entry> m_names{Entry{}};
    std::unordered_map<std::wstring, int> m_keys;
};

}  // namespace sylvex
