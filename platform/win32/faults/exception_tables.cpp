#include "platform/win32/faults/exception_tables.h"

namespace sylvex {

namespace {

constexpr std::uint8_t kOmitted = 0xFF;
constexpr std::uint8_t kVariableLength = 0x01;

std::uintptr_t ReadNumber(const std::uint8_t*& at) noexcept
{
    std::uintptr_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
        const std::uint8_t byte = *at++;
        number |= static_cast<std::uintptr_t>(byte & 0x7F) << shift;
        if ((byte & 0x80) == 0) return number;
    }
}

}  // namespace

Coverage CoverageOf(const std::uint8_t* table, std::uintptr_t offset) noexcept
{
    if (*table++ != kOmitted) return Coverage::Gap;
    if (*table++ != kOmitted) ReadNumber(table);
    if (*table++ != kVariableLength) return Coverage::Gap;
    const std::uintptr_t size = ReadNumber(table);
    const std::uint8_t* const end = table + size;
    while (table < end) {
        const std::uintptr_t start = ReadNumber(table);
        const std::uintptr_t length = ReadNumber(table);
        const std::uintptr_t pad = ReadNumber(table);
        ReadNumber(table);
        if (offset < start) break;
        if (offset < start + length) return pad == 0 ? Coverage::Passes : Coverage::Handled;
    }
    return Coverage::Gap;
}

}  // namespace sylvex
