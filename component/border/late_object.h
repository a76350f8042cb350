#pragma once

#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

#include "component/border/border.h"

namespace sylvex {

/// The error of a member that takes another number of arguments.
constexpr long kWrongArguments = 450;

/// Calls members of automation objects by name. The numbers of the names are asked for once per class of object;
/// objects whose members are made at run time are asked each time that another one is taken up.
class LateCaller {
public:
    /// The names that will be called; they outlive the caller.
    LateCaller(std::initializer_list<const wchar_t*> names);

    /// The object to be called from now on. Raises 91 for null.
    void TakeUp(const ComPtr<IDispatch>& object);
    const ComPtr<IDispatch>& Object() const { return m_object; }
    /// Whether the object has the member of that place among the names.
    bool Knows(std::size_t member) { return Find(member) != DISPID_UNKNOWN; }

    // Each raises what the object raises, 438 when it has no such member. Arguments go in reverse order, as the
    // platform takes them, and are only read.
    Variant Get(std::size_t member, std::span<VARIANT> reversed = {});
    void Put(std::size_t member, const VARIANT& value);
    /// A property with one index.
    void Put(std::size_t member, long index, const VARIANT& value);
    Variant Call(std::size_t member, std::span<VARIANT> reversed = {});
    /// Raises 13 when the member's value is no automation object; empty when it is nothing.
    ComPtr<IDispatch> GetObject(std::size_t member, std::span<VARIANT> reversed = {});

private:
    DISPID Find(std::size_t member);
    Variant Invoke(std::size_t member, WORD kind, std::span<VARIANT> reversed, bool wantsResult);

    std::vector<const wchar_t*> m_names;
    std::vector<DISPID> m_members;
    ComPtr<IDispatch> m_object;
    ComPtr<ITypeInfo> m_class;  // whose numbers m_members holds
};

/// The automation object in a value; empty for nothing, 13 for a value that is none.
ComPtr<IDispatch> DispatchIn(const VARIANT& value);

}  // namespace sylvex
