#include "host/console.h"

#include <windows.h>

#include <string>
#include <system_error>

#include "host/csv.h"

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

bool Write(DWORD standard, std::wstring_view text)
{
    const HANDLE file = GetStdHandle(standard);
    const bool usable = file && file != INVALID_HANDLE_VALUE && GetFileType(file) != FILE_TYPE_UNKNOWN;
    return usable ? WriteTo(file, text) : WriteToParentsConsole(text);
}

}  // namespace

bool WriteOutput(std::wstring_view text)
{
    return Write(STD_OUTPUT_HANDLE, text);
}

bool WriteError(std::wstring_view text)
{
    return Write(STD_ERROR_HANDLE, text);
}

void WriteFileBytes(std::wstring_view name, std::string_view bytes)
{
    const FileHandle file(CreateFileW(std::wstring(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen() || !WriteBytes(file.Get(), bytes)) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
}

}  // namespace sylvex::host
