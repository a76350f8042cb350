#pragma once

#include <vector>

#include "component/border/border.h"

namespace sylvex {

/// The arguments of a late-bound call in the form in which every platform's ITypeInfo::Invoke takes them: in order,
/// without gaps, each of exactly its parameter's type, by-reference ones with storage of their own. A script's
/// variables (by-reference variants) are converted, and receive what the member changes.
class BoundArguments {
public:
    /// `given` and what it refers to must outlive this object. Arguments that do not fit throw ComError, with the place
    /// of the first such argument in `badArgument` unless that is null: DISP_E_BADPARAMCOUNT for too many,
    /// DISP_E_PARAMNOTFOUND for a name that the member does not have, DISP_E_PARAMNOTOPTIONAL for one that is missing,
    /// DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW, DISP_E_BADVARTYPE.
    BoundArguments(ITypeInfo& info, const FUNCDESC& function, DISPPARAMS& given, UINT* badArgument);
    BoundArguments(const BoundArguments&) = delete;
    BoundArguments& operator=(const BoundArguments&) = delete;

    /// What to call with.
    DISPPARAMS* Get() { return &m_parameters; }
    /// Gives the caller's variables what the member changed.
    void CopyBack();

private:
    /// Storage for one argument that is not passed on as it stands.
    struct Slot {
        Variant value;
        Variant before;
        VARIANT* origin;
    };

    std::vector<VARIANT*> Place(const FUNCDESC& function);
    std::size_t PlaceOf(UINT index, std::size_t count) const;
    VARIANT Bind(ITypeInfo& info, const ELEMDESC& parameter, VARIANT* argument);
    VARIANT& Store(Variant value, VARIANT* origin);
    VARIANT Refer(VARTYPE type, Variant value, VARIANT* origin);
    [[noreturn]] void Refuse(const VARIANT* argument, HRESULT result) const;

    DISPPARAMS& m_given;
    UINT* m_badArgument;
    bool m_isWrite;
    DISPID m_valueName = DISPID_PROPERTYPUT;
    DISPPARAMS m_parameters{};
    std::vector<VARIANT> m_arguments;
    std::vector<Slot> m_slots;
};

/// Number of parameters that a late-bound caller sees: the result is not one of them.
UINT VisibleParameters(const FUNCDESC& function);

/// Whether what the member gives may be an object, judged by its type.
bool MayGiveObject(const FUNCDESC& function);

}  // namespace sylvex
