#pragma once

#include "checks/checks_state.h"
#include "diagnostics/trap.h"
#include "dragdrop/drag_state.h"
#include "filelist/list_state.h"
#include "navigation/navigation_state.h"
#include "platform/platform.h"
#include "tree/tree_state.h"

namespace sylvex {

/// The variables of one control, each with the subsystem that it belongs to. It is the module "Sylvex" of the error
/// trap.
class ControlState final : public Module {
public:
    static constexpr const wchar_t* kReportName = L"{Sylvex}";

    explicit ControlState(const Platform& platform) : m_platform(platform) {}

    TreeState tree;
    ChecksState checks;
    FileListState list;
    NavigationState navigation;
    DragState drag;
    long m_hWnd = 0;  ///< what was stored as hWnd while the host was being designed

    // Module
    const wchar_t* Name() const override { return L"Sylvex"; }
    /// In the order in which the variables are declared to hosts' developers, whoever they belong to.
    void DumpVariables(Dump& dump) const override;
    Reporter& ReportTo() const override { return m_platform.reporter; }
    MessageBoxes& Boxes() const override { return m_platform.boxes; }

private:
    const Platform& m_platform;
};

}  // namespace sylvex
