#pragma once

#include "platform/system.h"

namespace sylvex {

/// This machine, as it presents itself to the host program (a compatibility setting of the user's included).
class Win32System : public System {
public:
    SystemVersion Version() override;
    int Metric(int number) override;
    std::optional<std::wstring> ClassRootValue(const std::wstring& key) override;
    Point CursorPosition() override;
    void ResetPointer() override;
    std::uint32_t Now() override;
    std::uint32_t InputTime() override;
    std::wstring ProgramName() override;
};

}  // namespace sylvex
