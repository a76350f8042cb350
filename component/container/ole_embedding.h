#pragma once

#include "component/container/activation.h"
#include "component/container/control_core.h"
#include "component/container/control_part.h"
#include "component/container/view_notices.h"

namespace sylvex {

/// The control in its container, as the OLE parts share it: its size, its activation, and who is told what.
class Embedding final : private CoreObserver {
public:
    /// `active` belongs to the object, as does the core; this object may outlive the core, but is not called then.
    Embedding(ControlCore& core, IOleInPlaceActiveObject& active);
    Embedding(const Embedding&) = delete;
    Embedding& operator=(const Embedding&) = delete;

    ControlCore& Core() { return m_core; }
    Activation& Place() { return m_activation; }
    ViewNotices& View() { return m_view; }

    /// The control's size in hundredths of a millimetre.
    SIZEL Extent() const { return m_extent; }
    /// Sizes the control; false when a length is negative. While it is in place the container has the last word.
    bool SetExtent(SIZEL extent);
    /// Made on the first call; empty when the platform cannot.
    IOleAdviseHolder* Advises();
    /// Whether the font was taken over from the container, and follows it.
    void SetFontInherited(bool inherited);
    /// The container is another one from now on, or none (null): the control leaves the place in the old one first.
    void SetSite(IOleClientSite* site);
    /// An ambient property has changed; DISPID_UNKNOWN: several may have.
    void AmbientChanged(DISPID property);

private:
    /// Takes over the container's font, unless the control has one of its own or has been in place: from then on it
    /// stays what the person has seen.
    void FollowAmbientFont();
    // CoreObserver
    bool WindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void WindowGone() override;
    void ViewChanged() override;
    std::shared_ptr<const void> PauseFrame() noexcept override { return m_activation.PauseFrame(); }

    ControlCore& m_core;
    Activation m_activation;
    ViewNotices m_view;
    SIZEL m_extent;
    ComPtr<IOleAdviseHolder> m_advises;
    /// The container's font as the control took it over; empty when the control's font is its own.
    ComPtr<IFont> m_inheritedFont;
};

/// A part of the control's object that stands in the container's world.
class OlePart : public ControlPart {
protected:
    ~OlePart() = default;
    /// Not to be called while the object is being made or destroyed.
    virtual Embedding& Embedded() = 0;
};

}  // namespace sylvex
