#include "component/container/control_core.h"

namespace sylvex {

namespace {

// Numbers of the events that are raised.
enum Event : DISPID {
    kNodeCheck = 2,
    kNodeClick = 3,
    kCollapse = 6,
    kDblClick = 7,
    kExpand = 8,
    kKeyDown = 9,
    kKeyPress = 10,
    kKeyUp = 11,
    kMouseUp = 12,
    kMouseMove = 13,
    kMouseDown = 14
};

VARIANT Reference(short& value)
{
    VARIANT reference{};
    V_VT(&reference) = VT_BYREF | VT_I2;
    V_I2REF(&reference) = &value;
    return reference;
}

VARIANT Reference(float& value)
{
    VARIANT reference{};
    V_VT(&reference) = VT_BYREF | VT_R4;
    V_R4REF(&reference) = &value;
    return reference;
}

}  // namespace

void ControlCore::Fire(DISPID event, std::span<VARIANT> reversed)
{
    if (!IsHeard()) return;
    // A timer's event has no other guard.
    const std::shared_ptr<void> alive = KeepAlive();
    // The code of a form that is being designed does not run.
    if (Guarded([&] { return UserMode(); })) m_points.Fire(event, reversed);
}

void ControlCore::FireNode(DISPID event, Node& node)
{
    if (!IsHeard()) return;
    Variant object(m_objects.ObjectOf(&node).Get());
    Fire(event, {&object.Get(), 1});
}

void ControlCore::FireKey(DISPID event, short& key, short& shift)
{
    VARIANT reversed[] = {Reference(shift), Reference(key)};
    Fire(event, reversed);
}

void ControlCore::FireMouse(DISPID event, short button, short shift, Point where)
{
    if (!IsHeard()) return;
    ContainerPoint place = UnitsOf(where);
    VARIANT reversed[] = {Reference(place.y), Reference(place.x), Reference(shift), Reference(button)};
    Fire(event, reversed);
}

void ControlCore::NodeCheck(Node& node)
{
    FireNode(kNodeCheck, node);
}

void ControlCore::NodeClick(Node& node)
{
    FireNode(kNodeClick, node);
}

void ControlCore::Collapse(Node& node)
{
    FireNode(kCollapse, node);
}

void ControlCore::DblClick()
{
    Fire(kDblClick, {});
}

void ControlCore::Expand(Node& node)
{
    FireNode(kExpand, node);
}

void ControlCore::KeyDown(short& keyCode, short& shift)
{
    FireKey(kKeyDown, keyCode, shift);
}

void ControlCore::KeyPress(short& keyAscii)
{
    VARIANT argument = Reference(keyAscii);
    Fire(kKeyPress, {&argument, 1});
}

void ControlCore::KeyUp(short& keyCode, short& shift)
{
    FireKey(kKeyUp, keyCode, shift);
}

void ControlCore::MouseUp(short button, short shift, Point where)
{
    FireMouse(kMouseUp, button, shift, where);
}

void ControlCore::MouseMove(short button, short shift, Point where)
{
    FireMouse(kMouseMove, button, shift, where);
}

void ControlCore::MouseDown(short button, short shift, Point where)
{
    FireMouse(kMouseDown, button, shift, where);
}

}  // namespace sylvex
