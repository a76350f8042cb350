#include "host/session.h"

#include <system_error>

#include "host/automation.h"
#include "host/console.h"
#include "host/dialog_guard.h"
#include "host/form.h"
#include "host/path_walker.h"

namespace sylvex::host {
namespace {

constexpr int kFailed = 1;

void WriteList(const Form& form, const std::wstring& target)
{
    const std::wstring text = CsvText(form.List());
    if (target != L"-") {
        WriteFileBytes(target, ToUtf8(text));
    } else if (!WriteOutput(text)) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
}

void DoAll(Form& form, const Options& options)
{
    form.OpenControl();
    form.Enumerate();
    const PathWalker walker(form.Control());
    if (options.open) walker.Open(*options.open);
    for (const TreePath& path : options.checks)
        walker.Tick(path);
    form.ShowRowCount();
    if (options.csv) WriteList(form, *options.csv);
}

/// Runs a step; what goes wrong is written and shown, and the result is whether all went well.
bool Try(Form& form, const std::function<void()>& step)
{
    std::wstring failure;
    try {
        step();
        return true;
    } catch (const AutomationError& error) {
        failure = error.Text();
    } catch (const PathNotFound& error) {
        failure = error.Message();
    } catch (const std::system_error& error) {
        failure = DescribeResult(HRESULT_FROM_WIN32(error.code().value()));
    }
    form.ReportFailure(failure);
    form.SetStatus(kFailed);
    WriteError(L"SylvexHost: " + failure + L"\n");
    return false;
}

void WriteReadyFile(Form& form, const Options& options)
{
    const bool written = Try(form, [&] { WriteFileBytes(*options.readyFile, {}); });
    if (options.exit || !written) form.Leave();
}

}  // namespace

void RunSession(Form& form, const Options& options)
{
    std::optional<DialogGuard> guard;
    if (options.Unattended()) {
        guard.emplace([&form](const std::wstring& text) {
            form.Log().Add(L"MessageBox", text);
            WriteError(L"SylvexHost: message box: " + text + L"\n");
        });
    }
    const bool done = Try(form, [&] { DoAll(form, options); });
    if (done && options.readyFile) {
        form.WhenPainted([&form, &options] { WriteReadyFile(form, options); });
    } else if (options.exit || (!done && options.Unattended())) {
        form.Leave();
    }
}

}  // namespace sylvex::host
