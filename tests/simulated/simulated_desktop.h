#pragma once

#include "platform/platform.h"
#include "tests/simulated/simulated_boxtools.h"
#include "tests/simulated/simulated_disk.h"
#include "tests/simulated/simulated_drag.h"
#include "tests/simulated/simulated_images.h"
#include "tests/simulated/simulated_messages.h"
#include "tests/simulated/simulated_network.h"
#include "tests/simulated/simulated_regional.h"
#include "tests/simulated/simulated_shell.h"
#include "tests/simulated/simulated_system.h"
#include "tests/simulated/simulated_timers.h"
#include "tests/simulated/simulated_tree.h"
#include "tests/simulated/simulated_windows.h"
#include "tests/simulated/tree_user.h"

namespace sylvex {

/// A desktop in memory with one of each service of the platform; at first it has no drives and no windows.
class SimulatedDesktop {
public:
    SimulatedDesktop()
    {
        system.SetClock([this] { return static_cast<std::uint32_t>(timers.Now()); });
    }
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

    CallGate gate;
    IconTable icons;
    SimulatedDisk disk{gate};
    SimulatedShell shell{gate, disk, icons};
    SimulatedRegional regional{gate};
    SimulatedSystem system{gate};
    SimulatedImages images{gate, icons};
    SimulatedWindows windows{gate, images, system};
    SimulatedTimers timers{gate};
    SimulatedBoxTools boxTools{gate, windows};
    SimulatedBoxes boxes{gate, system, boxTools};
    SimulatedReporter reporter{gate};
    SimulatedNetwork network{gate};
    SimulatedDrag drag{gate, windows};

    Platform& Get() { return m_platform; }
    /// What is not given back: "" or a line such as "icons 2, image lists 1". Ask when the control is gone.
    std::string Leaks() const;

private:
    Platform m_platform{disk,   shell, regional, system,   windows, images,
                        timers, boxes, reporter, boxTools, network, drag};
};

}  // namespace sylvex
