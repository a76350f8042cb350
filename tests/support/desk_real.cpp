#include <windows.h>

#include <commctrl.h>

#include <utility>
#include <vector>

#include "platform/win32/win32_platform.h"
#include "tests/support/desk.h"
#include "tests/support/files_real.h"
#include "tests/support/input_real.h"

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

/// The desktop that the program runs on, with a scratch folder on drive C.
class RealDesk final : public Desk {
public:
    RealDesk()
    {
        static int number = 0;
        m_base = L"C:\\SylvexScratch" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++number);
        RemoveBranch(m_base);
        MakeFolderAt(m_base);
    }
    ~RealDesk() override
    {
        for (const HWND window : m_windows)
            DestroyWindow(window);
        RemoveBranch(m_base);
    }
    Platform& Get() override { return m_platform; }
    const std::wstring& Base() const override { return m_base; }
    WindowHandle NewWindow() override { return Keep(L"STATIC", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN); }
    WindowHandle NewList() override { return Keep(WC_LISTVIEWW, WS_CHILD | WS_VISIBLE | LVS_REPORT); }

    std::wstring TakeMessages() override { return std::exchange(m_boxes.texts, {}); }

private:
    void MakeFolderAt(const std::wstring& path) override { MakeBranch(path); }
    void MakeFileAt(const std::wstring& path, std::uint64_t size) override { WriteBytes(path, "", size); }
    void RemoveAt(const std::wstring& path) override { RemoveBranch(path); }
    WindowHandle Keep(const wchar_t* className, DWORD style)
    {
        const int left = static_cast<int>(m_windows.size()) * 410;
        const HWND window =
            CreateWindowExW(0, className, L"Desk", style, left, 0, 400, 400, Stage(), nullptr, nullptr, nullptr);
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
