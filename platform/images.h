#pragma once

#include "platform/types.h"

namespace sylvex {

/// Image lists of small icons.
class Images {
public:
    virtual ~Images() = default;
    /// A new, empty image list for pictures of the system's small-icon size; 0 on failure.
    virtual ImageListHandle Create() = 0;
    virtual void Destroy(ImageListHandle list) noexcept = 0;
    /// Appends a copy of the icon; gives its index from 0, -1 on failure.
    virtual int Add(ImageListHandle list, IconHandle icon) = 0;
    virtual int Count(ImageListHandle list) = 0;
};

}  // namespace sylvex
