#pragma once

#include "diagnostics/trap.h"
#include "platform/platform.h"

namespace sylvex {

/// A module of the component that is not the control itself: a name, no variables, and the control's reporters.
class NamedModule : public Module {
public:
    NamedModule(const wchar_t* name, const Platform& platform) : m_name(name), m_platform(platform) {}
    const wchar_t* Name() const override { return m_name; }
    void DumpVariables(Dump&) const override {}
    Reporter& ReportTo() const override { return m_platform.reporter; }
    MessageBoxes& Boxes() const override { return m_platform.boxes; }

private:
    const wchar_t* m_name;
    const Platform& m_platform;
};

}  // namespace sylvex
