#pragma once

#include <string>

#include "host/event_sink.h"
#include "host/script.h"
#include "host/script_objects.h"

namespace sylvex::host {

/// A script that drives a control: it knows it as `Sylvex`, the list that the control fills as `List` and the program
/// as `Host`, and hears the control's events until the object goes.
class ScriptSession {
public:
    /// Throws Failure, also when the control does not let itself be listened to. `failed` hears of errors in handlers.
    ScriptSession(const std::wstring& file, HWND window, _Sylvex& control, HostServices services,
                  ScriptEvents::Failed failed);
    /// Runs the file's text; throws Failure.
    void Run() { m_script.Run(); }

private:
    Script m_script;
    Connection m_events;
};

}  // namespace sylvex::host
