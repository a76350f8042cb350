#pragma once

#include <windows.h>

#include <ole2.h>

#include <string>

namespace sylvex::test {

/// Path of the component under test: the environment variable SYLVEX_OCX, or the file beside the test program.
inline std::wstring ComponentPath()
{
    wchar_t path[32768];
    const DWORD length = GetEnvironmentVariableW(L"SYLVEX_OCX", path, ARRAYSIZE(path));
    if (length > 0 && length < ARRAYSIZE(path)) return path;
    const std::wstring program(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    return program.substr(0, program.rfind(L'\\') + 1) + L"SylvexControl.ocx";
}

/// The path of a file beside the component.
inline std::wstring BesideComponent(const wchar_t* name)
{
    const std::wstring component = ComponentPath();
    return component.substr(0, component.rfind(L'\\') + 1) + name;
}

/// The component, or another copy of it, as a file that a host loads.
class ComponentFile {
public:
    explicit ComponentFile(const std::wstring& path = ComponentPath()) : m_module(LoadLibraryW(path.c_str())) {}
    ComponentFile(const ComponentFile&) = delete;
    ComponentFile& operator=(const ComponentFile&) = delete;
    ~ComponentFile()
    {
        if (m_module) FreeLibrary(m_module);
    }

    HRESULT Register() const { return Call("DllRegisterServer"); }
    HRESULT Unregister() const { return Call("DllUnregisterServer"); }
    HRESULT CanUnloadNow() const { return Call("DllCanUnloadNow"); }
    HRESULT Install(BOOL install, const wchar_t* commandLine) const { return Call("DllInstall", install, commandLine); }
    HRESULT ClassObject(const CLSID& id, IClassFactory** factory) const
    {
        return Call("DllGetClassObject", &id, &IID_IClassFactory, reinterpret_cast<void**>(factory));
    }

private:
    template <class... Arguments>
    HRESULT Call(const char* name, Arguments... arguments) const
    {
        const FARPROC found = m_module ? GetProcAddress(m_module, name) : nullptr;
        if (!found) return E_FAIL;
        return reinterpret_cast<HRESULT(WINAPI*)(Arguments...)>(reinterpret_cast<void*>(found))(arguments...);
    }

    HMODULE m_module;
};

}  // namespace sylvex::test
