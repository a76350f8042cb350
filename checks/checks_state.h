#pragma once

namespace sylvex {

/// The variables of one control that ticks follow, under the names that reports print.
struct ChecksState {
    bool m_RecursiveCheck = true;  ///< a tick stands for the whole branch, not for one folder
};

}  // namespace sylvex
