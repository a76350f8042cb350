#include "tests/component/test_control.h"

namespace sylvex::test {
namespace {

template <class Function>
Function Procedure(HMODULE module, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// The container window of one version of the platform's template library.
class AtlWindow : public testing::TestWithParam<const wchar_t*> {};

TEST_P(AtlWindow, HostsSizesFocusesAndEndsTheControl)
{
    const HMODULE module = LoadLibraryW((std::wstring(L"atl") + GetParam() + L".dll").c_str());
    if (!module) GTEST_SKIP() << "not on this system";
    const auto init = Procedure<BOOL(WINAPI*)()>(module, "AtlAxWinInit");
    const auto attach = Procedure<HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**)>(module, "AtlAxAttachControl");
    ASSERT_TRUE(init && attach && init());
    const HWND form = CreateWindowW(L"Static", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 400, 300, nullptr,
                                    nullptr, nullptr, nullptr);
    const HWND window = CreateWindowW((std::wstring(L"AtlAxWin") + GetParam()).c_str(), L"", WS_CHILD | WS_VISIBLE, 10,
                                      20, 240, 180, form, nullptr, nullptr, nullptr);
    ASSERT_TRUE(window);
    ComPtr<::_Sylvex> control = NewControl();
    ComPtr<IUnknown> container;
    ASSERT_EQ(attach(control.Get(), window, container.Put()), S_OK);
    container.Reset();
    DrainMessages();
    const HWND tree = TreeOf(control);
    EXPECT_TRUE(IsChild(window, tree));
    EXPECT_TRUE(IsWindowVisible(tree));

    MoveWindow(window, 0, 0, 320, 200, TRUE);
    DrainMessages();
    RECT inner{};
    GetWindowRect(tree, &inner);
    EXPECT_EQ(inner.right - inner.left, 320);
    EXPECT_EQ(inner.bottom - inner.top, 200);

    SetFocus(tree);
    DrainMessages();
    EXPECT_EQ(GetFocus(), tree);
    EXPECT_HRESULT_SUCCEEDED(control->Enumerate());

    DestroyWindow(window);
    DrainMessages();
    EXPECT_EQ(control.Detach()->Release(), 0u) << "the container holds nothing any more";
    DrainMessages();
    EXPECT_FALSE(IsWindow(tree));
    DestroyWindow(form);
}

INSTANTIATE_TEST_SUITE_P(Versions, AtlWindow, testing::Values(L"", L"80", L"90", L"100", L"110"));

}  // namespace
}  // namespace sylvex::test
