#pragma once

#include <cstdint>

namespace sylvex {

/// What a function's table of clean-ups says about one place in it.
enum class Coverage {
    /// Nothing: an exception that comes from there would end the program.
    Gap,
    /// An exception passes on its way out.
    Passes,
    /// There is a clean-up or a handler.
    Handled,
};

/// Reads the table (the compiler's language-specific data) of a function for the place `offset` bytes after its
/// start. Tables of a shape that this compiler does not write are gaps.
Coverage CoverageOf(const std::uint8_t* table, std::uintptr_t offset) noexcept;

}  // namespace sylvex
