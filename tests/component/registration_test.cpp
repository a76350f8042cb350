#include <windows.h>

#include <ole2.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "SylvexControl_h.h"
#include "tests/component/component_file.h"

namespace sylvex::test {
namespace {

const std::string kClass = "CLSID\\{7834C981-1BEB-4F8A-ACFA-8F0F4E2E3A7E}";

// Keys and values as lines, "key" and "key\name=text".
using Lines = std::set<std::string>;

std::string Narrow(const std::wstring& wide)
{
    return std::string(wide.begin(), wide.end());
}

void AddValues(HKEY key, const std::string& path, Lines& lines)
{
    wchar_t name[1024];
    BYTE data[8192];
    for (DWORD index = 0;; ++index) {
        DWORD nameSize = ARRAYSIZE(name);
        DWORD dataSize = sizeof(data) - sizeof(wchar_t);
        DWORD type = 0;
        if (RegEnumValueW(key, index, name, &nameSize, nullptr, &type, data, &dataSize) != ERROR_SUCCESS) return;
        const std::wstring text(reinterpret_cast<const wchar_t*>(data), dataSize / sizeof(wchar_t));
        lines.insert(path + "\\" + Narrow(name) + "=" + Narrow(text.c_str()));
    }
}

void AddKey(HKEY parent, const std::wstring& name, const std::string& path, Lines& lines)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    lines.insert(path);
    AddValues(key, path, lines);
    wchar_t child[256];
    for (DWORD index = 0;; ++index) {
        DWORD size = ARRAYSIZE(child);
        if (RegEnumKeyExW(key, index, child, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        AddKey(key, child, path + "\\" + Narrow(child), lines);
    }
    RegCloseKey(key);
}

Lines Classes(HKEY root)
{
    Lines lines;
    AddKey(root, L"Software\\Classes", "", lines);
    return lines;
}

Lines Without(const Lines& all, const Lines& without)
{
    Lines rest;
    std::set_difference(all.begin(), all.end(), without.begin(), without.end(), std::inserter(rest, rest.end()));
    return rest;
}

// Those of the lines that are at or below a key.
Lines Below(const Lines& lines, const std::string& key)
{
    Lines below;
    for (const std::string& line : lines) {
        if (line == "\\" + key || line.starts_with("\\" + key + "\\")) below.insert(line);
    }
    return below;
}

Lines ExpectedClass(const std::string& file)
{
    const std::string key = "\\" + kClass;
    const std::string category = key + "\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}";
    return {
        key,
        key + "\\=Sylvex Folder and File Selector",
        key + "\\Control",
        key + "\\Control\\=",
        key + "\\Implemented Categories",
        category,
        category + "\\=",
        key + "\\InprocServer32",
        key + "\\InprocServer32\\=" + file,
        key + "\\InprocServer32\\ThreadingModel=Apartment",
        key + "\\MiscStatus",
        key + "\\MiscStatus\\=0",
        key + "\\MiscStatus\\1",
        key + "\\MiscStatus\\1\\=131473",
        key + "\\ProgID",
        key + "\\ProgID\\=SylvexControl.Sylvex.1",
        key + "\\ToolboxBitmap32",
        key + "\\ToolboxBitmap32\\=" + file + ", 101",
        key + "\\TypeLib",
        key + "\\TypeLib\\={B97E2C32-47E0-4E50-94A5-BDCA0E60D0B8}",
        key + "\\Version",
        key + "\\Version\\=1.0",
        key + "\\VersionIndependentProgID",
        key + "\\VersionIndependentProgID\\=SylvexControl.Sylvex",
    };
}

Lines ExpectedProgramIds()
{
    const std::string classId = "\\CLSID\\={7834C981-1BEB-4F8A-ACFA-8F0F4E2E3A7E}";
    return {
        "\\SylvexControl.Sylvex",          "\\SylvexControl.Sylvex\\=Sylvex Folder and File Selector",
        "\\SylvexControl.Sylvex\\CLSID",   "\\SylvexControl.Sylvex" + classId,
        "\\SylvexControl.Sylvex\\CurVer",  "\\SylvexControl.Sylvex\\CurVer\\=SylvexControl.Sylvex.1",
        "\\SylvexControl.Sylvex.1",        "\\SylvexControl.Sylvex.1\\=Sylvex Folder and File Selector",
        "\\SylvexControl.Sylvex.1\\CLSID", "\\SylvexControl.Sylvex.1" + classId,
    };
}

class ComponentFile {
public:
    explicit ComponentFile(const std::wstring& path) : m_module(LoadLibraryW(path.c_str())) {}
    ComponentFile(const ComponentFile&) = delete;
    ComponentFile& operator=(const ComponentFile&) = delete;
    ~ComponentFile()
    {
        if (m_module) FreeLibrary(m_module);
    }

    HRESULT Register() { return Call<HRESULT(WINAPI*)()>("DllRegisterServer")(); }
    HRESULT Unregister() { return Call<HRESULT(WINAPI*)()>("DllUnregisterServer")(); }
    HRESULT CanUnloadNow() { return Call<HRESULT(WINAPI*)()>("DllCanUnloadNow")(); }
    HRESULT Install(BOOL install, const wchar_t* commandLine)
    {
        return Call<HRESULT(WINAPI*)(BOOL, LPCWSTR)>("DllInstall")(install, commandLine);
    }
    HRESULT ClassObject(REFCLSID id, IClassFactory** factory)
    {
        const auto get = Call<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
        return get(id, IID_IClassFactory, reinterpret_cast<void**>(factory));
    }

private:
    template <class Function>
    Function Call(const char* name)
    {
        const FARPROC found = GetProcAddress(m_module, name);
        EXPECT_NE(found, nullptr) << name;
        return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
    }

    HMODULE m_module;
};

// The machine's registration is taken away for each test, and put back as it was.
class Registration : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_HRESULT_SUCCEEDED(OleInitialize(nullptr));
        m_registered = MachineFile();
        ASSERT_HRESULT_SUCCEEDED(m_file.Unregister());
        // A user who has never had a class of their own lacks the key above them, which stays once it is made.
        HKEY above = nullptr;
        RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Classes", &above);
        RegCloseKey(above);
        m_machine = Classes(HKEY_LOCAL_MACHINE);
        m_user = Classes(HKEY_CURRENT_USER);
    }

    void TearDown() override
    {
        CoFreeUnusedLibraries();
        if (m_registered) ComponentFile(*m_registered).Register();
        OleUninitialize();
    }

    Lines AddedToMachine() { return Without(Classes(HKEY_LOCAL_MACHINE), m_machine); }
    Lines AddedToUser() { return Without(Classes(HKEY_CURRENT_USER), m_user); }

    void ExpectNothingChanged()
    {
        EXPECT_EQ(Classes(HKEY_LOCAL_MACHINE), m_machine);
        EXPECT_EQ(Classes(HKEY_CURRENT_USER), m_user);
    }

    ComponentFile m_file{ComponentPath()};
    const std::string m_path = Narrow(ComponentPath());

private:
    static std::optional<std::wstring> MachineFile()
    {
        const std::wstring key =
            L"Software\\Classes\\" + std::wstring(kClass.begin(), kClass.end()) + L"\\InprocServer32";
        wchar_t path[32768];
        DWORD size = sizeof(path);
        if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path, &size)) return {};
        return path;
    }

    std::optional<std::wstring> m_registered;
    Lines m_machine;
    Lines m_user;
};

TEST_F(Registration, MachineWideIsWholeAndLeavesNothingBehind)
{
    ASSERT_HRESULT_SUCCEEDED(m_file.Register());

    const Lines added = AddedToMachine();
    EXPECT_EQ(Below(added, kClass), ExpectedClass(m_path));
    Lines programIds = Below(added, "SylvexControl.Sylvex");
    programIds.merge(Below(added, "SylvexControl.Sylvex.1"));
    EXPECT_EQ(programIds, ExpectedProgramIds());
    EXPECT_EQ(AddedToUser(), Lines());

    ITypeLib* library = nullptr;
    ASSERT_HRESULT_SUCCEEDED(LoadRegTypeLib(LIBID_SylvexControl, 1, 0, LOCALE_NEUTRAL, &library));
    library->Release();
    EXPECT_TRUE(added.contains("\\Interface\\{5488AB20-845C-46AA-8C64-428292CDD96B}\\=_Sylvex"));

    ASSERT_HRESULT_SUCCEEDED(m_file.Unregister());
    ExpectNothingChanged();
}

TEST_F(Registration, ClassIsCreatableByItsProgramId)
{
    ASSERT_HRESULT_SUCCEEDED(m_file.Register());
    CLSID id = {};
    EXPECT_HRESULT_SUCCEEDED(CLSIDFromProgID(L"SylvexControl.Sylvex", &id));
    IDispatch* control = nullptr;
    ASSERT_HRESULT_SUCCEEDED(
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&control)));
    DISPID member = 0;
    OLECHAR name[] = L"enumerate";
    LPOLESTR names = name;
    EXPECT_HRESULT_SUCCEEDED(control->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member));
    EXPECT_EQ(member, 0x6003002D);
    EXPECT_EQ(control->Release(), 0u);
    EXPECT_HRESULT_SUCCEEDED(m_file.Unregister());
}

TEST_F(Registration, ForOneUserStaysWithTheUserAndLeavesNothingBehind)
{
    ASSERT_HRESULT_SUCCEEDED(m_file.Install(TRUE, L"user"));

    EXPECT_EQ(Below(AddedToUser(), kClass), ExpectedClass(m_path));
    EXPECT_EQ(Below(AddedToMachine(), kClass), Lines());
    EXPECT_EQ(Below(AddedToMachine(), "SylvexControl.Sylvex"), Lines());
    // Whether the library is kept with the user is the system's affair: Wine keeps it with the machine's.
    ITypeLib* library = nullptr;
    ASSERT_HRESULT_SUCCEEDED(LoadRegTypeLib(LIBID_SylvexControl, 1, 0, LOCALE_NEUTRAL, &library));
    library->Release();

    ASSERT_HRESULT_SUCCEEDED(m_file.Install(FALSE, L"user"));
    ExpectNothingChanged();
}

// The class as a component of the other word size registers it.
class OtherWordSize {
public:
    OtherWordSize()
    {
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_WRITE | kView, nullptr, &m_key, nullptr);
    }
    OtherWordSize(const OtherWordSize&) = delete;
    OtherWordSize& operator=(const OtherWordSize&) = delete;
    ~OtherWordSize() { Remove(); }
    void Remove()
    {
        RegCloseKey(std::exchange(m_key, nullptr));
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, kKey, kView, 0);
    }

private:
    static constexpr const wchar_t* kKey = L"Software\\Classes\\CLSID\\{7834C981-1BEB-4F8A-ACFA-8F0F4E2E3A7E}";
    static constexpr REGSAM kView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY m_key = nullptr;
};

TEST_F(Registration, KeepsWhatTheOtherWordSizeShares)
{
    BOOL emulated = sizeof(void*) == 8;
    if (!emulated) IsWow64Process(GetCurrentProcess(), &emulated);
    if (!emulated) GTEST_SKIP() << "there is only one word size";
    OtherWordSize other;
    ASSERT_HRESULT_SUCCEEDED(m_file.Register());
    const Lines registered = AddedToMachine();
    ASSERT_HRESULT_SUCCEEDED(m_file.Unregister());
    Lines gone = Without(registered, AddedToMachine());
    for (const std::string& line : Below(gone, kClass))
        gone.erase(line);
    std::erase_if(gone, [](const std::string& line) { return line.find("\\1.0\\0\\win") != std::string::npos; });
    EXPECT_EQ(gone, Lines());

    other.Remove();
    ASSERT_HRESULT_SUCCEEDED(m_file.Register());
    ASSERT_HRESULT_SUCCEEDED(m_file.Unregister());
    ExpectNothingChanged();
}

TEST_F(Registration, CanBeRepeated)
{
    EXPECT_HRESULT_SUCCEEDED(m_file.Unregister());
    EXPECT_HRESULT_SUCCEEDED(m_file.Install(FALSE, L"user"));
    ExpectNothingChanged();

    EXPECT_HRESULT_SUCCEEDED(m_file.Install(TRUE, L""));
    const Lines once = AddedToMachine();
    EXPECT_HRESULT_SUCCEEDED(m_file.Register());
    EXPECT_EQ(AddedToMachine(), once);

    EXPECT_HRESULT_SUCCEEDED(m_file.Install(FALSE, nullptr));
    ExpectNothingChanged();
}

// An object that hides the one inside it, as containers extend a control.
class Outer : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        if (id != IID_IUnknown) return inner->QueryInterface(id, found);
        *found = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    IUnknown* inner = nullptr;
    ULONG references = 1;
};

class ClassFactory : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_HRESULT_SUCCEEDED(OleInitialize(nullptr));
        ASSERT_HRESULT_SUCCEEDED(m_file.ClassObject(__uuidof(::Sylvex), &m_factory));
    }
    void TearDown() override
    {
        if (m_factory) m_factory->Release();
        OleUninitialize();
    }

    ComponentFile m_file{ComponentPath()};
    IClassFactory* m_factory = nullptr;
};

TEST_F(ClassFactory, MakesTheControlOnly)
{
    IClassFactory* other = nullptr;
    EXPECT_EQ(m_file.ClassObject(__uuidof(::Node), &other), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(other, nullptr);
    void* object = &other;
    EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_IMarshal, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(ClassFactory, KeepsTheComponentLoadedWhileAnythingIsHeld)
{
    EXPECT_EQ(m_file.CanUnloadNow(), S_FALSE);
    IUnknown* control = nullptr;
    ASSERT_HRESULT_SUCCEEDED(m_factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&control)));
    m_factory->LockServer(TRUE);
    std::exchange(m_factory, nullptr)->Release();
    EXPECT_EQ(m_file.CanUnloadNow(), S_FALSE) << "held by the control and the lock";
    EXPECT_EQ(control->Release(), 0u);
    EXPECT_EQ(m_file.CanUnloadNow(), S_FALSE) << "held by the lock";
    ASSERT_HRESULT_SUCCEEDED(m_file.ClassObject(__uuidof(::Sylvex), &m_factory));
    m_factory->LockServer(FALSE);
    std::exchange(m_factory, nullptr)->Release();
    EXPECT_EQ(m_file.CanUnloadNow(), S_OK);
}

TEST_F(ClassFactory, LetsTheControlBePartOfAnotherObject)
{
    Outer outer;
    void* refused = nullptr;
    EXPECT_EQ(m_factory->CreateInstance(&outer, IID_IDispatch, &refused), CLASS_E_NOAGGREGATION);
    ASSERT_HRESULT_SUCCEEDED(m_factory->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(&outer.inner)));
    EXPECT_EQ(outer.references, 1u) << "an inner object does not count its outer one";

    IDispatch* control = nullptr;
    ASSERT_HRESULT_SUCCEEDED(outer.QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&control)));
    IUnknown* identity = nullptr;
    EXPECT_HRESULT_SUCCEEDED(control->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity)));
    EXPECT_EQ(identity, &outer);
    identity->Release();
    control->Release();
    EXPECT_EQ(outer.references, 1u);
    EXPECT_EQ(outer.inner->Release(), 0u);
}

}  // namespace
}  // namespace sylvex::test
