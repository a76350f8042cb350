#include "component/container/control_core.h"

#include "SylvexControl_h.h"

namespace sylvex {

namespace {

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
    FireNode(dispidNodeCheck, node);
}

void ControlCore::NodeClick(Node& node)
{
    FireNode(dispidNodeClick, node);
}

void ControlCore::Collapse(Node& node)
{
    FireNode(dispidCollapse, node);
}

void ControlCore::DblClick()
{
    Fire(dispidDblClick, {});
}

void ControlCore::Expand(Node& node)
{
    FireNode(dispidExpand, node);
}

void ControlCore::KeyDown(short& keyCode, short& shift)
{
    FireKey(dispidKeyDown, keyCode, shift);
}

void ControlCore::KeyPress(short& keyAscii)
{
    VARIANT argument = Reference(keyAscii);
    Fire(dispidKeyPress, {&argument, 1});
}

void ControlCore::KeyUp(short& keyCode, short& shift)
{
    FireKey(dispidKeyUp, keyCode, shift);
}

void ControlCore::MouseUp(short button, short shift, Point where)
{
    FireMouse(dispidMouseUp, button, shift, where);
}

void ControlCore::MouseMove(short button, short shift, Point where)
{
    FireMouse(dispidMouseMove, button, shift, where);
}

void ControlCore::MouseDown(short button, short shift, Point where)
{
    FireMouse(dispidMouseDown, button, shift, where);
}

}  // namespace sylvex
