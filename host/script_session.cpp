#include "host/script_session.h"

#include "host/automation.h"

namespace sylvex::host {

ScriptSession::ScriptSession(const std::wstring& file, HWND window, _Sylvex& control, HostServices services,
                             ScriptEvents::Failed failed)
    : m_script(file, window)
{
    Variant list;
    Check(control.get_ReqListView(list.Put()), L"ReqListView");
    m_script.AddObject(L"Sylvex", ComPtr<IDispatch>(&control));
    m_script.AddObject(L"List", list.As<IDispatch>());
    const ScriptEvents::Hold hold = services.hold;
    m_script.AddObject(L"Host", Make<HostObject>(std::move(services)).As<IDispatch>());
    m_events = Connection(control, __uuidof(__Sylvex), *Make<ScriptEvents>(m_script, hold, std::move(failed)));
}

}  // namespace sylvex::host
