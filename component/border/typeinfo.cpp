#include "component/border/typeinfo.h"

#include <vector>

#include "component/border/arguments.h"

namespace sylvex {

namespace {

/// One interface or class of the type library.
struct Description {
    GUID id;
    ComPtr<ITypeInfo> info;
    /// The same dual interface seen as a table of functions; empty for anything else.
    ComPtr<ITypeInfo2> table;
};

/// The type library of this component, kept open with what has been asked of it so far.
struct LoadedLibrary {
    ComPtr<ITypeLib> library;
    std::vector<Description> descriptions;
};

SRWLOCK libraryLock = SRWLOCK_INIT;
// Not an object with a destructor: at process end the system's automation library may already be gone.
LoadedLibrary* loadedLibrary = nullptr;

class Guard {
public:
    Guard() { AcquireSRWLockExclusive(&libraryLock); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() { ReleaseSRWLockExclusive(&libraryLock); }
};

ComPtr<ITypeInfo2> TableOf(ITypeInfo& info)
{
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> table;
    constexpr UINT itself = static_cast<UINT>(-1);
    if (FAILED(info.GetRefTypeOfImplType(itself, &reference))) return nullptr;
    Check(info.GetRefTypeInfo(reference, table.Put()));
    return table.As<ITypeInfo2>();
}

Description Describe(const GUID& id)
{
    const Guard guard;
    if (!loadedLibrary) {
        ComPtr<ITypeLib> library;
        Check(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Put()));
        loadedLibrary = new LoadedLibrary{std::move(library), {}};
    }
    for (const Description& known : loadedLibrary->descriptions) {
        if (known.id == id) return known;
    }
    ComPtr<ITypeInfo> info;
    Check(loadedLibrary->library->GetTypeInfoOfGuid(id, info.Put()));
    return loadedLibrary->descriptions.emplace_back(id, info, TableOf(*info));
}

/// Owns the description of one member of an interface.
class Function {
public:
    explicit Function(ITypeInfo2& table) : m_table(table) {}
    Function(const Function&) = delete;
    Function& operator=(const Function&) = delete;
    ~Function()
    {
        if (m_function) m_table.ReleaseFuncDesc(m_function);
    }
    /// False when the interface has no such member of this kind.
    bool Find(DISPID member, INVOKEKIND kind)
    {
        UINT index = 0;
        return SUCCEEDED(m_table.GetFuncIndexOfMemId(member, kind, &index)) &&
               SUCCEEDED(m_table.GetFuncDesc(index, &m_function));
    }
    /// The method, property write or property read that a call of this kind means.
    bool Find(DISPID member, WORD kind)
    {
        for (const INVOKEKIND one : {INVOKE_FUNC, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF, INVOKE_PROPERTYGET})
            if ((kind & one) && Find(member, one)) return true;
        return false;
    }
    const FUNCDESC& Get() const { return *m_function; }

private:
    ITypeInfo2& m_table;
    FUNCDESC* m_function = nullptr;
};

/// Arguments behind a property that takes none are meant for the object that it gives, as in Nodes(1).
HRESULT InvokeDefault(const Description& description, void* object, DISPID member, WORD kind, const Invocation& call)
{
    DISPPARAMS none{};
    Variant value;
    const HRESULT got = description.info->Invoke(object, member, DISPATCH_PROPERTYGET, &none, value.Put(),
                                                 call.exception, call.badArgument);
    if (FAILED(got)) return got;
    IDispatch* const given = value.Type() == VT_DISPATCH ? V_DISPATCH(&value.Get()) : nullptr;
    if (!given) return DISP_E_BADPARAMCOUNT;
    return Guarded([&] {
        return given->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, kind, call.arguments, call.result,
                             call.exception, call.badArgument);
    });
}

HRESULT Invoke(const Description& description, void* object, DISPID member, WORD kind, const Invocation& call)
{
    Function function(*description.table);
    if (!function.Find(member, kind)) return DISP_E_MEMBERNOTFOUND;
    const FUNCDESC& called = function.Get();
    const bool isRead = called.invkind == INVOKE_PROPERTYGET;
    if (isRead && call.arguments->cArgs > 0 && VisibleParameters(called) == 0 && MayGiveObject(called))
        return InvokeDefault(description, object, member, kind, call);
    BoundArguments arguments(*description.table, called, *call.arguments, call.badArgument);
    // Not every platform lets go of a result that nobody asks for.
    Variant unwanted;
    VARIANT* const wanted = call.result ? call.result : &unwanted.Get();
    VARIANT* const result = isRead || called.invkind == INVOKE_FUNC ? wanted : nullptr;
    const HRESULT done = description.info->Invoke(object, member, static_cast<WORD>(called.invkind), arguments.Get(),
                                                  result, call.exception, call.badArgument);
    if (FAILED(done)) return done;
    arguments.CopyBack();
    // Scripts know no numbers without a sign: a colour is 32 bits to them.
    if (result && V_VT(result) == VT_UI4) V_VT(result) = VT_I4;
    return done;
}

}  // namespace

ComPtr<ITypeInfo> TypeInfoOf(const GUID& id)
{
    return Describe(id).info;
}

HRESULT CopyTypeInfo(const GUID& id, ITypeInfo** info) noexcept
{
    if (!info) return E_POINTER;
    *info = nullptr;
    return Border(id, [&] { TypeInfoOf(id).CopyTo(info); });
}

HRESULT FindMembers(const IID& interfaceId, const IID& reserved, LPOLESTR* names, UINT count, DISPID* members) noexcept
{
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!names || !members || count == 0) return E_INVALIDARG;
    return Border(interfaceId, [&] { return TypeInfoOf(interfaceId)->GetIDsOfNames(names, count, members); });
}

HRESULT InvokeMember(const IID& interfaceId, void* object, DISPID member, const IID& reserved, WORD kind,
                     const Invocation& invocation) noexcept
{
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!invocation.arguments) return E_POINTER;
    // Every property can be written in one way only, and a caller cannot know in which.
    constexpr WORD writes = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    const WORD meant = (kind & writes) ? kind | writes : kind;
    return Border(interfaceId, [&] { return Invoke(Describe(interfaceId), object, member, meant, invocation); });
}

void ReleaseTypeInfos() noexcept
{
    const Guard guard;
    delete std::exchange(loadedLibrary, nullptr);
}

}  // namespace sylvex
