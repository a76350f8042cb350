#pragma once

#include <memory>
#include <string>

#include "tests/support/scene.h"

namespace sylvex {

/// What a hand works with on one desktop. Points are client pixels of the tree.
class HandTools {
public:
    virtual ~HandTools() = default;
    virtual void Press(Point where, short button) = 0;
    virtual void MoveTo(Point where) = 0;
    /// How many moves the tree has been told of; a system may tell of one that nobody has made.
    virtual int MovesTold() = 0;
    virtual void Release() = 0;
    /// The same while the program is busy: it hears of the release at the next Wait.
    virtual void ReleaseUnheard() = 0;
    virtual void PressKey(short key) = 0;
    /// Escape, while another window of the program has the focus.
    virtual void PressEscapeElsewhere() = 0;
    /// Lets time pass, in milliseconds; timers tick.
    virtual void Wait(int milliseconds) = 0;
    /// Fills the open label and ends its editing by Enter.
    virtual void Type(const std::wstring& text) = 0;
    /// What the open label holds; "(closed)" when none is open.
    virtual std::wstring Label() = 0;
    /// What a drag that has ended has left behind, such as "capture picture"; empty when it is clean.
    virtual std::string LeftOver() = 0;
    /// Something else takes the mouse.
    virtual void LoseCapture() = 0;
};

/// The tools of the platform that this program was linked for.
std::unique_ptr<HandTools> MakeHandTools(Scene& scene);

/// A person's hand at the tree of a scene. Nodes that it works on have to be in view.
class Hand {
public:
    explicit Hand(Scene& scene) : m_scene(scene), m_tools(MakeHandTools(scene)) {}

    HandTools* operator->() { return m_tools.get(); }
    /// The rectangle of a node's label, in client pixels. Raises 35601 when it is not shown.
    Rect LabelOf(Node& node);
    /// A place on the label.
    Point On(Node& node);
    /// Presses on a node and moves past the threshold, then onto another node, with a second move there.
    void Drag(Node& from, Node& to);
    /// The same and the release.
    void Drop(Node& from, Node& to);
    /// Selects a node, opens its label by F2, and gives what it holds then.
    std::wstring Edit(Node& node);

private:
    Scene& m_scene;
    std::unique_ptr<HandTools> m_tools;
};

constexpr short kEscapeKey = 27;
constexpr short kRenameKey = 0x71;

}  // namespace sylvex
