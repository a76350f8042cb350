#include "tests/simulated/simulated_desktop.h"

namespace sylvex {

std::string SimulatedDesktop::Leaks() const
{
    std::string text;
    const auto tell = [&text](const char* what, int count) {
        if (count != 0) text += (text.empty() ? "" : ", ") + std::string(what) + " " + std::to_string(count);
    };
    tell("icons", icons.Live());
    tell("icons freed twice", icons.BadFrees());
    tell("image lists", images.Live());
    tell("image lists freed twice", images.BadFrees());
    tell("searches", disk.OpenSearches());
    tell("timers", timers.Live());
    tell("timers of boxes", boxTools.Timers());
    tell("trees", static_cast<int>(windows.Trees().size()));
    return text;
}

}  // namespace sylvex
