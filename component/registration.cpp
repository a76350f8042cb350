#include "component/registration.h"

#include <string>
#include <vector>

#include "component/border/border.h"
#include "component/container/ole_object.h"
#include "component/resource.h"

#include "SylvexControl_h.h"

// Exported since Windows Vista; the declarations are missing from some SDK headers.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND system);

namespace sylvex {

namespace {

constexpr wchar_t kProgId[] = L"SylvexControl.Sylvex";
constexpr wchar_t kVersionedProgId[] = L"SylvexControl.Sylvex.1";
constexpr wchar_t kTitle[] = L"Sylvex Folder and File Selector";
constexpr WORD kMajorVersion = 1;
constexpr WORD kMinorVersion = 0;
// The file of this word size, of the neutral language, below the library's key.
constexpr const wchar_t* kOwnLibrary = sizeof(void*) == 8 ? L"\\0\\win64" : L"\\0\\win32";
constexpr GUID kControlCategory = {0x40FC6ED4, 0x2438, 0x11CF, {0xA3, 0xDB, 0x08, 0x00, 0x36, 0xF1, 0x25, 0x02}};

/// A text below the classes key; `name` is empty for the key's default value.
struct Entry {
    std::wstring key;
    std::wstring name;
    std::wstring text;
};

class Key {
public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key()
    {
        if (m_key) RegCloseKey(m_key);
    }
    HKEY Get() const { return m_key; }
    HKEY* Put() { return &m_key; }

private:
    HKEY m_key = nullptr;
};

void CheckRegistry(LSTATUS status)
{
    Check(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

std::wstring Text(const GUID& id)
{
    wchar_t text[39] = {};
    StringFromGUID2(id, text, ARRAYSIZE(text));
    return text;
}

std::wstring ClassKey()
{
    return L"CLSID\\" + Text(__uuidof(::Sylvex));
}

std::wstring LibraryKey()
{
    return L"TypeLib\\" + Text(LIBID_SylvexControl) + L"\\" + std::to_wstring(kMajorVersion) + L"." +
           std::to_wstring(kMinorVersion);
}

// The classes themselves, not their merged view, so that a user's own registration never hides the machine's.
HKEY RootOf(Scope scope)
{
    return scope == Scope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::wstring ClassesPath(const std::wstring& key)
{
    return L"Software\\Classes\\" + key;
}

std::vector<Entry> ProgramIdEntries()
{
    const std::wstring classId = Text(__uuidof(::Sylvex));
    return {
        {kVersionedProgId, L"", kTitle},
        {std::wstring(kVersionedProgId) + L"\\CLSID", L"", classId},
        {kProgId, L"", kTitle},
        {std::wstring(kProgId) + L"\\CLSID", L"", classId},
        {std::wstring(kProgId) + L"\\CurVer", L"", kVersionedProgId},
    };
}

std::vector<Entry> ClassEntries(const std::wstring& path)
{
    const std::wstring key = ClassKey();
    return {
        {key, L"", kTitle},
        {key + L"\\InprocServer32", L"", path},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\ProgID", L"", kVersionedProgId},
        {key + L"\\VersionIndependentProgID", L"", kProgId},
        {key + L"\\TypeLib", L"", Text(LIBID_SylvexControl)},
        {key + L"\\Version", L"", L"1.0"},
        {key + L"\\Control", L"", L""},
        {key + L"\\Implemented Categories\\" + Text(kControlCategory), L"", L""},
        {key + L"\\MiscStatus", L"", L"0"},
        {key + L"\\MiscStatus\\1", L"", std::to_wstring(kMiscStatus)},
        {key + L"\\ToolboxBitmap32", L"", path + L", " + std::to_wstring(IDB_TOOLBOX)},
    };
}

void Write(Scope scope, const std::vector<Entry>& entries)
{
    for (const Entry& entry : entries) {
        Key key;
        CheckRegistry(RegCreateKeyExW(RootOf(scope), ClassesPath(entry.key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                      nullptr, key.Put(), nullptr));
        const DWORD bytes = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
        CheckRegistry(RegSetValueExW(key.Get(), entry.name.c_str(), 0, REG_SZ,
                                     reinterpret_cast<const BYTE*>(entry.text.c_str()), bytes));
    }
}

void RemoveTree(Scope scope, const std::wstring& key)
{
    const LSTATUS status = RegDeleteTreeW(RootOf(scope), ClassesPath(key).c_str());
    if (status != ERROR_FILE_NOT_FOUND) CheckRegistry(status);
}

// The first class of a user makes the key of all classes as well.
void RemoveIfEmpty(Scope scope, const std::wstring& key)
{
    Key found;
    DWORD keys = 0;
    DWORD values = 0;
    if (RegOpenKeyExW(RootOf(scope), ClassesPath(key).c_str(), 0, KEY_READ, found.Put()) != ERROR_SUCCESS) return;
    CheckRegistry(RegQueryInfoKeyW(found.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                                   nullptr, nullptr, nullptr));
    if (keys == 0 && values == 0) CheckRegistry(RegDeleteKeyW(RootOf(scope), ClassesPath(key).c_str()));
}

bool Exists(Scope scope, const std::wstring& key, REGSAM view = 0)
{
    Key found;
    return RegOpenKeyExW(RootOf(scope), ClassesPath(key).c_str(), 0, KEY_READ | view, found.Put()) == ERROR_SUCCESS;
}

// Programs of the other word size have classes of their own, but the same program identifiers and type libraries. Where
// there is only one word size this is asked for the own class.
bool OtherWordSizeExists(Scope scope)
{
    constexpr REGSAM otherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    return Exists(scope, ClassKey(), otherView);
}

ComPtr<ITypeLib> LoadLibraryOf(const std::wstring& path)
{
    ComPtr<ITypeLib> library;
    Check(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put()));
    return library;
}

void RegisterTypeLibrary(Scope scope, std::wstring path)
{
    const ComPtr<ITypeLib> library = LoadLibraryOf(path);
    const auto registerLibrary = scope == Scope::User ? RegisterTypeLibForUser : RegisterTypeLib;
    Check(registerLibrary(library.Get(), path.data(), nullptr));
}

void UnregisterTypeLibrary(Scope scope)
{
    // A user's library is asked for without looking: not every system keeps it with the user.
    if (scope == Scope::Machine && !Exists(scope, LibraryKey())) return;
    constexpr SYSKIND system = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
    const auto unregister = scope == Scope::User ? UnRegisterTypeLibForUser : UnRegisterTypeLib;
    const HRESULT result = unregister(LIBID_SylvexControl, kMajorVersion, kMinorVersion, LOCALE_NEUTRAL, system);
    // It also fails when there is nothing to remove.
    if (Exists(scope, LibraryKey())) Check(result);
}

}  // namespace

HRESULT RegisterComponent(Scope scope) noexcept
{
    const HRESULT result = Border(IID_NULL, [&] {
        const std::wstring path = ModulePath();
        Write(scope, ClassEntries(path));
        Write(scope, ProgramIdEntries());
        RegisterTypeLibrary(scope, path);
    });
    if (FAILED(result)) UnregisterComponent(scope);
    return result;
}

HRESULT UnregisterComponent(Scope scope) noexcept
{
    return Border(IID_NULL, [&] {
        RemoveTree(scope, ClassKey());
        RemoveIfEmpty(scope, L"CLSID");
        if (OtherWordSizeExists(scope)) {
            RemoveTree(scope, LibraryKey() + kOwnLibrary);
            return;
        }
        UnregisterTypeLibrary(scope);
        for (const wchar_t* const key : {kProgId, kVersionedProgId})
            RemoveTree(scope, key);
    });
}

}  // namespace sylvex
