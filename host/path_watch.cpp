#include "host/path_watch.h"

#include <utility>

#include "host/automation.h"
#include "host/path_walker.h"

namespace sylvex::host {
namespace {

std::wstring_view FolderOf(std::wstring_view path)
{
    if (path.ends_with(L'\\')) path.remove_suffix(1);
    return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace

std::wstring_view NameOfChange(std::wstring_view before, std::wstring_view after)
{
    return FolderOf(before) == FolderOf(after) ? L"Renamed" : L"Moved";
}

void PathWatch::Hear(const ControlEvent& event)
{
    if (event.id == dispidMouseDown) {
        ComPtr<INode> node;
        Check(TreeOf(m_control)->HitTest(event.x, event.y, node.Put()), L"TreeView.HitTest");
        m_pressed = Watch(std::move(node));
    } else if (event.id == dispidMouseUp) {
        Compare(m_pressed);
        if (m_pressed) m_selected = std::exchange(m_pressed, std::nullopt);
    }
}

void PathWatch::Look()
{
    Compare(m_selected);
    m_selected = Watch(ReadObject(m_control, &_Sylvex::get_SelectedItem, L"SelectedItem"));
}

/// Nothing for a node that has been removed.
std::optional<std::wstring> PathWatch::PathOf(INode& node) const
{
    Bstr text;
    if (FAILED(node.get_Text(text.Put()))) return std::nullopt;
    Bstr path;
    Check(m_control.BuildFullPath(&node, path.Put()), L"BuildFullPath");
    return path.Text();
}

std::optional<PathWatch::Watched> PathWatch::Watch(ComPtr<INode> node) const
{
    if (!node) return std::nullopt;
    auto path = PathOf(*node);
    return path ? std::optional(Watched{std::move(node), *std::move(path)}) : std::nullopt;
}

void PathWatch::Compare(std::optional<Watched>& watched)
{
    if (!watched) return;
    const auto path = PathOf(*watched->node);
    if (path && *path != watched->path) m_listener(NameOfChange(watched->path, *path), watched->path, *path);
    watched = path ? std::optional(Watched{watched->node, *path}) : std::nullopt;
}

}  // namespace sylvex::host
