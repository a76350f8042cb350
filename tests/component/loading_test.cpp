// The component as a file that a host loads, uses and lets go of.

#include <windows.h>

#include <ole2.h>

#include <gtest/gtest.h>

#include <thread>

#include "SylvexControl_h.h"
#include "tests/component/automation.h"
#include "tests/component/component_file.h"
#include "tests/component/handles.h"

namespace sylvex::test {
namespace {

constexpr wchar_t kCopy[] = L"SylvexLoaded.ocx";

/// A copy of the component under a name of its own, which nobody else in this process has loaded.
class Loading : public testing::Test {
protected:
    Loading() { CopyFileW(ComponentPath().c_str(), kCopy, FALSE); }
    ~Loading() override { DeleteFileW(kCopy); }

    template <class Function>
    static Function Export(HMODULE module, const char* name)
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    }

    /// Makes a control, has it fail at a fault of the caller's, and lets go of it.
    static void Use(HMODULE module)
    {
        const auto get = Export<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(module, "DllGetClassObject");
        IClassFactory* factory = nullptr;
        ::_Sylvex* control = nullptr;
        ASSERT_EQ(get(__uuidof(::Sylvex), IID_IClassFactory, reinterpret_cast<void**>(&factory)), S_OK);
        ASSERT_EQ(factory->CreateInstance(nullptr, __uuidof(::_Sylvex), reinterpret_cast<void**>(&control)), S_OK);
        factory->Release();
        EXPECT_EQ(control->put_FileFilter(reinterpret_cast<BSTR>(0x100)), static_cast<HRESULT>(0x800A2715));
        EXPECT_EQ(control->put_hWnd(1), static_cast<HRESULT>(0x800A017E));
        control->Release();
    }

    static void LoadUseUnload(bool onOtherThreadsToo)
    {
        const HMODULE module = LoadLibraryW(kCopy);
        ASSERT_NE(module, nullptr);
        Use(module);
        if (onOtherThreadsToo) {
            std::thread([&] {
                OleInitialize(nullptr);
                Use(module);
                OleUninitialize();
            }).join();
        }
        EXPECT_EQ(Export<HRESULT(WINAPI*)()>(module, "DllCanUnloadNow")(), S_OK);
        SetErrorInfo(0, nullptr);
        FreeLibrary(module);
        EXPECT_EQ(GetModuleHandleW(kCopy), nullptr);
    }

    /// The lowest free index of thread storage, which grows with indices that are not given back.
    static DWORD FreeIndex()
    {
        const DWORD index = TlsAlloc();
        TlsFree(index);
        return index;
    }
};

TEST_F(Loading, LeavesNothingBehindAHundredTimes)
{
    for (int i = 0; i < 10; ++i)
        LoadUseUnload(true);
    const Handles before;
    const DWORD index = FreeIndex();
    for (int i = 0; i < 100; ++i)
        LoadUseUnload(i % 10 == 0);
    const Handles after;
    EXPECT_LE(after.open, before.open + 2);
    EXPECT_LE(after.gdi, before.gdi + 5);
    EXPECT_LE(after.user, before.user + 5);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(FreeIndex(), index);
}

LONG CALLBACK CountUnhandled(EXCEPTION_POINTERS*)
{
    return EXCEPTION_CONTINUE_SEARCH;
}

TEST_F(Loading, LeavesTheProcesssCrashHandlerToTheHost)
{
    const auto before = SetUnhandledExceptionFilter(&CountUnhandled);
    const HMODULE module = LoadLibraryW(kCopy);
    Use(module);
    EXPECT_EQ(SetUnhandledExceptionFilter(&CountUnhandled), &CountUnhandled);
    FreeLibrary(module);
    EXPECT_EQ(SetUnhandledExceptionFilter(before), &CountUnhandled);
}

}  // namespace
}  // namespace sylvex::test
