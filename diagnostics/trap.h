#pragma once

#include <tuple>
#include <utility>

#include "diagnostics/dump.h"
#include "platform/exception_guard.h"
#include "platform/messages.h"
#include "platform/runtime_error.h"

namespace sylvex {

/// A module of the component as error reports know it: its name, its variables, and where its reports go.
class Module {
public:
    virtual ~Module() = default;
    virtual const wchar_t* Name() const = 0;
    /// Adds the module's variables in declared order.
    virtual void DumpVariables(Dump& dump) const = 0;
    virtual Reporter& ReportTo() const = 0;
    virtual MessageBoxes& Boxes() const = 0;
};

/// References to some of a procedure's variables with their names; rendered only when the procedure fails.
template <class... Values>
class Variables {
public:
    constexpr Variables(const char* names, const Values&... values) : m_names(names), m_values(values...) {}
    void DumpTo(Dump& dump) const
    {
        std::string_view names = m_names;
        std::apply([&](const Values&... value) { (dump.Add(NextName(names), value), ...); }, m_values);
    }

private:
    static std::string_view NextName(std::string_view& names)
    {
        const std::size_t end = names.find(',');
        const std::string_view name = names.substr(0, end);
        names.remove_prefix(end == std::string_view::npos ? names.size() : end + 1);
        return name.substr(name.find_last_of(" *&.>") + 1);
    }
    const char* m_names;
    std::tuple<const Values&...> m_values;
};

/// The variables named, under the names they have in the code; a member is named without its owner.
#define VARIABLES(...) ::sylvex::Variables(#__VA_ARGS__, __VA_ARGS__)

/// A procedure without parameters, or without locals.
inline constexpr Variables<> kNone{""};

/// Reports the exception being handled for one procedure, then raises kPassedOn. Called from a handler only.
[[noreturn]] void ReportAndPassOn(const Module& module, const wchar_t* procedure, long line, const Dump& parameters,
                                  const Dump& locals);

/// Runs `body` as the procedure `procedure` of `module`, under the error trap: a failure is reported with the
/// procedure's parameters and locals, and error 65535 goes on to the caller. `body` is handed the number of the
/// statement that runs, which it moves along. Costs nothing but the stored references while all goes well.
template <class Parameters, class Locals, class Body>
decltype(auto) Trapped(const Module& module, const wchar_t* procedure, const Parameters& parameters,
                       const Locals& locals, Body&& body)
{
    int line = 0;
    try {
        return Guarded([&]() -> decltype(auto) { return body(line); });
    } catch (...) {
        Dump parametersDump(Dump::Of::Parameters);
        Dump localsDump;
        parameters.DumpTo(parametersDump);
        locals.DumpTo(localsDump);
        ReportAndPassOn(module, procedure, line, parametersDump, localsDump);
    }
}

/// The exception being handled as a numbered error: C++ exceptions become the nearest number.
RuntimeError CaptureError();

/// The error state of this thread, as the report's last section prints it. Overwritten by each report, never cleared.
struct ErrorState {
    long vantorComponentID = 0;
    bool vantorHasInitialised = false;
    long vantorErrorNumber = 0;
    std::wstring vantorErrorDescription;
    long vantorErrorLine = 0;
    std::wstring vantorErrorSource;
};
ErrorState& CurrentErrorState();

/// Adds the component's public module variables to a dump; set once by the layer that owns them.
using GlobalDump = void (*)(Dump&);
void SetGlobalDump(GlobalDump dump);

/// Shows the current error with Retry and Cancel under the title "Sylvex." plus `message`; gives the button pressed.
short ErrMsgBox(MessageBoxes& boxes, const std::wstring& message);

}  // namespace sylvex
