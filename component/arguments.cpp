#include "component/arguments.h"

#include <algorithm>

namespace sylvex {

namespace {

bool Has(const ELEMDESC& parameter, USHORT flag)
{
    return (parameter.paramdesc.wParamFlags & flag) != 0;
}

// Number of parameters that a late-bound caller sees: the result is not one of them.
UINT VisibleParameters(const FUNCDESC& function)
{
    UINT count = static_cast<UINT>(function.cParams);
    while (count > 0 && Has(function.lprgelemdescParam[count - 1], PARAMFLAG_FRETVAL))
        --count;
    return count;
}

VARIANT MissingArgument()
{
    VARIANT missing{};
    V_VT(&missing) = VT_ERROR;
    V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
    return missing;
}

// The type behind a by-reference parameter; VT_EMPTY when the parameter goes by value. A single pointer to a described
// type is an object, which goes by value.
VARTYPE ReferencedType(const TYPEDESC& type)
{
    if (type.vt != VT_PTR) return VT_EMPTY;
    const TYPEDESC& target = *type.lptdesc;
    if (target.vt == VT_PTR) return VT_DISPATCH;
    return target.vt == VT_USERDEFINED ? static_cast<VARTYPE>(VT_EMPTY) : target.vt;
}

// The identifier of the interface in a parameter of the form "pointer to pointer to interface".
IID InterfaceOf(ITypeInfo& info, const TYPEDESC& type)
{
    const TYPEDESC& target = *type.lptdesc->lptdesc;
    ComPtr<ITypeInfo> described;
    TYPEATTR* attributes = nullptr;
    if (target.vt != VT_USERDEFINED || FAILED(info.GetRefTypeInfo(target.hreftype, described.Put())) ||
        FAILED(described->GetTypeAttr(&attributes))) {
        return IID_IDispatch;
    }
    const IID id = attributes->guid;
    described->ReleaseTypeAttr(attributes);
    return id;
}

Variant ConvertedObject(const VARIANT& argument, const IID& id)
{
    const Variant value(argument);
    Variant object(static_cast<IDispatch*>(nullptr));
    if (value.Type() == VT_EMPTY || value.Type() == VT_NULL) return object;
    if (value.Type() != VT_DISPATCH && value.Type() != VT_UNKNOWN) throw ComError{DISP_E_TYPEMISMATCH};
    IUnknown* const given = V_UNKNOWN(&value.Get());
    if (given && FAILED(given->QueryInterface(id, reinterpret_cast<void**>(&V_DISPATCH(&object.Get()))))) {
        throw ComError{DISP_E_TYPEMISMATCH};
    }
    return object;
}

Variant Converted(const VARIANT& argument, VARTYPE type)
{
    Variant value(argument);
    if (type == VT_VARIANT || value.Type() == type) return value;
    if (FAILED(VariantChangeType(&value.Get(), &value.Get(), 0, type))) throw ComError{DISP_E_TYPEMISMATCH};
    return value;
}

Variant EmptyValue(VARTYPE type)
{
    if (type == VT_DISPATCH) return Variant(static_cast<IDispatch*>(nullptr));
    return type == VT_VARIANT ? Variant(MissingArgument()) : Converted(VARIANT{}, type);
}

bool Same(const Variant& left, const Variant& right)
{
    if (left.Type() != right.Type()) return false;
    if (left.Type() == VT_BSTR) return ViewOf(V_BSTR(&left.Get())) == ViewOf(V_BSTR(&right.Get()));
    return V_I8(&left.Get()) == V_I8(&right.Get());
}

}  // namespace

BoundArguments::BoundArguments(ITypeInfo& info, const FUNCDESC& function, DISPPARAMS& given, UINT* badArgument)
    : m_given(given), m_parameters(given)
{
    std::vector<VARIANT*> places(VisibleParameters(function));
    if (!Place(function, places)) return;
    m_slots.reserve(places.size());
    m_arguments.reserve(places.size());
    for (std::size_t index = places.size(); index-- > 0;) {
        try {
            m_arguments.push_back(Bind(info, function.lprgelemdescParam[index], places[index]));
        } catch (const ComError&) {
            if (badArgument && places[index]) *badArgument = static_cast<UINT>(places[index] - given.rgvarg);
            throw;
        }
    }
    m_parameters.rgvarg = m_arguments.data();
    m_parameters.cArgs = static_cast<UINT>(m_arguments.size());
    // Only the value of a property write still needs its name: the others are in their places.
    const bool isWrite = given.cNamedArgs > 0 && given.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    m_parameters.cNamedArgs = isWrite ? 1 : 0;
    m_bound = true;
}

// Finds each parameter's argument, null for an optional one that was left out; false when the arguments do not fit.
bool BoundArguments::Place(const FUNCDESC& function, std::vector<VARIANT*>& places) const
{
    if (m_given.cArgs > places.size()) return false;
    for (UINT index = 0; index < m_given.cArgs; ++index) {
        std::size_t place = m_given.cArgs - 1 - index;
        if (index < m_given.cNamedArgs) {
            const DISPID name = m_given.rgdispidNamedArgs[index];
            place = name == DISPID_PROPERTYPUT ? places.size() - 1 : static_cast<std::size_t>(name);
        }
        if (place >= places.size() || places[place]) return false;
        places[place] = &m_given.rgvarg[index];
    }
    for (std::size_t index = 0; index < places.size(); ++index) {
        const bool optional = Has(function.lprgelemdescParam[index], PARAMFLAG_FOPT);
        if (places[index] && optional && IsMissing(*places[index])) places[index] = nullptr;
        if (!places[index] && !optional) return false;
    }
    return true;
}

VARIANT BoundArguments::Bind(ITypeInfo& info, const ELEMDESC& parameter, VARIANT* argument)
{
    const VARTYPE type = ReferencedType(parameter.tdesc);
    if (type == VT_EMPTY) return argument ? *argument : MissingArgument();
    if (!argument) return Refer(type, EmptyValue(type), nullptr);
    if (type == VT_DISPATCH)
        return Refer(type, ConvertedObject(*argument, InterfaceOf(info, parameter.tdesc)), argument);
    if (V_VT(argument) == (type | VT_BYREF)) return *argument;
    return Refer(type, Converted(*argument, type), argument);
}

// An argument that refers to storage of its own holding `value`.
VARIANT BoundArguments::Refer(VARTYPE type, Variant value, VARIANT* origin)
{
    Variant before(value);
    m_slots.push_back({std::move(value), std::move(before), origin});
    VARIANT& stored = m_slots.back().value.Get();
    VARIANT reference{};
    V_VT(&reference) = static_cast<VARTYPE>(type | VT_BYREF);
    // Every value of a variant begins at the same place, so the address of one member is that of all.
    V_BYREF(&reference) = type == VT_VARIANT ? static_cast<void*>(&stored) : &V_I8(&stored);
    return reference;
}

void BoundArguments::CopyBack()
{
    for (Slot& slot : m_slots) {
        if (!slot.origin || Same(slot.value, slot.before)) continue;
        if (V_VT(slot.origin) == (VT_BYREF | VT_VARIANT)) {
            VariantCopy(V_VARIANTREF(slot.origin), &slot.value.Get());
        } else if (V_VT(slot.origin) == (VT_BYREF | VT_DISPATCH)) {
            ComPtr<IDispatch>::Adopt(std::exchange(*V_DISPATCHREF(slot.origin), V_DISPATCH(&slot.value.Get())));
            static_cast<void>(slot.value.Detach());
        }
    }
}

}  // namespace sylvex
