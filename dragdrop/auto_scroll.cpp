#include "dragdrop/auto_scroll.h"

#include "dragdrop/drag_tree.h"

namespace sylvex {

namespace {

constexpr int kScrollEvery = 100;  // milliseconds
constexpr int kOpenAfter = 1000;   // milliseconds
constexpr unsigned kOpen = 2;

/// What one step towards a side sends.
struct Step {
    unsigned side;
    int bar;
    unsigned message;
    unsigned command;
};

enum Message : unsigned { WM_HSCROLL = 0x114, WM_VSCROLL = 0x115 };

constexpr Step kSteps[] = {{kLeftSide, 0, WM_HSCROLL, 0},
                           {kRightSide, 0, WM_HSCROLL, 1},
                           {kTopSide, 1, WM_VSCROLL, 0},
                           {kBottomSide, 1, WM_VSCROLL, 1}};

}  // namespace

AutoScroll::AutoScroll(const Context& context, const FolderTree& folders, const DragState& state, DragTree& tree,
                       DragOwner& owner)
    : m_context(context), m_folders(folders), m_state(state), m_tree(tree)
{
    Timers& timers = context.platform.timers;
    tmrAutoScroll = timers.Create([this, &owner] { FromPlatform(owner, [this] { tmrAutoScroll_Timer(); }); });
    tmrAutoExpand = timers.Create([this, &owner] { FromPlatform(owner, [this] { tmrAutoExpand_Timer(); }); });
    tmrAutoScroll->SetInterval(kScrollEvery);
    tmrAutoExpand->SetInterval(kOpenAfter);
}

AutoScroll::~AutoScroll() = default;

void AutoScroll::Moved(const TVHITTESTINFO& hit)
{
    const bool opening = hit.hItem == m_lastItem && (hit.flags & kHitOpening) != 0 &&
                         m_tree.IsTVItemCollapsedParent(m_tree.Window(), hit.hItem);
    tmrAutoExpand->SetEnabled(opening);
    m_lastItem = hit.hItem;
    const unsigned sides = SidesInReach(hit.pt);
    tmrAutoScroll->SetEnabled((sides & m_tree.IsWindowScrollable(m_tree.Window())) != 0);
}

void AutoScroll::Stop()
{
    tmrAutoScroll->SetEnabled(false);
    tmrAutoExpand->SetEnabled(false);
}

/// The sides of the tree near which the pointer is.
unsigned AutoScroll::SidesInReach(Point client)
{
    const Rect area = m_context.platform.windows.ClientRect(m_tree.Window()).value_or(Rect());
    return m_tree.PtInRectRegion(area, m_folders.ScrollBand(), client);
}

template <class Body>
void AutoScroll::WithoutPicture(Body&& body)
{
    Drag& drag = m_context.platform.drag;
    drag.DragShowNolock(false);
    try {
        body();
    } catch (...) {
        if (m_state.m_himlDrag != 0) drag.DragShowNolock(true);
        throw;
    }
    if (m_state.m_himlDrag != 0) drag.DragShowNolock(true);
}

void AutoScroll::tmrAutoScroll_Timer()
{
    bool fDidScroll = false;
    Point pt;
    Trapped(m_context.module, kNone, VARIABLES(fDidScroll, pt), [&](int& line) {
        pt = m_tree.Pointer();
        line = 2;
        const unsigned sides = SidesInReach(pt);
        if (sides != 0) {
            line = 3;
            const unsigned scrollable = m_tree.IsWindowScrollable(m_tree.Window());
            WithoutPicture([&] {
                line = 4;
                fDidScroll = ScrollTowards(sides & scrollable);
                if (!fDidScroll) return;
                line = 5;
                m_tree.ShowDropTarget(m_tree.HitAt(pt).hItem);
                m_context.platform.windows.UpdateWindow(m_tree.Window());
            });
        }
        line = 6;
        tmrAutoScroll->SetEnabled(fDidScroll && m_state.m_himlDrag != 0);
    });
}

bool AutoScroll::ScrollTowards(unsigned sides)
{
    bool scrolled = false;
    for (const Step& step : kSteps)
        if ((sides & step.side) != 0) scrolled = DoDragScroll(step.bar, step.message, step.command) || scrolled;
    return scrolled;
}

bool AutoScroll::DoDragScroll(int nBar, unsigned uMsg, unsigned dwCmd)
{
    int dwPos = 0;
    return Trapped(m_context.module, VARIABLES(nBar, uMsg, dwCmd), VARIABLES(dwPos), [&](int& line) {
        Windows& windows = m_context.platform.windows;
        dwPos = windows.GetScrollPos(m_tree.Window(), nBar);
        line = 2;
        windows.Send(m_tree.Window(), uMsg, dwCmd, 0);
        line = 3;
        if (windows.GetScrollPos(m_tree.Window(), nBar) == dwPos) return false;
        line = 4;
        windows.UpdateWindow(m_tree.Window());
        return true;
    });
}

void AutoScroll::tmrAutoExpand_Timer()
{
    Point pt;
    Trapped(m_context.module, kNone, VARIABLES(pt), [&](int& line) {
        // At once, since opening runs code of the host, and one arming means one opening.
        tmrAutoExpand->SetEnabled(false);
        line = 2;
        pt = m_tree.Pointer();
        const TVHITTESTINFO hit = m_tree.HitAt(pt);
        line = 3;
        const bool opens = hit.hItem != 0 && (hit.flags & kHitOpening) != 0 &&
                           m_tree.IsTVItemCollapsedParent(m_tree.Window(), hit.hItem);
        line = 4;
        if (opens) WithoutPicture([&] { OpenUnderPointer(hit.hItem); });
    });
}

void AutoScroll::OpenUnderPointer(ItemHandle item)
{
    m_tree.TreeView_Expand(m_tree.Window(), item, kOpen);
    if (m_state.m_himlDrag == 0) return;
    m_tree.ShowDropTarget(m_tree.HitAt(m_tree.Pointer()).hItem);
    m_context.platform.windows.UpdateWindow(m_tree.Window());
}

}  // namespace sylvex
