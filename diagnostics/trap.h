#pragma once

#include <source_location>
#include <string>
#include <tuple>
#include <type_traits>
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

/// A procedure's name in error reports: its function's own, unless another is given.
class ProcedureName {
public:
    constexpr ProcedureName(const wchar_t* given) : m_given(given) {}
    explicit constexpr ProcedureName(const std::source_location& function) : m_function(function.function_name()) {}
    std::wstring Text() const;

private:
    const wchar_t* m_given = nullptr;
    const char* m_function = nullptr;
};

/// Reports the exception being handled for one procedure, then raises kPassedOn. Called from a handler only.
[[noreturn]] void ReportAndPassOn(const Module& module, ProcedureName procedure, long line, const Dump& parameters,
                                  const Dump& locals);

/// Variables of a procedure as Trapped takes them.
template <class Values>
concept Dumpable = requires(const Values& values, Dump& dump)
{
    values.DumpTo(dump);
};

/// Runs `body` as the procedure `procedure` of `module`, under the error trap: a failure is reported with the
/// procedure's parameters and locals, and error 65535 goes on to the caller. A `body` that takes it is handed the
/// number of the statement that runs, which begins at 1 and which it moves along. Costs nothing but the stored
/// references while all goes well.
template <Dumpable Parameters, Dumpable Locals, class Body>
decltype(auto) Trapped(const Module& module, ProcedureName procedure, const Parameters& parameters,
                       const Locals& locals, Body&& body)
{
    int line = 1;
    try {
        return Guarded([&]() -> decltype(auto) {
            if constexpr (std::is_invocable_v<Body, int&>)
                return body(line);
            else
                return body();
        });
    } catch (...) {
        Dump parametersDump(Dump::Of::Parameters);
        Dump localsDump;
        parameters.DumpTo(parametersDump);
        locals.DumpTo(localsDump);
        ReportAndPassOn(module, procedure, line, parametersDump, localsDump);
    }
}

// The same with what a procedure does not have left out. Without a name it is the function that calls.
template <Dumpable Parameters, class Body>
decltype(auto) Trapped(const Module& module, ProcedureName procedure, const Parameters& parameters, Body&& body)
{
    return Trapped(module, procedure, parameters, kNone, body);
}
template <class Body>
decltype(auto) Trapped(const Module& module, ProcedureName procedure, Body&& body)
{
    return Trapped(module, procedure, kNone, kNone, body);
}
template <Dumpable Parameters, Dumpable Locals, class Body>
decltype(auto) Trapped(const Module& module, const Parameters& parameters, const Locals& locals, Body&& body,
                       const std::source_location& function = std::source_location::current())
{
    return Trapped(module, ProcedureName(function), parameters, locals, body);
}
template <Dumpable Parameters, class Body>
decltype(auto) Trapped(const Module& module, const Parameters& parameters, Body&& body,
                       const std::source_location& function = std::source_location::current())
{
    return Trapped(module, ProcedureName(function), parameters, kNone, body);
}
template <class Body>
decltype(auto) Trapped(const Module& module, Body&& body,
                       const std::source_location& function = std::source_location::current())
{
    return Trapped(module, ProcedureName(function), kNone, kNone, body);
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

/// Shows the current error with Retry and Cancel under the title "Sylvex." plus `message`; gives the button pressed. It
/// stays although nothing of ours calls it.
short ErrMsgBox(MessageBoxes& boxes, const std::wstring& message);

}  // namespace sylvex
