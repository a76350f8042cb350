#include "platform/win32/tree/treewindow.h"

#include <algorithm>

#include "platform/runtime_error.h"
#include "platform/win32/tree/tree_core.h"

namespace sylvex {

Win32TreeWindow::Win32TreeWindow(HWND parent, TreeWindowListener& listener) : m_core(TreeCore::Create(parent, listener))
{
}

Win32TreeWindow::~Win32TreeWindow()
{
    m_core->Close();
}

std::shared_ptr<TreeCore> Win32TreeWindow::Core() const
{
    if (!m_core->Window()) throw ObjectGone(L"The tree view");
    return m_core;
}

WindowHandle Win32TreeWindow::Handle() const
{
    return NumberOf(m_core->Window());
}

ItemHandle Win32TreeWindow::Insert(ItemHandle parent, ItemHandle after, ItemData data, const ItemLook& look)
{
    return Core()->rows.Insert(parent, after, data, look);
}

bool Win32TreeWindow::MayEmpty()
{
    return Core()->MayEmpty();
}

void Win32TreeWindow::Delete(ItemHandle item)
{
    Core()->rows.Delete(item);
}

void Win32TreeWindow::SetText(ItemHandle item, std::wstring_view text)
{
    Core()->rows.SetText(item, text);
}

void Win32TreeWindow::SetImages(ItemHandle item, int image, int selectedImage)
{
    Core()->rows.SetImages(item, image, selectedImage);
}

void Win32TreeWindow::SetButton(ItemHandle item, ExpandButton button)
{
    Core()->rows.SetButton(item, button);
}

void Win32TreeWindow::Expand(ItemHandle item, bool expand)
{
    Core()->rows.Expand(ItemOf(item), expand);
}

bool Win32TreeWindow::EnsureVisible(ItemHandle item)
{
    const auto core = Core();
    const auto firstInView = [&] { return core->Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE); };
    if (!core->rows.Reveal(ItemOf(item))) return false;
    const auto before = firstInView();
    core->Send(TVM_ENSUREVISIBLE, 0, ItemOf(item));
    return firstInView() != before;
}

void Win32TreeWindow::Select(ItemHandle item)
{
    Core()->rows.Select(ItemOf(item));
}

void Win32TreeWindow::SelectDropTarget(ItemHandle item)
{
    Core()->Send(TVM_SELECTITEM, TVGN_DROPHILITE, ItemOf(item));
}

TreeHit Win32TreeWindow::HitTest(Point where)
{
    const auto core = Core();
    TVHITTESTINFO hit{};
    hit.pt = {where.x, where.y};
    core->Send(TVM_HITTEST, 0, ParameterOf(&hit));
    const auto data = core->rows.DataOf(hit.hItem);
    return data ? TreeHit{NumberOf(hit.hItem), *data, hit.flags} : TreeHit{0, 0, hit.flags};
}

std::optional<ItemData> Win32TreeWindow::DataOf(ItemHandle item)
{
    return Core()->rows.DataOf(ItemOf(item));
}

void Win32TreeWindow::EditLabel(ItemHandle item)
{
    Core()->edit.Begin(ItemOf(item));
}

void Win32TreeWindow::TypeLabel(const std::wstring& text)
{
    Core()->edit.Type(text);
}

void Win32TreeWindow::CancelEdit()
{
    Core()->edit.Cancel();
}

void Win32TreeWindow::SetRedraw(bool redraw)
{
    Core()->face.SetRedraw(redraw);
}

void Win32TreeWindow::MarksChanged()
{
    Core()->marks.Changed();
}

int Win32TreeWindow::VisibleCount()
{
    return static_cast<int>(Core()->Send(TVM_GETVISIBLECOUNT));
}

void Win32TreeWindow::SetVisible(bool visible)
{
    Core()->face.SetVisible(visible);
}

void Win32TreeWindow::Refresh()
{
    Core()->face.Refresh();
}

void Win32TreeWindow::Move(const Rect& place)
{
    SetWindowPos(Core()->Window(), nullptr, place.left, place.top, std::max(place.right - place.left, 0),
                 std::max(place.bottom - place.top, 0), SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32TreeWindow::SetImageList(ImageListHandle images)
{
    const auto core = Core();
    core->marks.Stale();
    core->Send(TVM_SETIMAGELIST, TVSIL_NORMAL, static_cast<LPARAM>(images));
}

void Win32TreeWindow::Apply(TreeSetting setting, int value)
{
    Core()->face.Apply(setting, value);
}

void Win32TreeWindow::SetFont(const ObjectRef& font)
{
    Core()->face.SetFont(font);
}

void Win32TreeWindow::SetMouseIcon(const ObjectRef& picture)
{
    Core()->face.SetMouseIcon(picture);
}

void Win32TreeWindow::InstallCheckPictures()
{
    Core()->face.InstallCheckPictures();
}

}  // namespace sylvex
