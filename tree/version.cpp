#include "tree/version.h"

#include "diagnostics/named_module.h"

namespace sylvex {

namespace {

constexpr const wchar_t* kModule = L"modVersion";

std::wstring NameOf(const SystemVersion& version)
{
    if (version.platform == 1) return version.minor == 10 ? L"Windows 98" : L"Windows 95";
    if (version.platform != 2) return L"Version Unknown";
    switch (version.major) {
        case 3:
            return L"Windows NT 3.51";
        case 4:
            return L"Windows NT 4.0";
        case 5:
            return L"Windows 2000";
        default:
            return {};
    }
}

}  // namespace

std::wstring getVersion(Platform& platform)
{
    return Trapped(NamedModule(kModule, platform), [&] { return NameOf(platform.system.Version()); });
}

bool CheckVersion(Platform& platform)
{
    std::wstring sVersion;
    return Trapped(NamedModule(kModule, platform), kNone, VARIABLES(sVersion), [&](int& line) {
        sVersion = getVersion(platform);
        line = 2;
        return sVersion == L"Windows NT 4.0" || sVersion == L"Windows 2000";
    });
}

}  // namespace sylvex
