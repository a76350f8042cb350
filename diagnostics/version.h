#pragma once

namespace sylvex {

/// The component's own version numbers.
constexpr int kVersionMajor = 1;
constexpr int kVersionMinor = 0;
constexpr int kVersionRevision = 0;

}  // namespace sylvex
