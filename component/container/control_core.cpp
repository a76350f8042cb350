#include "component/container/control_core.h"

#include "com/late_call.h"
#include "component/border/fonts.h"
#include "component/border/object_ref.h"
#include "platform/win32/handles.h"

#include "SylvexControl_h.h"

namespace sylvex {

namespace {

constexpr DISPID IdentifierOf(Property property)
{
    constexpr DISPID identifiers[] = {
#define PROPERTY(name) dispid##name,
#include "control/properties.def"
    };
    return identifiers[static_cast<std::size_t>(property)];
}

}  // namespace

ControlCore::ControlCore(IUnknown& identity)
    : m_identity(identity),
      m_points(identity),
      m_boxes([this] { return PauseFrame(); }),
      m_platform(&m_boxes),
      m_objects(*this),
      m_window(*this),
      m_fontWatch([this] { FontChanged(); })
{
    Container& container = *this;
    SylvexEvents& events = *this;
    m_control = std::make_unique<Sylvex>(Services(), container, events, NumberOf(m_window.Handle()));
    m_control->UserControl_Resize(m_window.InnerSize());
}

ControlCore::~ControlCore()
{
    // What happens while the control goes (its windows go, tags of nodes are released) finds it gone already.
    m_observer = nullptr;
    m_objects.Close();
    const std::unique_ptr<Sylvex> last = std::move(m_control);
}

Sylvex& ControlCore::Used()
{
    Window();
    if (!m_initialised) InitNew();
    return *m_control;
}

void ControlCore::InitNew()
{
    m_initialised = true;
    m_control->UserControl_InitProperties();
}

std::shared_ptr<void> ControlCore::KeepAlive()
{
    m_identity.AddRef();
    return {this, [](ControlCore* core) { core->LetGo(); }};
}

void ControlCore::LetGo() noexcept
{
    // The guard stands in a call from one of the control's windows. Its last reference would end the object below the
    // feet of that call.
    const ULONG references = m_identity.AddRef();
    m_identity.Release();
    const bool last = references <= 2;
    if (!last || !m_window.Defer()) m_identity.Release();
}

void ControlCore::Deferred()
{
    m_identity.Release();
}

void ControlCore::SetSite(IOleClientSite* site)
{
    m_site = ComPtr<IOleClientSite>(site);
}

Variant ControlCore::Ambient(DISPID property) const
{
    Variant value;
    const ComPtr<IDispatch> container = m_site.As<IDispatch>();
    if (!container) return value;
    return SUCCEEDED(CallMember(*container, property, DISPATCH_PROPERTYGET, {}, value.Put())) ? value : Variant();
}

bool ControlCore::UserMode()
{
    Variant mode = Ambient(DISPID_AMBIENT_USERMODE);
    if (mode.Type() == VT_EMPTY || FAILED(mode.ChangeType(VT_BOOL))) return true;
    return V_BOOL(&mode.Get()) != VARIANT_FALSE;
}

ComPtr<IFontDisp> ControlCore::AmbientFont() const
{
    const Variant ambient = Ambient(DISPID_AMBIENT_FONT);
    const auto font = ambient.As<IFontDisp>();
    return font ? font : FontLike(nullptr);
}

void ControlCore::PropertyChanged(Property property)
{
    m_dirty = true;
    m_points.Changed(IdentifierOf(property));
    if (m_observer) m_observer->ViewChanged();
}

bool ControlCore::MayChange(Property property)
{
    return m_points.MayChange(IdentifierOf(property));
}

void ControlCore::FreezeEvents(bool freeze)
{
    if (freeze) {
        ++m_frozen;
    } else if (m_frozen > 0) {
        --m_frozen;
    }
}

HWND ControlCore::Window()
{
    // The tree may have gone alone. While windows come and go they ask here for each other.
    const bool steady = !m_changingWindows && m_window.Handle() != m_dyingWindow;
    const bool treeGone = steady && m_control && m_control->Tree().hWnd() == 0;
    if (m_window.Handle() && !treeGone) return m_window.Handle();
    m_changingWindows = true;
    try {
        m_window.Ensure();
        m_dyingWindow = nullptr;
        m_control->DetachWindow();
        m_control->AttachWindow(NumberOf(m_window.Handle()));
    } catch (...) {
        m_changingWindows = false;
        throw;
    }
    m_changingWindows = false;
    return m_window.Handle();
}

void ControlCore::Attach(HWND parent, const RECT& place)
{
    Window();
    m_window.Attach(parent, place);
}

void ControlCore::Detach()
{
    m_window.Detach();
}

void ControlCore::MoveWindow(const RECT& place)
{
    m_window.Move(place);
}

void ControlCore::Resize(Size size)
{
    m_window.Resize(size);
}

void ControlCore::Resized(Size size)
{
    if (!m_control) return;
    try {
        m_control->UserControl_Resize(size);
    } catch (const RuntimeError&) {  // reported where it happened; a message has nobody to pass it on to
    }
}

void ControlCore::EraseBackground(HDC device, const RECT& place)
{
    m_face.Paint(device, place);
}

bool ControlCore::Message(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    return m_observer && m_observer->WindowMessage(message, wParam, lParam, result);
}

void ControlCore::Destroying()
{
    if (!m_control) return;
    // To let go of the container may let go of the control.
    const std::shared_ptr<void> alive = KeepAlive();
    m_dyingWindow = m_window.Handle();
    m_control->DetachWindow();
    if (m_observer) m_observer->WindowGone();
}

void ControlCore::SetBackColor(OLE_COLOR color)
{
    m_face.backColor = color;
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
}

void ControlCore::SetPicture(IPictureDisp* picture)
{
    m_face.picture = ComPtr<IPictureDisp>(picture);
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
}

ComPtr<IFontDisp> ControlCore::Font()
{
    if (ComPtr<IFontDisp> font = Behind<IFontDisp>(Tree().Font())) return font;
    const LRESULT shown = SendMessageW(WindowOf(Tree().hWnd()), WM_GETFONT, 0, 0);
    ComPtr<IFontDisp> font = FontLike(HandleOf<HFONT>(static_cast<std::uintptr_t>(shown)));
    SetFont(font.Get());
    return font;
}

void ControlCore::SetFont(IFontDisp* font)
{
    Tree().SetFont(ReferTo(font));
    FollowFont();
}

void ControlCore::FollowFont()
{
    m_fontWatch.Watch(ObjectBehind(Tree().Font()).Get());
}

void ControlCore::FontChanged() noexcept
{
    if (!m_control) return;  // it is going
    try {
        const std::shared_ptr<void> alive = KeepAlive();
        Tree().SetFont(ObjectRef(Tree().Font()));
        PropertyChanged(Property::Font);
    } catch (...) {  // who changes a font object hears nothing of those that follow it
    }
}

Point ControlCore::PixelsOf(ContainerPoint place)
{
    return ToPixels(ControlSite().Get(), place);
}

ContainerPoint ControlCore::UnitsOf(Point pixels)
{
    return ToContainer(ControlSite().Get(), pixels);
}

}  // namespace sylvex
