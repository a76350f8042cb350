#include "diagnostics/message_box.h"

#include <algorithm>
#include <utility>

namespace sylvex {

namespace {

constexpr unsigned kCentringTimer = 0x5001;
constexpr unsigned kReadingTimer = 0x5003;
constexpr int kCentreAfter = 10;  // milliseconds

Size SizeOf(const Rect& rect)
{
    return {rect.right - rect.left, rect.bottom - rect.top};
}

bool IsEmpty(const Rect& rect)
{
    return rect.right <= rect.left || rect.bottom <= rect.top;
}

}  // namespace

/// Gives the module its variables for one box, and those of a box that is open already back.
class MManipulateMsgBox::Opened {
public:
    explicit Opened(MManipulateMsgBox& module) : m_module(module), m_outer(std::exchange(module.m_box, OpenBox())) {}
    ~Opened() { m_module.m_box = std::move(m_outer); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

private:
    MManipulateMsgBox& m_module;
    OpenBox m_outer;
};

int MManipulateMsgBox::MessageBox(WindowHandle hWnd, const std::wstring& lpText, unsigned wType,
                                  const std::wstring& lpCaption, bool lbCentered, const std::wstring& lpCheckBoxText,
                                  bool& CheckboxReturn)
{
    const Opened opened(*this);
    std::wstring caption;
    int result = 0;
    return Trapped(*this, VARIABLES(hWnd, lpText, wType, lpCaption, lbCentered, lpCheckBoxText, CheckboxReturn),
                   VARIABLES(caption, result), [&](int& line) {
                       m_box.m_sCheckboxText = lpCheckBoxText;
                       m_box.m_sPrompt = lpText;
                       line = 2;
                       m_platform.boxTools.RestoreOwner(hWnd);
                       line = 3;
                       caption = lpCaption.empty() ? m_platform.system.ProgramName() : lpCaption;
                       line = 4;
                       m_box.g_MoveCaption = caption;
                       result = ShowWithTimers(hWnd, lpText, wType, lbCentered);
                       line = 5;
                       if (m_box.check) m_box.m_bCheckState = m_box.check->Ticked();
                       CheckboxReturn = m_box.m_bCheckState;
                       return result;
                   });
}

int MManipulateMsgBox::ShowWithTimers(WindowHandle hWnd, const std::wstring& lpText, unsigned wType, bool lbCentered)
{
    m_box.reading = Arm(hWnd, kReadingTimer, 0);
    if (lbCentered) m_box.centring = Arm(hWnd, kCentringTimer, kCentreAfter);
    const int result = m_platform.boxes.Show(hWnd, lpText, m_box.g_MoveCaption, wType);
    m_box.reading.reset();
    m_box.centring.reset();  // a box that was closed at once has never been centred
    return result;
}

std::unique_ptr<OwnerTimer> MManipulateMsgBox::Arm(WindowHandle hWnd, unsigned idEvent, int milliseconds)
{
    return m_platform.boxTools.Arm(hWnd, idEvent, milliseconds, [this, hWnd, idEvent] {
        try {
            TimerProc(hWnd, idEvent);
        } catch (...) {  // reported; the box's loop has nobody to pass it on to
        }
    });
}

void MManipulateMsgBox::TimerProc(WindowHandle hWnd, unsigned idEvent)
{
    Trapped(*this, VARIABLES(hWnd, idEvent), [&](int& line) {
        if (idEvent == kCentringTimer) {
            m_box.centring.reset();
            line = 2;
            Centre(hWnd);
        } else if (m_box.check) {
            line = 3;
            m_box.m_bCheckState = m_box.check->Ticked();
        }
    });
}

void MManipulateMsgBox::Centre(WindowHandle hWnd)
{
    BoxTools& tools = m_platform.boxTools;
    const WindowHandle box = tools.FindBox(hWnd, m_box.g_MoveCaption);
    if (box == 0) return;
    if (!m_box.m_sCheckboxText.empty()) {
        m_box.check = tools.AddCheck(box, m_box.m_sCheckboxText);
        m_box.m_lCheckHwnd = m_box.check ? m_box.check->Handle() : 0;
    }
    const Rect area = tools.WorkArea(hWnd);
    const Rect owner = tools.PlaceOf(hWnd);
    tools.MoveBox(box, CentredCorner(SizeOf(tools.PlaceOf(box)), IsEmpty(owner) ? area : owner, area));
}

void MManipulateMsgBox::DumpVariables(Dump& dump) const
{
    dump.Add("g_hBoldFont", m_box.g_hBoldFont);
    dump.Add("g_MoveCaption", m_box.g_MoveCaption);
    dump.Add("m_sCheckboxText", m_box.m_sCheckboxText);
    dump.Add("m_sPrompt", m_box.m_sPrompt);
    dump.Add("m_lCheckHwnd", m_box.m_lCheckHwnd);
    dump.Add("m_bCheckState", m_box.m_bCheckState);
}

Point CentredCorner(Size box, const Rect& over, const Rect& area)
{
    const Size free{area.right - area.left - box.cx, area.bottom - area.top - box.cy};
    const int x = over.left + (over.right - over.left - box.cx) / 2;
    const int y = over.top + (over.bottom - over.top - box.cy) / 2;
    return {free.cx < 0 ? area.left + free.cx / 2 : std::clamp(x, area.left, area.left + free.cx),
            free.cy < 0 ? area.top + free.cy : std::clamp(y, area.top, area.top + free.cy)};
}

}  // namespace sylvex
