#include "platform/win32/windows.h"

#include <algorithm>
#include <cwctype>

#include "platform/win32/handles.h"
#include "platform/win32/listwindow.h"
#include "platform/win32/tree/treewindow.h"

namespace sylvex {
namespace {

Point PointOf(const POINT& point)
{
    return {static_cast<int>(point.x), static_cast<int>(point.y)};
}

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

WindowHandle Win32Windows::TopLevelOf(WindowHandle window)
{
    return NumberOf(FormOf(WindowOf(window)));
}

std::optional<Rect> Win32Windows::ClientRect(WindowHandle window)
{
    RECT rect{};
    if (!GetClientRect(WindowOf(window), &rect)) return std::nullopt;
    return RectOf(rect);
}

std::optional<Rect> Win32Windows::WindowRect(WindowHandle window)
{
    RECT rect{};
    if (!GetWindowRect(WindowOf(window), &rect)) return std::nullopt;
    return RectOf(rect);
}

std::optional<Point> Win32Windows::ClientToScreen(WindowHandle window, Point client)
{
    POINT point{client.x, client.y};
    if (!::ClientToScreen(WindowOf(window), &point)) return std::nullopt;
    return PointOf(point);
}

Point Win32Windows::ScreenToClient(WindowHandle window, Point screen)
{
    POINT point{screen.x, screen.y};
    ::ScreenToClient(WindowOf(window), &point);
    return PointOf(point);
}

std::optional<ScrollBar> Win32Windows::GetScrollInfo(WindowHandle window, int bar)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    if (!::GetScrollInfo(WindowOf(window), bar, &info)) return std::nullopt;
    return ScrollBar{info.nMin, info.nMax, info.nPage, info.nPos};
}

int Win32Windows::GetScrollPos(WindowHandle window, int bar)
{
    return ::GetScrollPos(WindowOf(window), bar);
}

void Win32Windows::UpdateWindow(WindowHandle window)
{
    ::UpdateWindow(WindowOf(window));
}

}  // namespace sylvex
