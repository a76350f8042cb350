#pragma once

#include <windows.h>

namespace sylvex::test {

/// What this process holds at the moment.
struct Handles {
    Handles();
    DWORD gdi;
    DWORD user;
    DWORD open;   ///< of the kernel
    int windows;  ///< of the calling thread
};

}  // namespace sylvex::test
