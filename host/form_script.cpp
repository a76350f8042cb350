#include "host/console.h"
#include "host/form.h"
#include "host/resource.h"

namespace sylvex::host {

void Form::ServeMessagesFor(int milliseconds)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds > 0 ? milliseconds : 0);
    for (ULONGLONG now = GetTickCount64(); now < end && !m_leaving; now = GetTickCount64()) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
            ServeMessage(message);
        }
    }
}

void Form::RunScript(const std::wstring& file)
{
    HostServices services;
    services.echo = [](const std::wstring& text) { WriteOutput(text + L"\r\n"); };
    services.log = [this](const std::wstring& text) { m_log.Add(L"Script", text); };
    services.wait = [this](int milliseconds) { ServeMessagesFor(milliseconds); };
    services.quit = [this](int status) {
        m_status = status;
        Leave();
    };
    services.hold = [this] { return Hold(); };
    services.list = Item(IDC_LIST);
    const auto failed = [this](const std::wstring& message) {
        ReportFailure(message);
        WriteError(message);
        m_status = 1;
    };
    m_script = std::make_unique<ScriptSession>(file, Handle(), Control(), std::move(services), failed);
    m_script->Run();
}

}  // namespace sylvex::host
