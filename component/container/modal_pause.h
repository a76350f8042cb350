#pragma once

#include <functional>
#include <memory>

#include "component/border/border.h"
#include "platform/win32/messages.h"

namespace sylvex {

/// While it lives, the container's frame keeps its own modeless dialogs still, as it must while a modal one of the
/// control's is open.
class ModalPause {
public:
    explicit ModalPause(ComPtr<IOleInPlaceFrame> frame) noexcept : m_frame(std::move(frame)) { Enable(FALSE); }
    ~ModalPause() { Enable(TRUE); }
    ModalPause(const ModalPause&) = delete;
    ModalPause& operator=(const ModalPause&) = delete;

    const ComPtr<IOleInPlaceFrame>& Frame() const { return m_frame; }

private:
    /// What a frame makes of it is its own affair.
    void Enable(BOOL enable) noexcept
    {
        try {
            Guarded([&] { return m_frame->EnableModeless(enable); });
        } catch (...) {
        }
    }

    ComPtr<IOleInPlaceFrame> m_frame;
};

/// The platform's message boxes, each inside of a pause of the container's frame.
class PausingBoxes final : public Win32MessageBoxes {
public:
    using Pause = std::function<std::shared_ptr<const void>()>;

    /// `pause` gives what keeps the frame still, or nothing; must not throw.
    explicit PausingBoxes(Pause pause) : m_pause(std::move(pause)) {}

    int Show(WindowHandle owner, const std::wstring& text, const std::wstring& caption, unsigned style) override
    {
        const std::shared_ptr<const void> pause = m_pause();
        // The box's loop runs code of others, and a fault in it must not get past the end of the pause.
        return Guarded([&] { return Win32MessageBoxes::Show(owner, text, caption, style); });
    }

private:
    Pause m_pause;
};

}  // namespace sylvex
