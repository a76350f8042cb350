#pragma once

#include <string>
#include <utility>

namespace sylvex {

/// A numbered run-time error, the only kind of failure that passes between the control's procedures.
struct RuntimeError {
    RuntimeError(long errorNumber, std::wstring errorDescription, std::wstring errorSource = L"Sylvex")
        : number(errorNumber), description(std::move(errorDescription)), source(std::move(errorSource))
    {
    }
    long number;
    std::wstring description;
    std::wstring source;
};

/// What a procedure of the control raises to its caller after it has reported a failure.
constexpr long kPassedOn = 65535;

// The errors that the control and its object model raise, with the texts their hosts know.
inline RuntimeError OutOfMemory()
{
    return {7, L"Out of memory"};
}
inline RuntimeError SubscriptOutOfRange()
{
    return {9, L"Subscript out of range"};
}
inline RuntimeError TypeMismatch()
{
    return {13, L"Type mismatch"};
}
inline RuntimeError ObjectNotSet()
{
    return {91, L"Object variable or With block variable not set"};
}
inline RuntimeError InvalidPropertyValue()
{
    return {380, L"Invalid property value"};
}
inline RuntimeError ReadOnlyAtRunTime()
{
    return {382, L"Property cannot be set at run time"};
}
inline RuntimeError ObjectGone(const std::wstring& what)
{
    return {398, what + L" no longer exists"};
}
inline RuntimeError IndexOutOfBounds()
{
    return {35600, L"Index out of bounds"};
}
inline RuntimeError ElementNotFound()
{
    return {35601, L"Element not found"};
}
inline RuntimeError KeyNotUnique()
{
    return {35602, L"Key is not unique in collection"};
}
inline RuntimeError InvalidKey()
{
    return {35603, L"Invalid key"};
}
inline RuntimeError NodeGone()
{
    return {35605, L"This item's control has been deleted"};
}
inline RuntimeError WouldIntroduceCycle()
{
    return {35614, L"This would introduce a cycle"};
}

}  // namespace sylvex
