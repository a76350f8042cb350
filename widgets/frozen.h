#pragma once

#include <memory>
#include <utility>

#include "platform/listwindow.h"

namespace sylvex {

/// Stops the painting of a list while it exists; a hidden one, too, keeps its scroll bars up to date with every row.
/// Raises 398 when the window has gone.
class Frozen {
public:
    explicit Frozen(std::shared_ptr<ListWindowFace> window)
        : m_window(std::move(window)), m_visible(m_window->Visible())
    {
        m_window->SetRedraw(false);
    }
    Frozen(const Frozen&) = delete;
    Frozen& operator=(const Frozen&) = delete;
    ~Frozen()
    {
        try {
            m_window->SetRedraw(true);
            // The platform takes painting again for being shown.
            if (!m_visible) m_window->SetVisible(false);
        } catch (...) {
            // The window has gone meanwhile; whoever used it has been told.
        }
    }

private:
    std::shared_ptr<ListWindowFace> m_window;
    bool m_visible;
};

}  // namespace sylvex
