#pragma once

#include <vector>

#include "component/com.h"

namespace sylvex {

/// The arguments of a late-bound call in the form in which every platform's ITypeInfo::Invoke takes them: in order,
/// without gaps, by-reference ones with storage of exactly their type. A script's variables (by-reference variants) are
/// converted, and receive what the member changes.
class BoundArguments {
public:
    /// `given` and what it refers to must outlive this object. Throws ComError(DISP_E_TYPEMISMATCH), with the place of
    /// the argument in `badArgument` unless that is null.
    BoundArguments(ITypeInfo& info, const FUNCDESC& function, DISPPARAMS& given, UINT* badArgument);
    BoundArguments(const BoundArguments&) = delete;
    BoundArguments& operator=(const BoundArguments&) = delete;

    /// What to call with; the given arguments themselves when their number is not that of the member.
    DISPPARAMS* Get() { return m_bound ? &m_parameters : &m_given; }
    /// Gives the caller's variables what the member changed.
    void CopyBack();

private:
    /// Storage for one by-reference argument.
    struct Slot {
        Variant value;
        Variant before;
        VARIANT* origin;
    };

    bool Place(const FUNCDESC& function, std::vector<VARIANT*>& places) const;
    VARIANT Bind(ITypeInfo& info, const ELEMDESC& parameter, VARIANT* argument);
    VARIANT Refer(VARTYPE type, Variant value, VARIANT* origin);

    DISPPARAMS& m_given;
    DISPPARAMS m_parameters{};
    bool m_bound = false;
    std::vector<VARIANT> m_arguments;
    std::vector<Slot> m_slots;
};

}  // namespace sylvex
