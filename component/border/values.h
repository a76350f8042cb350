#pragma once

#include "component/border/border.h"

namespace sylvex {

inline VARIANT_BOOL BoolOf(bool value)
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

/// A text that its receiver owns; throws std::bad_alloc.
inline BSTR TextOf(std::wstring_view text)
{
    return Bstr(text).Detach();
}

/// The same of an object or a value.
template <class Interface>
Interface* Owned(ComPtr<Interface> object)
{
    return object.Detach();
}
inline VARIANT Owned(Variant value)
{
    return value.Detach();
}
inline BSTR Owned(std::wstring_view text)
{
    return TextOf(text);
}

/// Gives the caller of a member what `read` answers, in the type of automation; of a handle the lower 32 bits say it
/// all. Who owns what he gets finds nothing
/// when that fails.
template <class Automation, class Read>
void Give(Automation* value, Read&& read)
{
    if constexpr (std::is_pointer_v<Automation> || std::is_same_v<Automation, VARIANT>) {
        Checked(value) = {};
        *value = Owned(read());
    } else if constexpr (std::is_same_v<decltype(read()), bool>) {
        Checked(value) = BoolOf(read());
    } else {
        Checked(value) = static_cast<Automation>(read());
    }
}

/// A setting of a tree as Give() gives it: a flag where the type of automation is one.
template <class Automation>
auto SettingOf(int value)
{
    if constexpr (std::is_same_v<Automation, VARIANT_BOOL>) {
        return value != 0;
    } else {
        return value;
    }
}

/// What a host writes to a property.
inline std::wstring Given(BSTR value)
{
    return std::wstring(ViewOf(value));
}
inline bool Given(VARIANT_BOOL value)
{
    return value != VARIANT_FALSE;
}
inline LONG Given(LONG value)
{
    return value;
}
template <class Enumeration>
requires std::is_enum_v<Enumeration>
int Given(Enumeration value)
{
    return value;
}

/// The members of an interface for a setting of a tree, by GetSetting and LetSetting of the class that has them.
// NOLINTBEGIN(bugprone-macro-parentheses): a type has none
#define SETTING_MEMBERS(name, type)                  \
    STDMETHODIMP get_##name(type* value) override    \
    {                                                \
        return GetSetting(TreeSetting::name, value); \
    }                                                \
    STDMETHODIMP put_##name(type value) override     \
    {                                                \
        return LetSetting(TreeSetting::name, value); \
    }
// NOLINTEND(bugprone-macro-parentheses)

/// Any value as a text, empty when it was left out; raises 13 when it has none.
std::wstring TextOf(const VARIANT& value);

/// Any numeric value as a whole number; raises 13 when it is none, 35600 when it is out of range.
long IndexOf(const VARIANT& value);

}  // namespace sylvex
