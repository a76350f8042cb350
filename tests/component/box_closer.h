#pragma once

#include <windows.h>

namespace sylvex::test {

/// Answers message boxes as soon as they come, while it lives.
class BoxCloser {
public:
    BoxCloser() : m_hook(SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId())) {}
    BoxCloser(const BoxCloser&) = delete;
    BoxCloser& operator=(const BoxCloser&) = delete;
    ~BoxCloser() { UnhookWindowsHookEx(m_hook); }

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam)
    {
        const HWND window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_ACTIVATE) {
            // Systems give the only button either number.
            for (const int button : {IDOK, IDCANCEL}) {
                if (GetDlgItem(window, button)) PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
            }
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    HHOOK m_hook;
};

}  // namespace sylvex::test
