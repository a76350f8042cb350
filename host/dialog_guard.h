#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace sylvex::host {

/// While it exists, answers every message box of this thread, which nobody is there to read. One at a time.
class DialogGuard {
public:
    /// Gets the title and the text of a box that was answered, in one line.
    using Listener = std::function<void(const std::wstring&)>;

    explicit DialogGuard(Listener listener);
    DialogGuard(const DialogGuard&) = delete;
    DialogGuard& operator=(const DialogGuard&) = delete;
    ~DialogGuard();

private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
    static BOOL CALLBACK Look(HWND window, LPARAM self);
    void AnswerBox(HWND box);

    static DialogGuard* s_guard;
    Listener m_listener;
    UINT_PTR m_timer;
    /// The box that was answered last; it stays for a moment.
    HWND m_answered = nullptr;
};

}  // namespace sylvex::host
