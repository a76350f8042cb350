#pragma once

#include "platform/images.h"

namespace sylvex {

/// The common controls' image lists.
class Win32Images : public Images {
public:
    ImageListHandle Create() override;
    void Destroy(ImageListHandle list) noexcept override;
    int Add(ImageListHandle list, IconHandle icon) override;
    int Count(ImageListHandle list) override;
};

}  // namespace sylvex
