#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/windows.h"
#include "tests/simulated/simulated_images.h"
#include "tests/simulated/simulated_list.h"
#include "tests/simulated/simulated_system.h"

namespace sylvex {

class SimulatedTree;

/// The windows of the simulated desktop: hosts' own, their list views, and the control's trees, which alone have a
/// place on the screen.
class SimulatedWindows final : public Windows {
public:
    SimulatedWindows(CallGate& gate, SimulatedImages& images, SimulatedSystem& system);
    ~SimulatedWindows() override;

    /// A window of the host, such as the one that a tree is made in.
    WindowHandle NewWindow();
    /// A list view of the host, visible and empty.
    SimulatedList NewList();
    /// Destroys a window with those below it, as a closing host does.
    void DestroyWindow(WindowHandle window);
    bool Has(WindowHandle window) const { return m_windows.count(window) != 0; }
    /// The window at the top of those that hold this one; 0 for one that does not exist.
    WindowHandle FormOf(WindowHandle window) const;
    /// The trees that exist, in the order of their making. They belong to who called CreateTree.
    const std::vector<SimulatedTree*>& Trees() const { return m_trees; }

    std::unique_ptr<TreeWindow> CreateTree(WindowHandle parent, TreeWindowListener& listener) override;
    std::unique_ptr<ListWindow> WrapList(WindowHandle list) override;
    bool Exists(WindowHandle window) override;
    std::intptr_t Send(WindowHandle window, unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    std::uint32_t Style(WindowHandle window) override;
    void SetStyle(WindowHandle window, std::uint32_t style) override;
    WindowHandle TopLevelOf(WindowHandle window) override;
    std::optional<Rect> ClientRect(WindowHandle window) override;
    std::optional<Rect> WindowRect(WindowHandle window) override;
    std::optional<Point> ClientToScreen(WindowHandle window, Point client) override;
    Point ScreenToClient(WindowHandle window, Point screen) override;
    std::optional<ScrollBar> GetScrollInfo(WindowHandle window, int bar) override;
    int GetScrollPos(WindowHandle window, int bar) override;
    void UpdateWindow(WindowHandle window) override;

    /// The tree that is this window, null when there is none.
    SimulatedTree* TreeOf(WindowHandle window) const;
    /// Runs before any window goes.
    void WhenDestroyed(std::function<void(WindowHandle)> notice) { m_whenDestroyed = std::move(notice); }

    /// For trees: their services, and the end of a tree.
    CallGate& Gate() { return m_gate; }
    SimulatedImages& ImageLists() { return m_images; }
    SimulatedSystem& Machine() { return m_system; }
    void Forget(const SimulatedTree& tree);

private:
    struct Window {
        WindowHandle parent = 0;
        std::uint32_t style = 0x50000000;  // a visible child
        SimulatedTree* tree = nullptr;
        std::shared_ptr<ListState> list;
    };
    CallGate& m_gate;
    SimulatedImages& m_images;
    SimulatedSystem& m_system;
    std::map<WindowHandle, Window> m_windows;
    std::vector<SimulatedTree*> m_trees;
    std::function<void(WindowHandle)> m_whenDestroyed;
    WindowHandle m_last = 0x10000;
};

}  // namespace sylvex
