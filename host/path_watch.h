#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/event_sink.h"

namespace sylvex::host {

/// Notices that a node has got another path, of which the control tells nobody: the one that the mouse was pressed on
/// and the selected one, whose labels and places the user changes.
class PathWatch {
public:
    /// Hears what was done ("Moved" or "Renamed") and both paths.
    using Listener = std::function<void(std::wstring_view what, const std::wstring& before, const std::wstring& after)>;

    /// The control outlives the watch.
    PathWatch(_Sylvex& control, Listener listener) : m_control(control), m_listener(std::move(listener)) {}

    /// An event of the control, right after it came.
    void Hear(const ControlEvent& event);
    /// Compares and tells; called when the user may have finished something.
    void Look();

private:
    struct Watched {
        ComPtr<INode> node;
        std::wstring path;
    };
    std::optional<std::wstring> PathOf(INode& node) const;
    std::optional<Watched> Watch(ComPtr<INode> node) const;
    void Compare(std::optional<Watched>& watched);

    _Sylvex& m_control;
    Listener m_listener;
    std::optional<Watched> m_pressed;
    std::optional<Watched> m_selected;
};

/// What has happened to a file or folder that has got another path: "Moved" into another folder, or "Renamed".
std::wstring_view NameOfChange(std::wstring_view before, std::wstring_view after);

}  // namespace sylvex::host
