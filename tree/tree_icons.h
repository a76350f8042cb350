#pragma once

#include <string>

#include "platform/platform.h"
#include "widgets/imagelist.h"

namespace sylvex {

/// Loads the fixed pictures of the tree's nodes into `iml`, in table order.
void LoadSystemIcons(Platform& platform, ImageList& iml);

/// Appends the icon as a picture under `sKey`.
void LoadImageList(Platform& platform, ImageList& iml, OwnedIcon hIcon, const std::wstring& sKey);

/// A picture that owns the icon; an empty one for no icon.
Picture IconToPicture(Platform& platform, OwnedIcon hIcon);

/// True when the list holds a picture under `Key`.
bool KeyExists(const ImageList& iml, const std::wstring& Key);

}  // namespace sylvex
