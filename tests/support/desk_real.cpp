#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/win32/win32_platform.h"
#include "tests/support/desk.h"

namespace sylvex {

namespace {

/// Takes every report, so that a failure that a test provokes opens no box.
class QuietReporter final : public Reporter {
public:
    std::optional<std::wstring> Report(const ErrorReport&) override { return L""; }
};

/// Writes down what boxes would say, and closes them at once.
class QuietBoxes final : public MessageBoxes {
public:
    std::wstring texts;
    int Show(WindowHandle, const std::wstring& text, const std::wstring&, unsigned) override
    {
        texts += L"[" + text + L"]";
        return 1;
    }
};

std::wstring Extended(const std::wstring& path)
{
    return L"\\\\?\\" + path;
}

void RemoveTree(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(Extended(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return;
    SetFileAttributesW(Extended(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        DeleteFileW(Extended(path).c_str());
        return;
    }
    WIN32_FIND_DATAW entry;
    std::vector<std::wstring> names;
    const HANDLE search = FindFirstFileW((Extended(path) + L"\\*").c_str(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do
            names.emplace_back(entry.cFileName);
        while (FindNextFileW(search, &entry) != 0);
        FindClose(search);
    }
    for (const std::wstring& name : names)
        if (name != L"." && name != L"..") RemoveTree(path + L"\\" + name);
    RemoveDirectoryW(Extended(path).c_str());
}

/// The desktop that the program runs on, with a scratch folder on drive C.
class RealDesk final : public Desk {
public:
    RealDesk()
    {
        static int number = 0;
        m_base = L"C:\\SylvexScratch" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++number);
        RemoveTree(m_base);
        MakeFolderAt(m_base);
    }
    ~RealDesk() override
    {
        for (const HWND window : m_windows)
            DestroyWindow(window);
        RemoveTree(m_base);
    }
    Platform& Get() override { return m_platform; }
    const std::wstring& Base() const override { return m_base; }
    WindowHandle NewWindow() override { return Keep(L"STATIC", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN); }
    WindowHandle NewList() override { return Keep(WC_LISTVIEWW, WS_CHILD | WS_VISIBLE | LVS_REPORT); }

    std::wstring TakeMessages() override { return std::exchange(m_boxes.texts, {}); }

private:
    void MakeFolderAt(const std::wstring& path) override
    {
        for (std::size_t at = path.find(L'\\', 3); at != std::wstring::npos; at = path.find(L'\\', at + 1))
            CreateDirectoryW(Extended(path.substr(0, at)).c_str(), nullptr);
        CreateDirectoryW(Extended(path).c_str(), nullptr);
    }
    void MakeFileAt(const std::wstring& path, std::uint64_t size) override
    {
        MakeFolderAt(path.substr(0, path.rfind(L'\\')));
        const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) throw std::runtime_error("a test file could not be made");
        LARGE_INTEGER end;
        end.QuadPart = static_cast<LONGLONG>(size);
        SetFilePointerEx(file, end, nullptr, FILE_BEGIN);
        SetEndOfFile(file);
        CloseHandle(file);
    }
    void RemoveAt(const std::wstring& path) override { RemoveTree(path); }
    WindowHandle Keep(const wchar_t* className, DWORD style)
    {
        // One for the whole program: without a window manager a main window takes seconds to go.
        static HWND const stage = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"Desk", WS_POPUP | WS_VISIBLE, 60, 60, 820,
                                                  420, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        const int left = static_cast<int>(m_windows.size()) * 410;
        const HWND window = CreateWindowExW(0, className, L"Desk", style, left, 0, 400, 400, stage, nullptr,
                                            GetModuleHandleW(nullptr), nullptr);
        m_windows.push_back(window);
        return reinterpret_cast<WindowHandle>(window);
    }

    Win32Platform m_real;
    QuietReporter m_reporter;
    QuietBoxes m_boxes;
    Platform m_platform{m_real.Get().files,   m_real.Get().shell,    m_real.Get().regional, m_real.Get().system,
                        m_real.Get().windows, m_real.Get().images,   m_real.Get().timers,   m_boxes,
                        m_reporter,           m_real.Get().boxTools, m_real.Get().network,  m_real.Get().drag};
    std::wstring m_base;
    std::vector<HWND> m_windows;
};

}  // namespace

std::unique_ptr<Desk> MakeDesk()
{
    return std::make_unique<RealDesk>();
}

}  // namespace sylvex
