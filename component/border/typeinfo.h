#pragma once

#include "component/border/border.h"

namespace sylvex {

/// What IDispatch::Invoke was handed besides the member; any pointer but `arguments` may be null.
struct Invocation {
    DISPPARAMS* arguments;
    VARIANT* result;
    EXCEPINFO* exception;
    UINT* badArgument;
};

/// The description of an interface or class in the component's own type library; throws ComError.
ComPtr<ITypeInfo> TypeInfoOf(const GUID& id);

/// As TypeInfoOf(), into an [out] argument.
HRESULT CopyTypeInfo(const GUID& id, ITypeInfo** info) noexcept;

/// IDispatch::GetIDsOfNames for a dual interface of the type library.
HRESULT FindMembers(const IID& interfaceId, const IID& reserved, LPOLESTR* names, UINT count, DISPID* members) noexcept;

/// IDispatch::Invoke for a dual interface of the type library; `object` must be that very interface of the object.
HRESULT InvokeMember(const IID& interfaceId, void* object, DISPID member, const IID& reserved, WORD kind,
                     const Invocation& invocation) noexcept;

/// Lets go of the type library; the next use loads it again. Called before the component is unloaded.
void ReleaseTypeInfos() noexcept;

}  // namespace sylvex
