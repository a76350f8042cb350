#include "component/objects/tree_object.h"

#include <commctrl.h>

#include "component/border/object_ref.h"
#include "component/border/values.h"
#include "platform/win32/handles.h"

namespace sylvex {

namespace {

LRESULT Ask(TreeView& tree, UINT message, WPARAM wParam)
{
    return SendMessageW(WindowOf(tree.hWnd()), message, wParam, 0);
}

}  // namespace

STDMETHODIMP TreeViewObject::get_Nodes(INodes** value)
{
    return Get(value, [&] { return Objects().NodesObject(); });
}

STDMETHODIMP TreeViewObject::get_SelectedItem(INode** value)
{
    return Get(value, [&] { return Objects().ObjectOf(Tree().SelectedItem()); });
}

STDMETHODIMP TreeViewObject::putref_SelectedItem(INode* value)
{
    return Member([&] { Tree().SetSelectedItem(Objects().NodeOf(value)); });
}

STDMETHODIMP TreeViewObject::get_DropHighlight(INode** value)
{
    return Get(value, [&] { return Objects().ObjectOf(Tree().DropHighlight()); });
}

STDMETHODIMP TreeViewObject::putref_DropHighlight(INode* value)
{
    return Member([&] { Tree().SetDropHighlight(Objects().NodeOf(value)); });
}

STDMETHODIMP TreeViewObject::HitTest(FLOAT x, FLOAT y, INode** result)
{
    return Get(result, [&] { return Objects().ObjectOf(Tree().HitTest(Owner().PixelsOf({x, y}))); });
}

STDMETHODIMP TreeViewObject::StartLabelEdit()
{
    return Member([&] { Tree().StartLabelEdit(); });
}

STDMETHODIMP TreeViewObject::Refresh()
{
    return Member([&] { Tree().Refresh(); });
}

STDMETHODIMP TreeViewObject::get_hWnd(LONG* value)
{
    return Get(value, [&] { return Tree().hWnd(); });
}

STDMETHODIMP TreeViewObject::get_Font(IFontDisp** value)
{
    return Get(value, [&] { return Owner().Font(); });
}

STDMETHODIMP TreeViewObject::putref_Font(IFontDisp* value)
{
    return Member([&] { Owner().SetFont(Incoming<IFontDisp>(value).Get()); });
}

STDMETHODIMP TreeViewObject::get_MouseIcon(IPictureDisp** value)
{
    return Get(value, [&] { return Behind<IPictureDisp>(Tree().MouseIcon()); });
}

STDMETHODIMP TreeViewObject::putref_MouseIcon(IPictureDisp* value)
{
    return Member([&] { Tree().SetMouseIcon(ReferTo(Incoming<IPictureDisp>(value).Get())); });
}

STDMETHODIMP TreeViewObject::get_PathSeparator(BSTR* value)
{
    return Get(value, [&] { return Tree().GetNodes().PathSeparator(); });
}

STDMETHODIMP TreeViewObject::put_PathSeparator(BSTR value)
{
    return Member([&] { Tree().GetNodes().SetPathSeparator(Given(value)); });
}

STDMETHODIMP TreeViewObject::get_Sorted(VARIANT_BOOL* value)
{
    return Get(value, [&] { return Tree().GetNodes().Sorted(); });
}

STDMETHODIMP TreeViewObject::put_Sorted(VARIANT_BOOL value)
{
    return Member([&] { Tree().GetNodes().SetSorted(value != VARIANT_FALSE); });
}

STDMETHODIMP TreeViewObject::get_ImageList(VARIANT* value)
{
    return Get(value, [&] { return Objects().ImageList(); });
}

STDMETHODIMP TreeViewObject::putref_ImageList(VARIANT value)
{
    return Member([&] {
        // The tree shows the present one until it has the new one.
        const Variant before(Objects().ImageList());
        Tree().SetImageListHandle(Objects().TakeImageList(value));
    });
}

STDMETHODIMP TreeViewObject::GetVisibleCount(LONG* result)
{
    return Get(result, [&] { return Tree().VisibleCount(); });
}

STDMETHODIMP TreeViewObject::get_Visible(VARIANT_BOOL* value)
{
    return Get(value, [&] { return Tree().Visible(); });
}

STDMETHODIMP TreeViewObject::put_Visible(VARIANT_BOOL value)
{
    return Member([&] { Tree().SetVisible(value != VARIANT_FALSE); });
}

STDMETHODIMP TreeViewObject::get_Indentation(FLOAT* value)
{
    return Get(value, [&] { return Owner().UnitsOf({static_cast<int>(Ask(Tree(), TVM_GETINDENT, 0)), 0}).x; });
}

STDMETHODIMP TreeViewObject::put_Indentation(FLOAT value)
{
    return Member([&] { Ask(Tree(), TVM_SETINDENT, static_cast<WPARAM>(Owner().PixelsOf({value, 0}).x)); });
}

}  // namespace sylvex
