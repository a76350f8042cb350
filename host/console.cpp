#include "host/console.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "host/csv.h"
#include "host/failure.h"
#include "host/system_text.h"

namespace sylvex::host {
namespace {

/// Closes a file's handle; also says whether there is one.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : m_handle(handle) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle()
    {
        if (IsOpen()) CloseHandle(m_handle);
    }
    bool IsOpen() const { return m_handle && m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle;
};

bool WriteBytes(HANDLE file, std::string_view bytes)
{
    constexpr size_t kMost = 1 << 20;
    while (!bytes.empty()) {
        DWORD written = 0;
        const DWORD size = static_cast<DWORD>(std::min(bytes.size(), kMost));
        if (!WriteFile(file, bytes.data(), size, &written, nullptr)) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

bool WriteTo(HANDLE file, std::wstring_view text)
{
    DWORD mode = 0;
    if (!GetConsoleMode(file, &mode)) return WriteBytes(file, ToUtf8(text));
    DWORD written = 0;
    return WriteConsoleW(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != FALSE;
}

/// A program with windows has no console of its own; its parent may have one.
bool WriteToParentsConsole(std::wstring_view text)
{
    if (!GetConsoleWindow() && !AttachConsole(ATTACH_PARENT_PROCESS)) return true;
    const FileHandle console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                         nullptr, OPEN_EXISTING, 0, nullptr));
    return !console.IsOpen() || WriteTo(console.Get(), text);
}

[[noreturn]] void FailOn(const std::wstring& target)
{
    const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
    throw Failure(target + L": cannot be written: " + DescribeResult(result));
}

bool Write(DWORD standard, std::wstring_view text)
{
    const HANDLE file = GetStdHandle(standard);
    const bool usable = file && file != INVALID_HANDLE_VALUE && GetFileType(file) != FILE_TYPE_UNKNOWN;
    return usable ? WriteTo(file, text) : WriteToParentsConsole(text);
}

}  // namespace

void WriteOutput(std::wstring_view text)
{
    if (!Write(STD_OUTPUT_HANDLE, text)) FailOn(L"standard output");
}

void WriteError(std::wstring_view message)
{
    Write(STD_ERROR_HANDLE, L"SylvexHost: " + std::wstring(message) + L"\n");
}

void WriteFileBytes(const std::wstring& name, std::string_view bytes)
{
    const FileHandle file(
        CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen() || !WriteBytes(file.Get(), bytes)) FailOn(name);
}

}  // namespace sylvex::host
