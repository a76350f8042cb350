#include "host/dialog_guard.h"

#include <utility>

#include "host/window.h"

namespace sylvex::host {
namespace {

/// The text in one line.
std::wstring OneLine(std::wstring text)
{
    for (size_t at = 0; (at = text.find_first_of(L"\r\n", at)) != std::wstring::npos;) {
        const size_t end = text.find_first_not_of(L"\r\n", at);
        text.replace(at, end == std::wstring::npos ? end : end - at, end == std::wstring::npos ? L"" : L" ");
    }
    return text;
}

}  // namespace

DialogGuard* DialogGuard::s_guard = nullptr;

DialogGuard::DialogGuard(Listener listener) : m_listener(std::move(listener))
{
    constexpr UINT kInterval = 100;
    s_guard = this;
    // Timers are served by a message box too.
    m_timer = SetTimer(nullptr, 0, kInterval, &DialogGuard::Tick);
}

DialogGuard::~DialogGuard()
{
    KillTimer(nullptr, m_timer);
    s_guard = nullptr;
}

void CALLBACK DialogGuard::Tick(HWND, UINT, UINT_PTR, DWORD)
{
    if (s_guard) EnumThreadWindows(GetCurrentThreadId(), &DialogGuard::Look, reinterpret_cast<LPARAM>(s_guard));
}

BOOL CALLBACK DialogGuard::Look(HWND window, LPARAM self)
{
    wchar_t name[16];
    const bool isDialog = GetClassNameW(window, name, std::size(name)) > 0 && std::wstring_view(name) == L"#32770";
    if (isDialog && IsWindowVisible(window)) reinterpret_cast<DialogGuard*>(self)->AnswerBox(window);
    return TRUE;
}

void DialogGuard::AnswerBox(HWND box)
{
    // Number of the text in a message box.
    constexpr int kTextId = 0xFFFF;
    if (box != m_answered) m_listener(OneLine(WindowText(box) + L": " + WindowText(GetDlgItem(box, kTextId))));
    m_answered = box;
    for (const int button : {IDCANCEL, IDOK, IDNO, IDABORT}) {
        if (!GetDlgItem(box, button)) continue;
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        return;
    }
    PostMessageW(box, WM_CLOSE, 0, 0);
}

}  // namespace sylvex::host
