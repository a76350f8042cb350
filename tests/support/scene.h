#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/sylvex.h"
#include "tests/support/desk.h"
#include "widgets/window_list.h"

namespace sylvex {

/// A control on a desk with a host that writes down what it hears. Trees and lists read as text.
class Scene : public Container, public SylvexEvents {
public:
    Scene();
    ~Scene() override;

    Desk& desk() { return *m_desk; }
    Sylvex& control() { return *m_control; }
    /// Lets go of the control, as a host that closes.
    void DropControl() { m_control.reset(); }
    Nodes& nodes() { return m_control->Tree().GetNodes(); }
    /// Makes a list view and hands it to the control.
    void BindList();
    ListWindow& list() { return *m_list; }
    /// Loads the roots, check boxes on.
    void Enumerate();
    /// Opens the tree down to the scratch folder and gives its node.
    Node& OpenBase();
    /// The loaded node of that name below the scratch folder, names separated by "/"; opens on the way.
    Node& At(const std::wstring& path);
    /// Ticks or unticks as a click on the box does.
    void Tick(Node& node, bool checked);

    /// A branch as "name[-](child child[+]) file"; x checked, ~ mixed.
    static std::wstring Render(Node& node);
    std::wstring RenderBase() { return Render(OpenBase()); }
    /// The item texts of the bound list, without the scratch folder's path, separated by blanks.
    std::wstring RowTexts();
    std::wstring Cell(int row, const std::wstring& key);

    /// What the host has heard since the last call, separated by blanks.
    std::wstring Heard();
    /// Runs inside every event while set.
    std::function<void(const std::wstring& event, Node* node)> onEvent;

private:
    std::shared_ptr<void> KeepAlive() override { return {}; }
    bool UserMode() override { return true; }
    void PropertyChanged(Property property) override { Hear(std::wstring(L"changed:") + NameOf(property)); }
    bool MayChange(Property) override { return true; }
    void NodeCheck(Node& node) override { Hear(L"NodeCheck:", &node); }
    void NodeClick(Node& node) override { Hear(L"NodeClick:", &node); }
    void Collapse(Node& node) override { Hear(L"Collapse:", &node); }
    void DblClick() override { Hear(L"DblClick"); }
    void Expand(Node& node) override { Hear(L"Expand:", &node); }
    void KeyDown(short& keyCode, short&) override { Hear(L"KeyDown:" + std::to_wstring(keyCode)); }
    void KeyPress(short& keyAscii) override { Hear(L"KeyPress:" + std::to_wstring(keyAscii)); }
    void KeyUp(short& keyCode, short&) override { Hear(L"KeyUp:" + std::to_wstring(keyCode)); }
    void MouseUp(short, short, Point) override { Hear(L"MouseUp"); }
    void MouseMove(short, short, Point) override {}
    void MouseDown(short, short, Point) override { Hear(L"MouseDown"); }
    void Hear(const std::wstring& event, Node* node = nullptr);
    static Node& ChildOf(Node& node, const std::wstring& text);

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<Sylvex> m_control;
    std::unique_ptr<ListWindow> m_list;
    std::wstring m_heard;
};

/// The number of the run-time error that `body` raises, 0 for none.
template <class Body>
long ErrorOf(Body&& body)
{
    try {
        body();
    } catch (const RuntimeError& error) {
        return error.number;
    }
    return 0;
}

}  // namespace sylvex
