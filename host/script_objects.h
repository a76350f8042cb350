#pragma once

#include <functional>
#include <memory>
#include <string>

#include "com/dispatch.h"
#include "com/object.h"
#include "SylvexControl_h.h"

namespace sylvex::host {

class Script;

/// What the object `Host` of a script can have the form do.
struct HostServices {
    /// Writes a line to the standard output.
    std::function<void(const std::wstring&)> echo;
    /// Adds a line to the log of the form.
    std::function<void(const std::wstring&)> log;
    /// Serves messages for so many milliseconds.
    std::function<void(int)> wait;
    /// Closes the form with an exit status, once the script has ended.
    std::function<void(int)> quit;
    /// Keeps the form, and the script with it, until the answer is let go of.
    std::function<std::shared_ptr<void>()> hold;
    HWND list = nullptr;
};

/// The object `Host` of a script: Echo(Text), Log(Text), Wait(Milliseconds), Quit([Status]), and ListWindow, the handle
/// of the form's list view.
class HostObject final : public CountedObject<PlainDispatch> {
public:
    explicit HostObject(HostServices services) : m_services(std::move(services)) {}

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members) override;
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

private:
    HRESULT Do(DISPID member, VARIANT* argument);
    HostServices m_services;
};

/// Hands every event of the control to the script's procedure of its name, `Sylvex_Expand` for Expand; arguments that
/// are by reference stay so.
class ScriptEvents final : public CountedObject<EventDispatch<__Sylvex>> {
public:
    using Failed = std::function<void(const std::wstring&)>;

    using Hold = std::function<std::shared_ptr<void>()>;

    /// `script` must outlive the connection, and exist while what `hold` gives is held; `failed` hears of errors in the
    /// script's procedures.
    ScriptEvents(Script& script, Hold hold, Failed failed)
        : m_script(script), m_hold(std::move(hold)), m_failed(std::move(failed))
    {
    }

    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                        UINT*) override;

private:
    Script& m_script;
    Hold m_hold;
    Failed m_failed;
};

}  // namespace sylvex::host
