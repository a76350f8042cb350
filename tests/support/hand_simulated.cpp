#include "tests/support/desk_simulated.h"
#include "tests/support/hand.h"

namespace sylvex {

namespace {

class SimulatedHand final : public HandTools {
public:
    explicit SimulatedHand(Scene& scene)
        : m_desktop(dynamic_cast<SimulatedDesk&>(scene.desk()).desktop),
          m_tree(*m_desktop.windows.Trees().front()),
          m_window(m_tree.Handle()),
          m_user(m_tree),
          m_pictures(m_desktop.images.Live())
    {
    }
    void Press(Point where, short button) override { m_user.Press(where, button); }
    void MoveTo(Point where) override
    {
        ++m_moves;
        m_user.MoveTo(where);
    }
    int MovesTold() override { return m_moves; }
    void Release() override { m_user.Release(); }
    void ReleaseUnheard() override { m_unheard = m_desktop.system.Now(); }
    void PressKey(short key) override
    {
        if (m_tree.Editing() != 0 && key == kEscapeKey) m_user.AbandonLabel();
        m_user.PressKey(key);
    }
    void PressEscapeElsewhere() override { m_desktop.drag.PressEscape(); }
    void Wait(int milliseconds) override
    {
        m_desktop.timers.Advance(milliseconds);
        if (const auto time = std::exchange(m_unheard, std::nullopt))
            m_desktop.system.WithInputOf(*time, [this] { m_user.Release(); });
    }
    void Type(const std::wstring& text) override { m_user.TypeLabel(text); }
    std::wstring Label() override { return m_tree.Editing() != 0 ? m_tree.EditText() : L"(closed)"; }
    std::string LeftOver() override
    {
        std::string left;
        if (m_desktop.drag.Captured() != 0) left += "capture ";
        if (!m_desktop.drag.Face().empty()) left += "picture ";
        if (m_desktop.images.Live() > m_pictures) left += "image list ";
        if (!m_desktop.timers.Enabled().empty()) left += "timer ";
        if (m_desktop.windows.Has(m_window) && m_tree.DropTarget() != 0) left += "highlight ";
        return left;
    }
    void LoseCapture() override { m_desktop.drag.LoseCapture(); }

private:
    int m_moves = 0;
    SimulatedDesktop& m_desktop;
    SimulatedTree& m_tree;
    WindowHandle m_window;
    TreeUser m_user;
    int m_pictures;
    std::optional<std::uint32_t> m_unheard;
};

}  // namespace

std::unique_ptr<HandTools> MakeHandTools(Scene& scene)
{
    return std::make_unique<SimulatedHand>(scene);
}

}  // namespace sylvex
