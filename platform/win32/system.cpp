#include "platform/win32/system.h"

#include "platform/win32/handles.h"

namespace sylvex {

SystemVersion Win32System::Version()
{
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExW(&version)) return {};
    return {version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion};
}

int Win32System::Metric(int number)
{
    return GetSystemMetrics(number);
}

std::optional<std::wstring> Win32System::ClassRootValue(const std::wstring& key)
{
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) return {};
    const UniqueKey owned(opened);
    std::wstring text(256, L'\0');
    DWORD type = REG_NONE;
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    auto read = [&] {
        return RegQueryValueExW(opened, nullptr, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &bytes);
    };
    auto answer = read();
    if (answer == ERROR_MORE_DATA) {
        text.resize(bytes / sizeof(wchar_t) + 1);
        answer = read();
    }
    if (answer != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return std::wstring();
    text.resize(bytes / sizeof(wchar_t));
    if (const auto end = text.find(L'\0'); end != text.npos) text.resize(end);
    return text;
}

Point Win32System::CursorPosition()
{
    POINT point{};
    GetCursorPos(&point);
    return {static_cast<int>(point.x), static_cast<int>(point.y)};
}

void Win32System::ResetPointer()
{
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

std::uint32_t Win32System::Now()
{
    return GetTickCount();
}

std::uint32_t Win32System::InputTime()
{
    return static_cast<std::uint32_t>(GetMessageTime());
}

std::wstring Win32System::ProgramName()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    path.erase(0, path.find_last_of(L'\\') + 1);
    if (const auto dot = path.rfind(L'.'); dot != path.npos && dot > 0) path.resize(dot);
    return path;
}

}  // namespace sylvex
