#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

#include "SylvexControl_h.h"
#include "tests/component/automation.h"
#include "tests/component/component_file.h"

namespace sylvex::test {
namespace {

const std::string kClass = "CLSID\\{7834C981-1BEB-4F8A-ACFA-8F0F4E2E3A7E}";

// Keys and values as lines, "key" and "key\name=text".
using Lines = std::set<std::string>;

void AddKey(HKEY parent, const std::wstring& name, const std::string& path, Lines& lines)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    lines.insert(path);
    wchar_t text[1024];
    BYTE data[8192];
    for (DWORD index = 0;; ++index) {
        DWORD size = ARRAYSIZE(text);
        DWORD dataSize = sizeof(data) - sizeof(wchar_t);
        if (RegEnumValueW(key, index, text, &size, nullptr, nullptr, data, &dataSize) != ERROR_SUCCESS) break;
        const std::wstring value(reinterpret_cast<const wchar_t*>(data), dataSize / sizeof(wchar_t));
        lines.insert(path + "\\" + Narrow(text) + "=" + Narrow(value.c_str()));
    }
    for (DWORD index = 0;; ++index) {
        DWORD size = ARRAYSIZE(text);
        if (RegEnumKeyExW(key, index, text, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        AddKey(key, text, path + "\\" + Narrow(text), lines);
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

// Those of the lines that are at or below a key, without it.
Lines Below(const Lines& lines, const std::string& key)
{
    Lines below;
    for (const std::string& line : lines)
        if (line == "\\" + key || line.starts_with("\\" + key + "\\")) below.insert(line.substr(key.size() + 1));
    return below;
}

Lines ExpectedClass(const std::string& file)
{
    const std::string category = "\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}";
    return {"",
            "\\=Sylvex Folder and File Selector",
            "\\Control",
            "\\Control\\=",
            "\\Implemented Categories",
            category,
            category + "\\=",
            "\\InprocServer32",
            "\\InprocServer32\\=" + file,
            "\\InprocServer32\\ThreadingModel=Apartment",
            "\\MiscStatus",
            "\\MiscStatus\\=0",
            "\\MiscStatus\\1",
            "\\MiscStatus\\1\\=131473",
            "\\ProgID",
            "\\ProgID\\=SylvexControl.Sylvex.1",
            "\\ToolboxBitmap32",
            "\\ToolboxBitmap32\\=" + file + ", 101",
            "\\TypeLib",
            "\\TypeLib\\={B97E2C32-47E0-4E50-94A5-BDCA0E60D0B8}",
            "\\Version",
            "\\Version\\=1.0",
            "\\VersionIndependentProgID",
            "\\VersionIndependentProgID\\=SylvexControl.Sylvex"};
}

bool LibraryIsRegistered()
{
    ComPtr<ITypeLib> library;
    return SUCCEEDED(LoadRegTypeLib(LIBID_SylvexControl, 1, 0, LOCALE_NEUTRAL, library.Put()));
}

// The machine's registration is taken away for each test, and put back as it was.
class Registration : public testing::Test {
protected:
    void SetUp() override
    {
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
    }

    Lines AddedToMachine() { return Without(Classes(HKEY_LOCAL_MACHINE), m_machine); }
    Lines AddedToUser() { return Without(Classes(HKEY_CURRENT_USER), m_user); }
    void ExpectNothingChanged()
    {
        EXPECT_EQ(Classes(HKEY_LOCAL_MACHINE), m_machine);
        EXPECT_EQ(Classes(HKEY_CURRENT_USER), m_user);
    }

    const ComponentFile m_file;
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
    const Lines programId{"", "\\=Sylvex Folder and File Selector", "\\CLSID",
                          "\\CLSID\\={7834C981-1BEB-4F8A-ACFA-8F0F4E2E3A7E}"};
    EXPECT_EQ(Below(added, "SylvexControl.Sylvex.1"), programId);
    Lines current = programId;
    current.merge(Lines{"\\CurVer", "\\CurVer\\=SylvexControl.Sylvex.1"});
    EXPECT_EQ(Below(added, "SylvexControl.Sylvex"), current);
    EXPECT_EQ(AddedToUser(), Lines());
    EXPECT_TRUE(LibraryIsRegistered());
    EXPECT_TRUE(added.contains("\\Interface\\{5488AB20-845C-46AA-8C64-428292CDD96B}\\=_Sylvex"));
    {
        CLSID id = {};
        EXPECT_HRESULT_SUCCEEDED(CLSIDFromProgID(L"SylvexControl.Sylvex", &id));
        ComPtr<IDispatch> control;
        ASSERT_HRESULT_SUCCEEDED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.PutAny()));
        EXPECT_EQ(Value(control.Get()).Call(L"ReturnFileName", {L"a\\b"}).Text(), L"b");
    }
    // Once more changes nothing.
    EXPECT_HRESULT_SUCCEEDED(m_file.Install(TRUE, L""));
    EXPECT_EQ(AddedToMachine(), added);
    for (const bool again : {false, true}) {
        ASSERT_HRESULT_SUCCEEDED(again ? m_file.Install(FALSE, nullptr) : m_file.Unregister());
        ExpectNothingChanged();
    }
}

TEST_F(Registration, ForOneUserStaysWithTheUserAndLeavesNothingBehind)
{
    ASSERT_HRESULT_SUCCEEDED(m_file.Install(TRUE, L"user"));
    EXPECT_EQ(Below(AddedToUser(), kClass), ExpectedClass(m_path));
    EXPECT_EQ(Below(AddedToMachine(), kClass), Lines());
    EXPECT_EQ(Below(AddedToMachine(), "SylvexControl.Sylvex"), Lines());
    // Whether the library is kept with the user is the system's affair: Wine keeps it with the machine's.
    EXPECT_TRUE(LibraryIsRegistered());
    for (int again = 0; again < 2; ++again) {
        ASSERT_HRESULT_SUCCEEDED(m_file.Install(FALSE, L"user"));
        ExpectNothingChanged();
    }
}

TEST_F(Registration, KeepsWhatTheOtherWordSizeShares)
{
    BOOL emulated = sizeof(void*) == 8;
    if (!emulated) IsWow64Process(GetCurrentProcess(), &emulated);
    if (!emulated) GTEST_SKIP() << "there is only one word size";
    // The class as a component of the other word size registers it.
    constexpr REGSAM kView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    const std::wstring name = L"Software\\Classes\\" + std::wstring(kClass.begin(), kClass.end());
    HKEY other = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, 0, KEY_WRITE | kView, nullptr, &other, nullptr);
    RegCloseKey(other);
    EXPECT_HRESULT_SUCCEEDED(m_file.Register());
    const Lines registered = AddedToMachine();
    EXPECT_HRESULT_SUCCEEDED(m_file.Unregister());
    Lines gone = Without(registered, AddedToMachine());
    std::erase_if(gone, [](const std::string& line) {
        return line.starts_with("\\" + kClass) || line.find("\\1.0\\0\\win") != std::string::npos;
    });
    EXPECT_EQ(gone, Lines());

    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), kView, 0);
    ASSERT_HRESULT_SUCCEEDED(m_file.Register());
    ASSERT_HRESULT_SUCCEEDED(m_file.Unregister());
    ExpectNothingChanged();
}

class ClassFactory : public testing::Test {
protected:
    void SetUp() override { ASSERT_HRESULT_SUCCEEDED(m_file.ClassObject(__uuidof(::Sylvex), m_factory.Put())); }

    const ComponentFile m_file;
    ComPtr<IClassFactory> m_factory;
};

TEST_F(ClassFactory, MakesTheControlOnly)
{
    ComPtr<IClassFactory> other;
    EXPECT_EQ(m_file.ClassObject(__uuidof(::Node), other.Put()), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_FALSE(other);
    void* object = &other;
    EXPECT_EQ(m_factory->CreateInstance(nullptr, IID_IMarshal, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(ClassFactory, KeepsTheComponentLoadedWhileAnythingIsHeld)
{
    EXPECT_TRUE(ComponentIsBusy());
    ComPtr<IUnknown> control;
    ASSERT_HRESULT_SUCCEEDED(m_factory->CreateInstance(nullptr, IID_IUnknown, control.PutAny()));
    m_factory->LockServer(TRUE);
    m_factory.Reset();
    EXPECT_TRUE(ComponentIsBusy()) << "held by the control and the lock";
    EXPECT_EQ(control.Detach()->Release(), 0u);
    EXPECT_TRUE(ComponentIsBusy()) << "held by the lock";
    ASSERT_HRESULT_SUCCEEDED(m_file.ClassObject(__uuidof(::Sylvex), m_factory.Put()));
    m_factory->LockServer(FALSE);
    m_factory.Reset();
    EXPECT_FALSE(ComponentIsBusy());
}

TEST_F(ClassFactory, LetsTheControlBePartOfAnotherObject)
{
    OuterObject outer;
    void* refused = nullptr;
    EXPECT_EQ(m_factory->CreateInstance(&outer, IID_IDispatch, &refused), CLASS_E_NOAGGREGATION);
    ASSERT_HRESULT_SUCCEEDED(m_factory->CreateInstance(&outer, IID_IUnknown, reinterpret_cast<void**>(&outer.inner)));
    EXPECT_EQ(outer.References(), 0) << "an inner object does not count its outer one";
    {
        const auto members = ComPtr<IUnknown>(&outer).As<IDispatch>();
        EXPECT_EQ(members.As<IUnknown>().Get(), &outer);
        const Value control(members.Get());
        EventLog log(control);
        SendMessageW(WindowOf(control), WM_KEYDOWN, VK_F5, 0);
        EXPECT_EQ(log.Take(), L"KeyDown 116 0");
    }
    EXPECT_EQ(outer.References(), 0) << "every reference that the control took it gave back";
    EXPECT_EQ(outer.inner->Release(), 0u);
}

}  // namespace
}  // namespace sylvex::test
