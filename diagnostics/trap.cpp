#include "diagnostics/trap.h"

#include <forward_list>
#include <mutex>
#include <new>
#include <stdexcept>
#include <utility>

#include "sylvex_version.h"

namespace sylvex {

namespace {

GlobalDump g_globalDump = nullptr;

std::wstring Widen(std::string_view text)
{
    std::wstring wide;
    for (const char character : text)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(character));
    return wide;
}

std::wstring GlobalVariables()
{
    Dump dump;
    if (g_globalDump != nullptr) g_globalDump(dump);
    const ErrorState& state = CurrentErrorState();
    dump.Add("vantorComponentID", state.vantorComponentID);
    dump.Add("vantorHasInitialised", state.vantorHasInitialised);
    dump.Add("vantorErrorNumber", state.vantorErrorNumber);
    dump.Add("vantorErrorDescription", state.vantorErrorDescription);
    dump.Add("vantorErrorLine", state.vantorErrorLine);
    dump.Add("vantorErrorSource", state.vantorErrorSource);
    return dump.Text();
}

std::wstring VariablesReport(const Module& module, const Dump& parameters, const Dump& locals)
{
    Dump moduleDump;
    module.DumpVariables(moduleDump);
    std::wstring text = L"<Variables>\r\n<LocalVariables>\r\n" + locals.Text() + L"</LocalVariables>\r\n";
    text += L"<ModuleVariables>\r\n" + moduleDump.Text() + L"</ModuleVariables>\r\n";
    text += L"<GlobalVariables>\r\n" + GlobalVariables() + L"</GlobalVariables>\r\n</Variables>\r\n";
    text += L"<Parameters>\r\n" + parameters.Text() + L"</Parameters>";
    return text;
}

std::wstring BoxText(const ErrorReport& report)
{
    return report.component + L" has encountered a problem. We are sorry for the inconvenience.\r\n\r\nModule: " +
           report.module + L"\r\nProcedure: " + report.procedure + L"\r\nLine Number: " + std::to_wstring(report.line) +
           L"\r\n\r\n" + report.description + L" (" + std::to_wstring(report.number) + L")";
}

/// A report that is being handed over. A reporter may call the control and fail it again, and so may whatever runs
/// while a box is open: that is reported too, but not what fails during the report of it, which would never end.
class ReportUnderWay {
public:
    ReportUnderWay() noexcept { ++Depth(); }
    ~ReportUnderWay() { --Depth(); }
    ReportUnderWay(const ReportUnderWay&) = delete;
    ReportUnderWay& operator=(const ReportUnderWay&) = delete;
    bool IsTooDeep() const noexcept { return Depth() > kDeepest; }

private:
    static constexpr int kDeepest = 2;
    static int& Depth() noexcept
    {
        thread_local int depth = 0;
        return depth;
    }
};

/// Hands the report over, or shows it when nobody takes it. Whatever fails in here is left at that.
void Send(const Module& module, ProcedureName procedure, const Dump& parameters, const Dump& locals) noexcept
{
    try {
        const ReportUnderWay underWay;
        if (underWay.IsTooDeep()) return;
        const ErrorState& state = CurrentErrorState();
        ErrorReport report{L"SylvexControl",
                           L"" SYLVEX_VERSION,
                           module.Name(),
                           procedure.Text(),
                           state.vantorErrorLine,
                           state.vantorErrorNumber,
                           state.vantorErrorDescription,
                           VariablesReport(module, parameters, locals)};
        if (!Guarded([&] { return module.ReportTo().Report(report); }))
            module.Boxes().Show(0, BoxText(report), L"Application Error", kBoxOk | kBoxCritical);
    } catch (...) {
    }
}

/// The error states of all threads that have used theirs.
class ErrorStates {
public:
    static ErrorStates& OfModule()
    {
        static ErrorStates states;
        return states;
    }
    ErrorState& Add()
    {
        const std::lock_guard lock(m_mutex);
        return m_states.emplace_front();
    }

private:
    std::mutex m_mutex;
    std::forward_list<ErrorState> m_states;
};

}  // namespace

/// A function is known by its whole signature: the name is what stands before the first parenthesis, behind the scope
/// or the type that is given back.
std::wstring ProcedureName::Text() const
{
    if (m_given != nullptr) return m_given;
    std::string_view name = m_function;
    name = name.substr(0, name.find('('));
    return Widen(name.substr(name.find_last_of(": ") + 1));
}

ErrorState& CurrentErrorState()
{
    // A pointer, not the state itself: a destructor of a thread's own keeps the whole module in memory until that
    // thread ends. Those left over go with the module.
    thread_local ErrorState* state = nullptr;
    if (state == nullptr) state = &ErrorStates::OfModule().Add();
    return *state;
}

void SetGlobalDump(GlobalDump dump)
{
    g_globalDump = dump;
}

RuntimeError CaptureError()
{
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return OutOfMemory();
    } catch (const std::out_of_range&) {
        return SubscriptOutOfRange();
    } catch (const std::exception& error) {
        return {51, L"Internal error: " + Widen(error.what())};
    } catch (...) {
        return {51, L"Internal error"};
    }
}

void ReportAndPassOn(const Module& module, ProcedureName procedure, long line, const Dump& parameters,
                     const Dump& locals)
{
    RuntimeError error = CaptureError();
    ErrorState& state = CurrentErrorState();
    state.vantorErrorNumber = error.number;
    state.vantorErrorDescription = std::move(error.description);
    state.vantorErrorLine = line;
    state.vantorErrorSource = std::move(error.source);
    Send(module, procedure, parameters, locals);
    throw RuntimeError{kPassedOn, L"Application-defined or object-defined error"};
}

short ErrMsgBox(MessageBoxes& boxes, const std::wstring& message)
{
    const ErrorState& state = CurrentErrorState();
    const std::wstring text =
        L"Error: " + std::to_wstring(state.vantorErrorNumber) + L". " + state.vantorErrorDescription;
    return static_cast<short>(boxes.Show(0, text, L"Sylvex." + message, kBoxRetryCancel | kBoxCritical));
}

}  // namespace sylvex
