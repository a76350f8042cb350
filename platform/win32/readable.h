#pragma once

#include <optional>

#include "platform/exception_guard.h"

namespace sylvex {

/// What stands behind a pointer that anybody may have made up; nothing where it cannot be read.
template <class Value>
std::optional<Value> ReadFrom(const Value* pointer) noexcept
{
    try {
        return Guarded([&] { return *pointer; });
    } catch (...) {
        return std::nullopt;
    }
}

}  // namespace sylvex
