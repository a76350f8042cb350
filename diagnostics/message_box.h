#pragma once

#include <memory>
#include <string>

#include "diagnostics/trap.h"
#include "platform/platform.h"

namespace sylvex {

/// The module MManipulateMsgBox: the platform's message box, centred over its owner and with a check box if asked for.
/// Who includes the platform's headers first undefines their macro MessageBox.
class MManipulateMsgBox final : public Module {
public:
    /// The platform outlives the module.
    explicit MManipulateMsgBox(Platform& platform) : m_platform(platform) {}

    /// Shows a box over the window `hWnd` (0: none) and waits; gives the button pressed. `wType`: the platform's style
    /// word. An empty `lpCaption` is the host program's name. The check box is added to centred boxes only;
    /// `CheckboxReturn` receives whether it was ticked when the box closed. Calls may nest.
    int MessageBox(WindowHandle hWnd, const std::wstring& lpText, unsigned wType, const std::wstring& lpCaption,
                   bool lbCentered, const std::wstring& lpCheckBoxText, bool& CheckboxReturn);

    // Module
    const wchar_t* Name() const override { return L"MManipulateMsgBox"; }
    void DumpVariables(Dump& dump) const override;
    Reporter& ReportTo() const override { return m_platform.reporter; }
    MessageBoxes& Boxes() const override { return m_platform.boxes; }

private:
    /// The module's variables, and what exists while the box is open.
    struct OpenBox {
        std::uintptr_t g_hBoldFont = 0;
        std::wstring g_MoveCaption;
        std::wstring m_sCheckboxText;
        std::wstring m_sPrompt;
        WindowHandle m_lCheckHwnd = 0;
        bool m_bCheckState = false;
        std::unique_ptr<BoxCheck> check;
        std::unique_ptr<OwnerTimer> centring;
        std::unique_ptr<OwnerTimer> reading;
    };
    class Opened;

    int ShowWithTimers(WindowHandle hWnd, const std::wstring& lpText, unsigned wType, bool lbCentered);
    void TimerProc(WindowHandle hWnd, unsigned idEvent);
    void Centre(WindowHandle hWnd);
    std::unique_ptr<OwnerTimer> Arm(WindowHandle hWnd, unsigned idEvent, int milliseconds);

    Platform& m_platform;
    OpenBox m_box;
};

/// The left top corner that centres a box of this size over `over`; it stays inside `area` where it fits, and where it
/// does not, its buttons (low and in the middle) do. Screen pixels.
Point CentredCorner(Size box, const Rect& over, const Rect& area);

}  // namespace sylvex
