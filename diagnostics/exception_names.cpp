#include "diagnostics/exception_names.h"

#include <algorithm>
#include <iterator>

namespace sylvex {

namespace {

struct Named {
    std::uint32_t code;
    const wchar_t* name;
};

constexpr Named kNames[] = {
    {0x80000001, L"Guard Page Violation"},
    {0x80000002, L"Data Type Misalignment"},
    {0x80000003, L"Breakpoint"},
    {0x80000004, L"Single Step"},
    {0xC0000005, L"Access Violation"},
    {0xC0000006, L"In Page Error"},
    {0xC0000008, L"Invalid Handle"},
    {0xC000001D, L"Illegal Instruction"},
    {0xC0000025, L"Non Continuable Exception"},
    {0xC0000026, L"Invalid Disposition"},
    {0xC000008C, L"Array Bounds Exceeded"},
    {0xC000008D, L"Float Denormal Operand"},
    {0xC000008E, L"Divide By Zero"},
    {0xC000008F, L"Floating Point Inexact Result"},
    {0xC0000090, L"Invalid Operation"},
    {0xC0000091, L"Float Overflow"},
    {0xC0000092, L"Float Stack Check"},
    {0xC0000093, L"Float Underflow"},
    {0xC0000094, L"Integer Divide By Zero"},
    {0xC0000095, L"Integer Overflow"},
    {0xC0000096, L"Privileged Instruction"},
    {0xC00000FD, L"Stack Overflow"},
    {0xC000013A, L"Control-C Exit"},
};

std::wstring Hexadecimal(std::uint32_t number)
{
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[number % 16]);
        number /= 16;
    } while (number != 0);
    return digits;
}

}  // namespace

std::wstring ExceptionName(std::uint32_t code)
{
    const auto* const found =
        std::find_if(std::begin(kNames), std::end(kNames), [code](const Named& named) { return named.code == code; });
    return found != std::end(kNames) ? found->name : L"Unknown (&H" + Hexadecimal(code) + L")";
}

}  // namespace sylvex
