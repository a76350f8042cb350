#pragma once

#include <memory>
#include <span>

#include "component/border/border.h"
#include "component/container/connection_points.h"
#include "component/container/control_part.h"
#include "component/container/control_window.h"
#include "component/container/font_watch.h"
#include "component/container/modal_pause.h"
#include "component/container/surface.h"
#include "component/objects/tree_objects.h"
#include "control/sylvex.h"
#include "platform/win32/win32_platform.h"

namespace sylvex {

/// What a part of the object may want to hear of the core. None may throw.
class CoreObserver {
public:
    virtual ~CoreObserver() = default;
    /// A message of the control's own window (mouse activation, notifications of the tree, ...) before the control sees
    /// it; true: it has been handled, and `result` is its answer.
    virtual bool WindowMessage(UINT, WPARAM, LPARAM, LRESULT&) { return false; }
    /// The control's window has been destroyed together with its parent.
    virtual void WindowGone() {}
    /// What a container draws of the control may look different now.
    virtual void ViewChanged() {}
    /// Something modal opens: keeps the container's frame still while the result lives. Null: nobody to tell.
    virtual std::shared_ptr<const void> PauseFrame() noexcept { return nullptr; }
};

/// What all parts of the control's COM object share: the control with its platform and its window, its surface, its
/// connection points, and what is known of the container.
class ControlCore final : private Container, private SylvexEvents, private ControlWindowOwner, private TreeOwner {
public:
    /// Makes the control in a hidden window of its own (UserControl_Initialize). `identity` is the object as the world
    /// knows it; it is not counted, since it outlives the core.
    explicit ControlCore(IUnknown& identity);
    ~ControlCore() override;
    ControlCore(const ControlCore&) = delete;
    ControlCore& operator=(const ControlCore&) = delete;

    // ---- The control

    /// The control as it is, for containers' interfaces.
    Sylvex& Control() { return *m_control; }
    /// The control for a call of the host's: one that nobody has initialised becomes a newly placed one first.
    Sylvex& Used();
    /// A newly placed control (UserControl_InitProperties).
    void InitNew();
    /// The control's properties come from what was saved; whoever loads them writes them.
    void Loaded() { m_initialised = true; }
    /// A reference to the object. When it is the last one, the object goes once the window calls under way are over.
    std::shared_ptr<void> KeepAlive() override;
    Platform& Services() { return m_platform.Get(); }
    TreeObjects& Objects() { return m_objects; }
    ConnectionPoints& Points() { return m_points; }

    // ---- The container

    /// Null: none. Keeps a reference.
    void SetSite(IOleClientSite* site);
    /// Null without a container.
    IOleClientSite* Site() const { return m_site.Get(); }
    /// An ambient property of the container; empty when it has none of this number.
    Variant Ambient(DISPID property) const;
    /// What the container's ambient property says; true without a container or an answer.
    bool UserMode() override;
    /// The container's ambient font, or a new one like the system's own; empty only when the platform makes none.
    ComPtr<IFontDisp> AmbientFont() const;
    /// Tells all who listen that a property has changed, and that the control has to be saved.
    void PropertyChanged(Property property) override;
    /// False when somebody who listens wants the property to keep its value.
    bool MayChange(Property property) override;
    /// Whether the control has to be saved.
    bool Dirty() const { return m_dirty; }
    void SetDirty(bool dirty) { m_dirty = dirty; }
    /// Tells the container's frame that something modal is open while the result lives; null without a frame.
    std::shared_ptr<const void> PauseFrame() noexcept { return m_observer ? m_observer->PauseFrame() : nullptr; }
    /// Counts: no event is raised while it has been frozen more often than thawed.
    void FreezeEvents(bool freeze);

    // ---- The window

    /// The control's window; made anew, hidden, when its last parent took it along. Throws ComError.
    HWND Window();
    /// Shows the window at a place (pixels) in a window of the container.
    void Attach(HWND parent, const RECT& place);
    /// Hides the window and takes it out of the container.
    void Detach();
    /// Pixels of the parent's client area.
    void MoveWindow(const RECT& place);
    /// Width and height without a change of place, in pixels.
    void Resize(Size size);
    Size InnerSize() const { return m_window.InnerSize(); }
    /// Null: nobody. The observer outlives the core or takes itself away.
    void SetObserver(CoreObserver* observer) { m_observer = observer; }

    // ---- The surface and the objects that the tree carries

    const Surface& Face() const { return m_face; }
    OLE_COLOR BackColor() const { return m_face.backColor; }
    void SetBackColor(OLE_COLOR color);
    ComPtr<IPictureDisp> Picture() const { return m_face.picture; }
    void SetPicture(IPictureDisp* picture);
    /// The tree's font; when none has been set, one that looks like what the tree shows becomes its font. Changes of
    /// the object show in the tree.
    ComPtr<IFontDisp> Font() override;
    /// Writes the tree's font without a notice. Null: the system's own.
    void SetFont(IFontDisp* font) override;
    /// Follows the changes of the font that the tree has now.
    void FollowFont();

private:
    // SylvexEvents
    void NodeCheck(Node& node) override;
    void NodeClick(Node& node) override;
    void Collapse(Node& node) override;
    void DblClick() override;
    void Expand(Node& node) override;
    void KeyDown(short& keyCode, short& shift) override;
    void KeyPress(short& keyAscii) override;
    void KeyUp(short& keyCode, short& shift) override;
    void MouseUp(short button, short shift, Point where) override;
    void MouseMove(short button, short shift, Point where) override;
    void MouseDown(short button, short shift, Point where) override;

    // ControlWindowOwner
    void Resized(Size size) override;
    void EraseBackground(HDC device, const RECT& place) override;
    bool Message(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void Destroying() override;
    void Deferred() override;

    // TreeOwner
    IUnknown& ControlIdentity() override { return m_identity; }
    TreeView& Tree() override { return m_control->Tree(); }
    Point PixelsOf(ContainerPoint place) override;
    ContainerPoint UnitsOf(Point pixels) override;

    void LetGo() noexcept;
    ComPtr<IOleControlSite> ControlSite() const { return m_site.As<IOleControlSite>(); }
    void FontChanged() noexcept;
    bool IsHeard() const { return m_frozen == 0 && m_points.HasListeners(); }
    void Fire(DISPID event, std::span<VARIANT> reversed);
    void FireNode(DISPID event, Node& node);
    void FireKey(DISPID event, short& key, short& shift);
    void FireMouse(DISPID event, short button, short shift, Point where);

    IUnknown& m_identity;
    ComPtr<IOleClientSite> m_site;
    ConnectionPoints m_points;
    CoreObserver* m_observer = nullptr;
    bool m_initialised = false;
    bool m_dirty = false;
    bool m_changingWindows = false;
    HWND m_dyingWindow = nullptr;  // the control's, from its end on
    int m_frozen = 0;
    Surface m_face;
    PausingBoxes m_boxes;
    Win32Platform m_platform;
    TreeObjects m_objects;
    ControlWindow m_window;
    std::unique_ptr<Sylvex> m_control;
    FontWatch m_fontWatch;
};

}  // namespace sylvex
