// The component as a file that a host loads, uses and lets go of.

#include <thread>

#include "tests/component/component_file.h"
#include "tests/component/handles.h"
#include "tests/component/test_control.h"

namespace sylvex::test {
namespace {

constexpr wchar_t kCopy[] = L"SylvexLoaded.ocx";

/// A copy of the component under a name of its own, which nobody else in this process has loaded.
class Loading : public testing::Test {
protected:
    Loading() { CopyFileW(ComponentPath().c_str(), kCopy, FALSE); }
    ~Loading() override { DeleteFileW(kCopy); }

    /// Makes a control, has it fail at a fault of the caller's, and lets go of it.
    static void Use(const ComponentFile& file)
    {
        ComPtr<IClassFactory> factory;
        ComPtr<::_Sylvex> control;
        ASSERT_EQ(file.ClassObject(__uuidof(::Sylvex), factory.Put()), S_OK);
        ASSERT_EQ(factory->CreateInstance(nullptr, __uuidof(::_Sylvex), control.PutAny()), S_OK);
        EXPECT_EQ(control->put_FileFilter(reinterpret_cast<BSTR>(0x100)), static_cast<HRESULT>(0x800A2715));
        EXPECT_EQ(control->put_hWnd(1), static_cast<HRESULT>(0x800A017E));
    }

    static void LoadUseUnload(bool onOtherThreadsToo)
    {
        {
            const ComponentFile file(kCopy);
            Use(file);
            if (onOtherThreadsToo) {
                std::thread([&] {
                    OleInitialize(nullptr);
                    Use(file);
                    OleUninitialize();
                }).join();
            }
            EXPECT_EQ(file.CanUnloadNow(), S_OK);
            SetErrorInfo(0, nullptr);
        }
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
    {
        const ComponentFile file(kCopy);
        Use(file);
        EXPECT_EQ(SetUnhandledExceptionFilter(&CountUnhandled), &CountUnhandled);
    }
    EXPECT_EQ(SetUnhandledExceptionFilter(before), &CountUnhandled);
}

}  // namespace
}  // namespace sylvex::test
