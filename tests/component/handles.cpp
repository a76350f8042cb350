#include "tests/component/handles.h"

#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sylvex::test {
namespace {

BOOL CALLBACK CountWindow(HWND, LPARAM count)
{
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int WindowsOfThread()
{
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

// Some systems count no handles. Their table of graphics objects tells...
DWORD GdiEntries()
{
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t generation;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t user;
    };
    constexpr std::size_t tableOfProcess = sizeof(void*) == 8 ? 0xF8 : 0x94;
    constexpr std::size_t entries = 0x10000;
    const auto* const process = reinterpret_cast<const std::byte*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const auto* const table = *reinterpret_cast<const Entry* const*>(process + tableOfProcess);
    if (!table) return 0;
    return static_cast<DWORD>(
        std::count_if(table, table + entries, [](const Entry& entry) { return entry.type != 0; }));
}

// ... and so does the highest place that new icons get: it grows with handles that are not given back.
DWORD HighestIcon()
{
    std::vector<HICON> icons(300);
    DWORD highest = 0;
    for (HICON& icon : icons) {
        icon = CopyIcon(LoadIconW(nullptr, IDI_WARNING));
        highest = std::max<DWORD>(highest, LOWORD(reinterpret_cast<DWORD_PTR>(icon)));
    }
    for (const HICON icon : icons)
        DestroyIcon(icon);
    return highest;
}

DWORD Count(DWORD kind)
{
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), kind)) return counted;
    return kind == GR_GDIOBJECTS ? GdiEntries() : HighestIcon();
}

DWORD OpenHandles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

}  // namespace

Handles::Handles()
    : gdi(Count(GR_GDIOBJECTS)), user(Count(GR_USEROBJECTS)), open(OpenHandles()), windows(WindowsOfThread())
{
}

}  // namespace sylvex::test
