#include "tests/simulated/simulated_windows.h"

#include <algorithm>

#include "tests/simulated/simulated_tree.h"

namespace sylvex {

SimulatedWindows::SimulatedWindows(CallGate& gate, SimulatedImages& images, SimulatedSystem& system)
    : m_gate(gate), m_images(images), m_system(system)
{
}

SimulatedWindows::~SimulatedWindows() = default;

WindowHandle SimulatedWindows::NewWindow()
{
    m_windows[++m_last];
    return m_last;
}

SimulatedList SimulatedWindows::NewList()
{
    auto state = std::make_shared<ListState>();
    state->handle = NewWindow();
    m_windows[state->handle].list = state;
    return {state, nullptr};
}

SimulatedTree* SimulatedWindows::TreeOf(WindowHandle window) const
{
    const auto found = m_windows.find(window);
    return found == m_windows.end() ? nullptr : found->second.tree;
}

void SimulatedWindows::DestroyWindow(WindowHandle window)
{
    if (m_whenDestroyed && m_windows.count(window) != 0) m_whenDestroyed(window);
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return;
    if (found->second.tree != nullptr) found->second.tree->MarkGone();
    if (found->second.list) found->second.list->gone = true;
    m_windows.erase(found);
    std::vector<WindowHandle> below;
    for (const auto& [handle, other] : m_windows) {
        if (other.parent == window) below.push_back(handle);
    }
    for (const WindowHandle child : below)
        DestroyWindow(child);
}

WindowHandle SimulatedWindows::TopLevelOf(WindowHandle window)
{
    m_gate.Enter("Windows::TopLevelOf");
    return FormOf(window);
}

WindowHandle SimulatedWindows::FormOf(WindowHandle window) const
{
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return 0;
    return found->second.parent == 0 ? window : FormOf(found->second.parent);
}

void SimulatedWindows::Forget(const SimulatedTree& tree)
{
    std::erase(m_trees, &tree);
    DestroyWindow(tree.Handle());
}

std::unique_ptr<TreeWindow> SimulatedWindows::CreateTree(WindowHandle parent, TreeWindowListener& listener)
{
    m_gate.Enter("Windows::CreateTree");
    if (m_windows.count(parent) == 0) throw OutOfMemory();
    const WindowHandle handle = NewWindow();
    auto tree = std::make_unique<SimulatedTree>(*this, handle, listener);
    m_windows[handle].parent = parent;
    m_windows[handle].tree = tree.get();
    m_trees.push_back(tree.get());
    return tree;
}

std::unique_ptr<ListWindow> SimulatedWindows::WrapList(WindowHandle list)
{
    m_gate.Enter("Windows::WrapList");
    const auto found = m_windows.find(list);
    if (found == m_windows.end() || !found->second.list) return nullptr;
    return std::make_unique<SimulatedList>(found->second.list, &m_gate);
}

bool SimulatedWindows::Exists(WindowHandle window)
{
    m_gate.Enter("Windows::Exists");
    return m_windows.count(window) != 0;
}

std::intptr_t SimulatedWindows::Send(WindowHandle window, unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
{
    m_gate.Enter("Windows::Send");
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return 0;
    if (found->second.tree != nullptr) return found->second.tree->OnMessage(message, wParam, lParam);
    if (found->second.list) return SimulatedList(found->second.list, nullptr).OnMessage(message, wParam, lParam);
    return 0;
}

std::uint32_t SimulatedWindows::Style(WindowHandle window)
{
    m_gate.Enter("Windows::Style");
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) return 0;
    return found->second.style | (found->second.tree != nullptr ? found->second.tree->BarStyle() : 0);
}

void SimulatedWindows::SetStyle(WindowHandle window, std::uint32_t style)
{
    m_gate.Enter("Windows::SetStyle");
    const auto found = m_windows.find(window);
    if (found != m_windows.end()) found->second.style = style;
}

std::optional<Rect> SimulatedWindows::ClientRect(WindowHandle window)
{
    m_gate.Enter("Windows::ClientRect");
    const SimulatedTree* const tree = TreeOf(window);
    if (tree == nullptr) return std::nullopt;
    const Rect& place = tree->Place();
    return Rect{0, 0, place.right - place.left, place.bottom - place.top};
}

std::optional<Rect> SimulatedWindows::WindowRect(WindowHandle window)
{
    m_gate.Enter("Windows::WindowRect");
    const SimulatedTree* const tree = TreeOf(window);
    if (tree == nullptr) return std::nullopt;
    constexpr int kBorder = SimulatedTree::kBorder;
    const Rect& place = tree->Place();
    const Point first = tree->ToScreen({-kBorder, -kBorder});
    const Point last = tree->ToScreen({place.right - place.left + kBorder, place.bottom - place.top + kBorder});
    return Rect{first.x, first.y, last.x, last.y};
}

std::optional<Point> SimulatedWindows::ClientToScreen(WindowHandle window, Point client)
{
    m_gate.Enter("Windows::ClientToScreen");
    const SimulatedTree* const tree = TreeOf(window);
    if (tree == nullptr) return std::nullopt;
    return tree->ToScreen(client);
}

Point SimulatedWindows::ScreenToClient(WindowHandle window, Point screen)
{
    m_gate.Enter("Windows::ScreenToClient");
    const SimulatedTree* const tree = TreeOf(window);
    if (tree == nullptr) return screen;
    const Point origin = tree->ToScreen({});
    return {screen.x - origin.x, screen.y - origin.y};
}

std::optional<ScrollBar> SimulatedWindows::GetScrollInfo(WindowHandle window, int bar)
{
    m_gate.Enter("Windows::GetScrollInfo");
    const SimulatedTree* const tree = TreeOf(window);
    if (tree == nullptr) return std::nullopt;
    return tree->BarOf(bar);
}

int SimulatedWindows::GetScrollPos(WindowHandle window, int bar)
{
    m_gate.Enter("Windows::GetScrollPos");
    const SimulatedTree* const tree = TreeOf(window);
    return tree == nullptr ? 0 : tree->BarOf(bar).position;
}

void SimulatedWindows::UpdateWindow(WindowHandle)
{
    m_gate.Enter("Windows::UpdateWindow");
}

}  // namespace sylvex
