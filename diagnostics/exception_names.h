#pragma once

#include <cstdint>
#include <string>

namespace sylvex {

/// What reports call a processor or system exception; an unlisted code is named by its hexadecimal digits.
std::wstring ExceptionName(std::uint32_t code);

/// The number of the run-time error that an exception becomes. Several exceptions share a number.
constexpr long ExceptionNumber(std::uint32_t code)
{
    return static_cast<long>((code & 0x8EF) | 0x2710);
}

}  // namespace sylvex
