#include "host/session.h"

#include <functional>
#include <optional>

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
    if (target == L"-") {
        WriteOutput(text);
    } else {
        WriteFileBytes(target, ToUtf8(text));
    }
}

/// Loads the tree. A failure is told, but need not be the end: what could be loaded is there.
void LoadTree(Form& form)
{
    try {
        form.Enumerate();
    } catch (const AutomationError& error) {
        form.ReportFailure(error.Message());
        WriteError(error.Message());
    }
}

void DoAll(Form& form, const Options& options)
{
    form.OpenControl();
    LoadTree(form);
    const PathWalker walker(form.Control());
    if (options.open) walker.Open(*options.open);
    for (const TreePath& path : options.checks)
        walker.Tick(path);
    for (const RowCommand& command : options.rows)
        form.UseRow(command);
    if (options.path) form.GoTo(options.path->Text());
    if (options.script) form.RunScript(*options.script);
    form.ShowRowCount();
    if (options.csv) WriteList(form, *options.csv);
}

/// Runs a step; what goes wrong is written and shown, and the result is whether all went well.
bool Try(Form& form, const std::function<void()>& step)
{
    try {
        step();
        return true;
    } catch (const Failure& failure) {
        form.ReportFailure(failure.Message());
        form.SetStatus(kFailed);
        WriteError(failure.Message());
        return false;
    }
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
            WriteError(L"message box: " + text);
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
