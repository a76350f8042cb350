#pragma once

#include "diagnostics/trap.h"
#include "platform/platform.h"
#include "widgets/imagelist.h"
#include "widgets/treeview.h"

namespace sylvex {

/// What all subsystems of one control are given beside their own variables. All of it outlives them.
struct Context {
    const Module& module;  ///< the control's own, whose procedures theirs are in error reports
    Platform& platform;
    TreeView& TV;
    ImageList& ImageList1;  ///< the pictures of the tree's nodes
};

}  // namespace sylvex
