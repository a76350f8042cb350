#include "component/startup.h"

#include "diagnostics/exception_filter.h"
#include "diagnostics/named_module.h"
#include "diagnostics/trap.h"
#include "platform/win32/faults/exception_guard.h"
#include "platform/win32/win32_platform.h"

namespace sylvex {

void Main()
{
    Win32Platform platform;
    const NamedModule modStartup(L"modStartup", platform.Get());
    Trapped(modStartup, L"Main", kNone, kNone, [](int& line) {
        line = 1;
        InstallExceptionFilter(&InstallExceptionGuard);
    });
}

}  // namespace sylvex
