#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "com/pointer.h"

namespace sylvex::host {

/// Takes the component's reports of failures while it exists, so that no boxes are shown for them; leaves them to
/// another reporter that is registered on the machine. One at a time, on a thread with OLE.
class FailureReports {
public:
    /// Gets a line for each procedure that a failure went through, innermost first.
    using Listener = std::function<void(const std::wstring&)>;

    explicit FailureReports(Listener listener);
    FailureReports(const FailureReports&) = delete;
    FailureReports& operator=(const FailureReports&) = delete;
    ~FailureReports();

private:
    class Reporter;
    /// Whether the reporter's name leads to the host's class now.
    static bool IsOurs();
    void RegisterName();

    ComPtr<Reporter> m_reporter;
    DWORD m_class = 0;
    HKEY m_root = nullptr;  // below which the name was written
};

}  // namespace sylvex::host
