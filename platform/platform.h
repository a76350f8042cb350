#pragma once

#include "platform/box_tools.h"
#include "platform/drag.h"
#include "platform/filesystem.h"
#include "platform/images.h"
#include "platform/messages.h"
#include "platform/network.h"
#include "platform/regional.h"
#include "platform/shell.h"
#include "platform/system.h"
#include "platform/timers.h"
#include "platform/windows.h"

namespace sylvex {

/// The services that a control is given; they outlive it.
struct Platform {
    FileSystem& files;
    Shell& shell;
    Regional& regional;
    System& system;
    Windows& windows;
    Images& images;
    Timers& timers;
    MessageBoxes& boxes;
    Reporter& reporter;
    BoxTools& boxTools;
    Network& network;
    Drag& drag;
};

}  // namespace sylvex
