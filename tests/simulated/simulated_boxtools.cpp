#include "tests/simulated/simulated_boxtools.h"

#include <algorithm>

namespace sylvex {

namespace {

constexpr Rect kNewBox{0, 0, 300, 150};
constexpr int kCheckHeight = 30;

}  // namespace

class SimulatedOwnerTimer final : public OwnerTimer {
public:
    SimulatedOwnerTimer(SimulatedBoxTools& tools, WindowHandle owner, std::function<void()> tick)
        : m_tools(tools), m_owner(owner), m_tick(std::move(tick))
    {
        m_tools.m_timers.push_back(this);
    }
    SimulatedOwnerTimer(const SimulatedOwnerTimer&) = delete;
    SimulatedOwnerTimer& operator=(const SimulatedOwnerTimer&) = delete;
    ~SimulatedOwnerTimer() override { std::erase(m_tools.m_timers, this); }
    WindowHandle Owner() const { return m_owner; }
    void Tick() const
    {
        // The callback may destroy this timer.
        const std::function<void()> tick = m_tick;
        tick();
    }

private:
    SimulatedBoxTools& m_tools;
    WindowHandle m_owner;
    std::function<void()> m_tick;
};

class SimulatedBoxCheck final : public BoxCheck {
public:
    SimulatedBoxCheck(SimulatedBoxTools& tools, WindowHandle box, WindowHandle handle, std::wstring text)
        : m_tools(tools), m_box(box), m_handle(handle), m_text(std::move(text))
    {
    }
    SimulatedBoxCheck(const SimulatedBoxCheck&) = delete;
    SimulatedBoxCheck& operator=(const SimulatedBoxCheck&) = delete;
    ~SimulatedBoxCheck() override
    {
        if (SimulatedBoxTools::Box* const box = m_tools.Find(m_box)) box->check = nullptr;
    }
    const std::wstring& Text() const { return m_text; }
    void Click() { m_ticked = !m_ticked; }
    WindowHandle Handle() const override { return m_handle; }
    bool Ticked() override { return m_ticked; }

private:
    SimulatedBoxTools& m_tools;
    WindowHandle m_box;
    WindowHandle m_handle;
    std::wstring m_text;
    bool m_ticked = false;
};

void SimulatedBoxTools::TickTimers()
{
    const std::vector<SimulatedOwnerTimer*> timers = m_timers;
    for (const SimulatedOwnerTimer* const timer : timers) {
        const bool armed = std::find(m_timers.begin(), m_timers.end(), timer) != m_timers.end();
        if (armed && (timer->Owner() == 0 || m_windows.Has(timer->Owner()))) timer->Tick();
    }
}

bool SimulatedBoxTools::ClickCheck()
{
    if (m_open.empty() || m_open.back().check == nullptr) return false;
    m_open.back().check->Click();
    return true;
}

std::optional<std::wstring> SimulatedBoxTools::CheckText() const
{
    if (m_open.empty() || m_open.back().check == nullptr) return std::nullopt;
    return m_open.back().check->Text();
}

void SimulatedBoxTools::OpenBox(WindowHandle owner, const std::wstring& caption)
{
    m_open.push_back({m_windows.NewWindow(), owner, caption, kNewBox, nullptr});
    m_boxPlace = kNewBox;
}

void SimulatedBoxTools::CloseBox()
{
    m_windows.DestroyWindow(m_open.back().handle);
    m_open.pop_back();
}

SimulatedBoxTools::Box* SimulatedBoxTools::Find(WindowHandle box)
{
    const auto found = std::find_if(m_open.begin(), m_open.end(), [=](const Box& open) { return open.handle == box; });
    return found == m_open.end() ? nullptr : &*found;
}

std::unique_ptr<OwnerTimer> SimulatedBoxTools::Arm(WindowHandle owner, unsigned identifier, int milliseconds,
                                                   std::function<void()> tick)
{
    m_gate.Enter("BoxTools::Arm");
    m_lines.push_back("timer " + std::to_string(identifier) + " every " + std::to_string(milliseconds));
    return std::make_unique<SimulatedOwnerTimer>(*this, owner, std::move(tick));
}

void SimulatedBoxTools::RestoreOwner(WindowHandle)
{
    m_gate.Enter("BoxTools::RestoreOwner");
    m_lines.push_back("restore");
}

WindowHandle SimulatedBoxTools::FindBox(WindowHandle owner, const std::wstring& caption)
{
    m_gate.Enter("BoxTools::FindBox");
    const auto found = std::find_if(m_open.rbegin(), m_open.rend(),
                                    [&](const Box& open) { return open.owner == owner && open.caption == caption; });
    return found == m_open.rend() ? 0 : found->handle;
}

Rect SimulatedBoxTools::PlaceOf(WindowHandle window)
{
    m_gate.Enter("BoxTools::PlaceOf");
    if (const Box* const box = Find(window)) return box->place;
    const auto found = m_places.find(window);
    return found != m_places.end() && m_windows.Has(window) ? found->second : Rect{};
}

Rect SimulatedBoxTools::WorkArea(WindowHandle)
{
    m_gate.Enter("BoxTools::WorkArea");
    return m_area;
}

void SimulatedBoxTools::MoveBox(WindowHandle box, Point corner)
{
    m_gate.Enter("BoxTools::MoveBox");
    Box* const open = Find(box);
    if (open == nullptr) return;
    const Size size{open->place.right - open->place.left, open->place.bottom - open->place.top};
    m_boxPlace = open->place = {corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
}

std::unique_ptr<BoxCheck> SimulatedBoxTools::AddCheck(WindowHandle box, const std::wstring& text)
{
    m_gate.Enter("BoxTools::AddCheck");
    Box* const open = Find(box);
    if (open == nullptr) return nullptr;
    open->place.bottom += kCheckHeight;
    auto check = std::make_unique<SimulatedBoxCheck>(*this, box, m_windows.NewWindow(), text);
    open->check = check.get();
    return check;
}

}  // namespace sylvex
