// What makes an object a registered class: the class factory and the four entry points of an in-process component.

#include <new>
#include <string>

#include "reporter.h"

#include <olectl.h>

namespace {

/// A class of your own needs an identifier of its own; this one belongs to the sample.
constexpr CLSID kClass = {0x7c1c5b0e, 0x52f3, 0x4e0b, {0x9d, 0x34, 0x2a, 0x6b, 0x81, 0xc7, 0x5e, 0x19}};
constexpr wchar_t kClassText[] = L"{7C1C5B0E-52F3-4E0B-9D34-2A6B81C75E19}";
/// The name under which the control looks for its reporter.
constexpr wchar_t kName[] = L"Quenmark.Error";

class Factory final : public sylvex::CountedObject<IClassFactory> {
public:
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override
    {
        if (outer) return CLASS_E_NOAGGREGATION;
        auto* const made = new (std::nothrow) Reporter;
        if (!made) return E_OUTOFMEMORY;
        return sylvex::ComPtr<Reporter>::Adopt(made)->QueryInterface(id, object);
    }
    STDMETHODIMP LockServer(BOOL lock) override
    {
        lock ? sylvex::ModuleLock::Add() : sylvex::ModuleLock::Release();
        return S_OK;
    }
};

std::wstring ModulePath()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, kName,
                       &module);
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

LSTATUS Write(const std::wstring& key, const wchar_t* name, const std::wstring& value)
{
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring ClassKey()
{
    return L"CLSID\\" + std::wstring(kClassText);
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID identifier, REFIID id, void** object)
{
    if (!object) return E_POINTER;
    *object = nullptr;
    if (identifier != kClass) return CLASS_E_CLASSNOTAVAILABLE;
    auto* const factory = new (std::nothrow) Factory;
    return factory ? sylvex::ComPtr<Factory>::Adopt(factory)->QueryInterface(id, object) : E_OUTOFMEMORY;
}

STDAPI DllCanUnloadNow()
{
    return sylvex::ModuleLock::Count() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer()
{
    const std::wstring server = ClassKey() + L"\\InprocServer32";
    const bool done = Write(ClassKey(), nullptr, L"Error reporter for Sylvex") == ERROR_SUCCESS &&
                      Write(server, nullptr, ModulePath()) == ERROR_SUCCESS &&
                      Write(server, L"ThreadingModel", L"Both") == ERROR_SUCCESS &&
                      Write(std::wstring(kName) + L"\\CLSID", nullptr, kClassText) == ERROR_SUCCESS;
    return done ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer()
{
    // Somebody else's reporter may have taken the name meanwhile.
    wchar_t present[64]{};
    DWORD bytes = sizeof present;
    const std::wstring name = std::wstring(kName) + L"\\CLSID";
    RegGetValueW(HKEY_CLASSES_ROOT, name.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, present, &bytes);
    if (std::wstring(present) == kClassText) RegDeleteTreeW(HKEY_CLASSES_ROOT, kName);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, ClassKey().c_str());
    return S_OK;
}
