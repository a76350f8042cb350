#pragma once

#include <ocidl.h>
#include <windows.h>

#include "platform/types.h"

namespace sylvex {

/// A position or size in the container's units.
struct ContainerPoint {
    float x = 0;
    float y = 0;
};

/// Pixels of a window of this thread as the container measures them: as it says itself, in twips when it says nothing.
/// `site` may be null.
ContainerPoint ToContainer(IOleControlSite* site, Point pixels);

/// The reverse; rounds to the nearest pixel.
Point ToPixels(IOleControlSite* site, ContainerPoint place);

}  // namespace sylvex
