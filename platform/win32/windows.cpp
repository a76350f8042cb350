#include "platform/win32/windows.h"

#include <algorithm>
#include <cwctype>

#include "platform/win32/handles.h"
#include "platform/win32/listwindow.h"
#include "platform/win32/tree/treewindow.h"

namespace sylvex {
namespace {

bool OfThisProcess(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId();
}

// Hosts' frameworks register the list view again under names of their own, which all hold these words.
bool IsListView(HWND window)
{
    wchar_t name[256] = {};
    const auto length = GetClassNameW(window, name, 256);
    std::transform(name, name + length, name, [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
    return std::wstring_view(name).find(L"listview") != std::wstring_view::npos;
}

}  // namespace

std::unique_ptr<TreeWindow> Win32Windows::CreateTree(WindowHandle parent, TreeWindowListener& listener)
{
    return std::make_unique<Win32TreeWindow>(WindowOf(parent), listener);
}

std::unique_ptr<ListWindow> Win32Windows::WrapList(WindowHandle list)
{
    auto* const window = WindowOf(list);
    // The messages carry pointers, which mean nothing to another process.
    if (!IsWindow(window) || !OfThisProcess(window) || !IsListView(window)) return nullptr;
    return std::make_unique<Win32ListWindow>(window);
}

bool Win32Windows::Exists(WindowHandle window)
{
    return IsWindow(WindowOf(window)) != FALSE;
}

std::intptr_t Win32Windows::Send(WindowHandle window, unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
{
    if (!OfThisProcess(WindowOf(window))) return 0;
    return SendMessageW(WindowOf(window), message, wParam, lParam);
}

std::uint32_t Win32Windows::Style(WindowHandle window)
{
    return static_cast<std::uint32_t>(GetWindowLongPtrW(WindowOf(window), GWL_STYLE));
}

void Win32Windows::SetStyle(WindowHandle window, std::uint32_t style)
{
    SetWindowLongPtrW(WindowOf(window), GWL_STYLE, static_cast<LONG_PTR>(style));
}

}  // namespace sylvex
