#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include "host/console.h"
#include "host/failure_reports.h"
#include "host/form.h"
#include "host/side_by_side.h"

namespace sylvex::host {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongArguments = 2;

/// OLE on this thread, for as long as it exists.
class OleThread {
public:
    OleThread() : m_result(OleInitialize(nullptr)) {}
    OleThread(const OleThread&) = delete;
    OleThread& operator=(const OleThread&) = delete;
    ~OleThread()
    {
        if (SUCCEEDED(m_result)) OleUninitialize();
    }
    bool IsOpen() const { return SUCCEEDED(m_result); }

private:
    HRESULT m_result;
};

LOGFONTW MessageFont()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics.lfMessageFont;
}

int RunForm(const Options& options, int show)
{
    const SideBySide component;
    const OleThread ole;
    const INITCOMMONCONTROLSEX classes{
        sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    Form form(MessageFont(), options);
    if (!ole.IsOpen() || !form.Create(show)) {
        WriteError(L"the window cannot be created");
        return kFailed;
    }
    const FailureReports reports([&](const std::wstring& line) {
        form.Log().Add(L"Failure", line);
        if (options.Unattended()) WriteError(L"component: " + line);
    });
    return form.Run();
}

int Main(const std::vector<std::wstring>& arguments, int show)
{
    try {
        const Options options = ParseOptions(arguments);
        if (!options.help) return RunForm(options, show);
        WriteOutput(UsageText());
        return 0;
    } catch (const UsageError& error) {
        WriteError(error.Message() + L"\nTry --help.");
        return kWrongArguments;
    } catch (const Failure& failure) {
        WriteError(failure.Message());
        return kFailed;
    }
}

}  // namespace
}  // namespace sylvex::host

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int show)
{
    return sylvex::host::Main({__wargv + 1, __wargv + __argc}, show);
}
