#include "component/border/arguments.h"

#include <algorithm>
#include <limits>

namespace sylvex {

namespace {

bool Has(const ELEMDESC& parameter, USHORT flag)
{
    return (parameter.paramdesc.wParamFlags & flag) != 0;
}

/// Whether a required argument has no value; also a script's variable that holds one that was left out.
bool IsLeftOut(const VARIANT& argument)
{
    return IsMissing(V_VT(&argument) == (VT_BYREF | VT_VARIANT) ? *V_VARIANTREF(&argument) : argument);
}

/// What a member takes in one place.
struct ParameterType {
    VARTYPE type;
    bool byReference;
    /// Of an object.
    IID interfaceId;
};

ParameterType TypeOf(ITypeInfo& info, const TYPEDESC& type);

/// An enumeration is a number, a name of another type that type, anything else an object with an interface of its own.
ParameterType DescribedType(ITypeInfo& info, HREFTYPE reference)
{
    ParameterType found{VT_DISPATCH, false, IID_IDispatch};
    ComPtr<ITypeInfo> described;
    TYPEATTR* attributes = nullptr;
    if (FAILED(info.GetRefTypeInfo(reference, described.Put())) || FAILED(described->GetTypeAttr(&attributes)))
        return found;
    if (attributes->typekind == TKIND_ENUM) {
        found.type = VT_I4;
    } else if (attributes->typekind == TKIND_ALIAS) {
        found = TypeOf(*described, attributes->tdescAlias);
    } else {
        found.interfaceId = attributes->guid;
    }
    described->ReleaseTypeAttr(attributes);
    return found;
}

/// A pointer to an interface is the object, which goes by value; any other pointer is a reference.
ParameterType TypeOf(ITypeInfo& info, const TYPEDESC& type)
{
    if (type.vt == VT_USERDEFINED) return DescribedType(info, type.hreftype);
    if (type.vt != VT_PTR) return {type.vt, false, IID_NULL};
    ParameterType target = TypeOf(info, *type.lptdesc);
    target.byReference = target.type != VT_DISPATCH || type.lptdesc->vt == VT_PTR;
    return target;
}

/// A copy of an argument, what it refers to included.
Variant Copied(const VARIANT& argument)
{
    try {
        return Variant(argument);
    } catch (const ComError& error) {
        if (error.result == E_OUTOFMEMORY) throw;
        throw ComError{DISP_E_BADVARTYPE};
    }
}

/// Empty and Null are no object: not every script has a word of its own for Nothing.
Variant ConvertedObject(const VARIANT& argument, const IID& id)
{
    const Variant value = Copied(argument);
    Variant object(static_cast<IDispatch*>(nullptr));
    if (value.Type() == VT_EMPTY || value.Type() == VT_NULL) return object;
    if (!value.IsObject()) throw ComError{DISP_E_TYPEMISMATCH};
    IUnknown* const given = V_UNKNOWN(&value.Get());
    if (!given) return object;
    void* found = nullptr;
    if (FAILED(Guarded([&] { return given->QueryInterface(id, &found); }))) throw ComError{DISP_E_TYPEMISMATCH};
    V_DISPATCH(&object.Get()) = static_cast<IDispatch*>(found);
    return object;
}

/// Whether a value is nothing but itself: not given by reference, no array, of a kind that there is. Platforms differ
/// in what they leave behind when they find out.
bool IsPlain(VARTYPE type)
{
    return (type <= VT_DECIMAL && type != VT_VARIANT) || (type >= VT_I1 && type <= VT_UINT);
}

void ChangeType(Variant& value, VARTYPE type)
{
    // An object's value is asked of the object.
    const HRESULT changed = Guarded([&] { return value.ChangeType(type); });
    if (changed == DISP_E_OVERFLOW || changed == E_OUTOFMEMORY) throw ComError{changed};
    if (FAILED(changed)) throw ComError{DISP_E_TYPEMISMATCH};
}

/// Callers know no numbers without a sign: 32 bits may come as either.
void ChangeToUnsigned(Variant& value)
{
    ChangeType(value, VT_I8);
    const LONGLONG number = V_I8(&value.Get());
    if (number < std::numeric_limits<LONG>::min() || number > std::numeric_limits<ULONG>::max())
        throw ComError{DISP_E_OVERFLOW};
    V_VT(&value.Get()) = VT_UI4;
    V_UI4(&value.Get()) = static_cast<ULONG>(number);
}

Variant Converted(const VARIANT& argument, VARTYPE type)
{
    Variant value = Copied(argument);
    if (type == VT_VARIANT || value.Type() == type) return value;
    type == VT_UI4 ? ChangeToUnsigned(value) : ChangeType(value, type);
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
    if (left.Type() == VT_BSTR) return left.Text() == right.Text();
    return V_I8(&left.Get()) == V_I8(&right.Get());
}

}  // namespace

UINT VisibleParameters(const FUNCDESC& function)
{
    UINT count = static_cast<UINT>(function.cParams);
    while (count > 0 && Has(function.lprgelemdescParam[count - 1], PARAMFLAG_FRETVAL))
        --count;
    return count;
}

bool MayGiveObject(const FUNCDESC& function)
{
    const UINT result = VisibleParameters(function);
    if (result == static_cast<UINT>(function.cParams)) return false;
    const TYPEDESC& type = function.lprgelemdescParam[result].tdesc;
    return type.vt == VT_PTR && (type.lptdesc->vt == VT_PTR || type.lptdesc->vt == VT_VARIANT);
}

BoundArguments::BoundArguments(ITypeInfo& info, const FUNCDESC& function, DISPPARAMS& given, UINT* badArgument)
    : m_given(given),
      m_badArgument(badArgument),
      m_isWrite(function.invkind != INVOKE_FUNC && function.invkind != INVOKE_PROPERTYGET)
{
    const std::vector<VARIANT*> places = Place(function);
    m_slots.reserve(places.size());
    m_arguments.reserve(places.size());
    for (std::size_t index = places.size(); index-- > 0;) {
        try {
            m_arguments.push_back(Bind(info, function.lprgelemdescParam[index], places[index]));
        } catch (const ComError& error) {
            Refuse(places[index], error.result);
        }
    }
    m_parameters = {m_arguments.data(), m_isWrite ? &m_valueName : nullptr, static_cast<UINT>(m_arguments.size()),
                    m_isWrite ? 1u : 0u};
}

/// Throws `result`, with the argument's place for the caller when there is such an argument.
void BoundArguments::Refuse(const VARIANT* argument, HRESULT result) const
{
    if (m_badArgument && argument) *m_badArgument = static_cast<UINT>(argument - m_given.rgvarg);
    throw ComError{result};
}

/// Finds each parameter's argument, null for an optional one that was left out.
std::vector<VARIANT*> BoundArguments::Place(const FUNCDESC& function)
{
    std::vector<VARIANT*> places(VisibleParameters(function));
    if (m_given.cArgs > places.size()) throw ComError{DISP_E_BADPARAMCOUNT};
    if (m_given.cNamedArgs > m_given.cArgs || (m_given.cArgs > 0 && !m_given.rgvarg) ||
        (m_given.cNamedArgs > 0 && !m_given.rgdispidNamedArgs)) {
        throw ComError{E_INVALIDARG};
    }
    for (UINT index = 0; index < m_given.cArgs; ++index) {
        VARIANT& argument = m_given.rgvarg[index];
        if ((V_VT(&argument) & VT_BYREF) && !V_BYREF(&argument)) Refuse(&argument, E_INVALIDARG);
        const std::size_t place = PlaceOf(index, places.size());
        if (place >= places.size()) Refuse(&argument, DISP_E_PARAMNOTFOUND);
        if (places[place]) Refuse(&argument, DISP_E_BADPARAMCOUNT);
        places[place] = &argument;
    }
    // A write gives its value by name.
    if (m_isWrite && (m_given.cNamedArgs == 0 || !places.back())) throw ComError{DISP_E_PARAMNOTFOUND};
    for (std::size_t index = 0; index < places.size() - (m_isWrite ? 1 : 0); ++index) {
        const bool isOptional = Has(function.lprgelemdescParam[index], PARAMFLAG_FOPT);
        if (places[index] && !IsLeftOut(*places[index])) continue;
        if (!isOptional) Refuse(places[index], DISP_E_PARAMNOTOPTIONAL);
        places[index] = nullptr;
    }
    return places;
}

/// The parameter that an argument is meant for, `count` or more when there is none. Arguments come last to first, the
/// named ones ahead of the others.
std::size_t BoundArguments::PlaceOf(UINT index, std::size_t count) const
{
    if (index >= m_given.cNamedArgs) return m_given.cArgs - 1 - index;
    const DISPID name = m_given.rgdispidNamedArgs[index];
    if (m_isWrite && name == DISPID_PROPERTYPUT) return count - 1;
    // The value of a write goes by that name only.
    const std::size_t named = count - (m_isWrite ? 1 : 0);
    return name >= 0 && static_cast<std::size_t>(name) < named ? static_cast<std::size_t>(name) : count;
}

VARIANT BoundArguments::Bind(ITypeInfo& info, const ELEMDESC& parameter, VARIANT* argument)
{
    const auto [type, byReference, interfaceId] = TypeOf(info, parameter.tdesc);
    if (!argument) {
        if (byReference) return Refer(type, EmptyValue(type), nullptr);
        return type == VT_VARIANT ? MissingArgument() : Store(EmptyValue(type), nullptr);
    }
    if (type == VT_DISPATCH) {
        Variant object = ConvertedObject(*argument, interfaceId);
        return byReference ? Refer(type, std::move(object), argument) : Store(std::move(object), nullptr);
    }
    if (byReference && V_VT(argument) != (type | VT_BYREF)) return Refer(type, Converted(*argument, type), argument);
    const bool fits = byReference || V_VT(argument) == type || (type == VT_VARIANT && IsPlain(V_VT(argument)));
    return fits ? *argument : Store(Converted(*argument, type), nullptr);
}

/// Keeps a value for the call; `origin` is the caller's variable that receives what the member changes, or null.
VARIANT& BoundArguments::Store(Variant value, VARIANT* origin)
{
    Variant before(origin ? value.Get() : VARIANT{});
    m_slots.push_back({std::move(value), std::move(before), origin});
    return m_slots.back().value.Get();
}

/// An argument that refers to storage of its own holding `value`.
VARIANT BoundArguments::Refer(VARTYPE type, Variant value, VARIANT* origin)
{
    VARIANT& stored = Store(std::move(value), origin);
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
