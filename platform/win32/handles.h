#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/types.h"

namespace sylvex {

/// Calls `Close` on a platform handle; the deleter of the guards below.
template <auto Close>
struct HandleCloser {
    template <typename Handle>
    void operator()(Handle* handle) const noexcept
    {
        static_cast<void>(Close(handle));
    }
};

using UniqueModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, HandleCloser<&FreeLibrary>>;
using UniqueKey = std::unique_ptr<std::remove_pointer_t<HKEY>, HandleCloser<&RegCloseKey>>;
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, HandleCloser<&::DestroyIcon>>;
using UniqueWindow = std::unique_ptr<std::remove_pointer_t<HWND>, HandleCloser<&DestroyWindow>>;
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, HandleCloser<&DeleteObject>>;
using UniqueImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, HandleCloser<&ImageList_Destroy>>;

/// The seam's number of a platform handle.
template <typename Handle>
std::uintptr_t NumberOf(Handle* handle) noexcept
{
    return reinterpret_cast<std::uintptr_t>(handle);
}

/// The platform handle of a number of the seam.
template <typename Handle>
Handle HandleOf(std::uintptr_t number) noexcept
{
    return reinterpret_cast<Handle>(number);
}

inline HWND WindowOf(WindowHandle window) noexcept
{
    return HandleOf<HWND>(window);
}

/// The form that holds a window; a form is its own.
inline HWND FormOf(HWND window) noexcept
{
    return window ? GetAncestor(window, GA_ROOT) : nullptr;
}

inline Rect RectOf(const RECT& rect) noexcept
{
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
            static_cast<int>(rect.bottom)};
}

/// Message parameters of a pointer, and of a text that the receiver only reads.
template <typename T>
LPARAM ParameterOf(const T* pointer) noexcept
{
    return reinterpret_cast<LPARAM>(pointer);
}

/// The platform declares texts that it only reads as writable.
inline LPWSTR Writable(const wchar_t* text) noexcept
{
    return const_cast<LPWSTR>(text);
}

/// The module that this code is linked into: the component's own when it runs in a component.
inline HMODULE OwnModule() noexcept
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnModule), &module);
    return module;
}

/// Keeps the platform from asking the user for a missing disk while it lives.
class QuietDisk {
public:
    QuietDisk() noexcept { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &m_before); }
    ~QuietDisk() { SetThreadErrorMode(m_before, nullptr); }
    QuietDisk(const QuietDisk&) = delete;
    QuietDisk& operator=(const QuietDisk&) = delete;

private:
    DWORD m_before = 0;
};

}  // namespace sylvex
