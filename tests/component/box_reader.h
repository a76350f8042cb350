#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace sylvex::test {

/// Reads and closes the message boxes that open on this thread while it lives.
class BoxReader {
public:
    BoxReader() : m_hook(SetWindowsHookExW(WH_CBT, &OnHook, nullptr, GetCurrentThreadId())) { s_texts.clear(); }
    BoxReader(const BoxReader&) = delete;
    BoxReader& operator=(const BoxReader&) = delete;
    ~BoxReader() { UnhookWindowsHookEx(m_hook); }
    /// The texts since the last call, each in brackets.
    std::wstring Take() { return std::exchange(s_texts, {}); }

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam)
    {
        constexpr int kText = 0xFFFF;
        const HWND window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_ACTIVATE && GetDlgItem(window, kText)) {
            // Systems give the only button either number.
            for (const int button : {IDOK, IDCANCEL})
                if (GetDlgItem(window, button)) PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
        }
        if (code == HCBT_DESTROYWND && GetDlgItem(window, kText)) {
            wchar_t text[1024] = {};
            GetDlgItemTextW(window, kText, text, 1024);
            s_texts += L"[" + std::wstring(text) + L"]";
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    static inline std::wstring s_texts;
    HHOOK m_hook;
};

}  // namespace sylvex::test
