#pragma once

#include <windows.h>

#include <string>

namespace sylvex::host {

/// The component that lies beside this program with its manifest, usable on this thread without being registered for as
/// long as the object exists. Does nothing when there is no SylvexControl.manifest in the program's folder.
class SideBySide {
public:
    SideBySide();
    ~SideBySide();
    SideBySide(const SideBySide&) = delete;
    SideBySide& operator=(const SideBySide&) = delete;

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

}  // namespace sylvex::host
