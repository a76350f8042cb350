#pragma once

#include <windows.h>

#include <string>

namespace sylvex::test {

/// Path of the component under test: the environment variable SYLVEX_OCX, or the file beside the test program.
inline std::wstring ComponentPath()
{
    wchar_t path[32768];
    const DWORD length = GetEnvironmentVariableW(L"SYLVEX_OCX", path, ARRAYSIZE(path));
    if (length > 0 && length < ARRAYSIZE(path)) return path;
    const std::wstring program(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    return program.substr(0, program.rfind(L'\\') + 1) + L"SylvexControl.ocx";
}

}  // namespace sylvex::test
