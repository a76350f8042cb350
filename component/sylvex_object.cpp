#include <exception>

#include "component/border/object_ref.h"
#include "component/border/reported_value.h"
#include "component/border/values.h"
#include "component/objects/late_bound_list.h"
#include "component/sylvex_object.h"

namespace sylvex {

HRESULT CreateSylvexObject(IUnknown* outer, REFIID id, void** object) noexcept
{
    return Border(IID_IClassFactory, [&] { return MakeInner<SylvexObject>(outer)->QueryInterface(id, object); });
}

namespace {

/// A Boolean argument by reference; one that was left out is false.
bool IsSet(const VARIANT_BOOL* argument)
{
    return argument && *argument != VARIANT_FALSE;
}

}  // namespace

template <class Write>
HRESULT SylvexObject::LetSurface(Property property, Write&& write) noexcept
{
    return Member([&](Sylvex&) {
        if (!m_core.MayChange(property)) return;
        write();
        m_core.PropertyChanged(property);
    });
}

GivenNode SylvexObject::NodeOf(INode* node)
{
    try {
        return m_core.Objects().NodeOf(node);
    } catch (...) {
        return GivenNode(std::current_exception());
    }
}

STDMETHODIMP SylvexObject::Enumerate()
{
    return Member([](Sylvex& control) { control.Enumerate(); });
}

STDMETHODIMP SylvexObject::SetNodeVisible()
{
    return Member([](Sylvex& control) { control.SetNodeVisible(); });
}

STDMETHODIMP SylvexObject::put_ImageList(VARIANT* New_ImageList)
{
    return Member([&](Sylvex& control) {
        // The tree shows the present one until it has the new one.
        const Variant before(m_core.Objects().ImageList());
        control.LetImageList(
            ReportedConversion(control.State(), L"ImageList", "New_ImageList", Checked(New_ImageList),
                               [&](const VARIANT& list) { return m_core.Objects().TakeImageList(list); }));
    });
}

STDMETHODIMP SylvexObject::Clear()
{
    return Member([](Sylvex& control) { control.Clear(); });
}

STDMETHODIMP SylvexObject::BuildFullPath(INode* nod, BSTR* result)
{
    return Get(result, [&](Sylvex& control) { return control.BuildFullPath(NodeOf(nod)); });
}

STDMETHODIMP SylvexObject::get_Font(IFontDisp** value)
{
    return Get(value, [&](Sylvex& control) {
        const auto font = Behind<IFontDisp>(control.Font());
        return font ? font : m_core.Font();
    });
}

STDMETHODIMP SylvexObject::putref_Font(IFontDisp* New_Font)
{
    return Member([&](Sylvex& control) {
        control.SetFont(ReferTo(Incoming<IFontDisp>(New_Font).Get()));
        m_core.FollowFont();
    });
}

STDMETHODIMP SylvexObject::get_MouseIcon(IPictureDisp** value)
{
    return Get(value, [](Sylvex& control) { return Behind<IPictureDisp>(control.MouseIcon()); });
}

STDMETHODIMP SylvexObject::putref_MouseIcon(IPictureDisp* New_MouseIcon)
{
    return Member([&](Sylvex& control) { control.SetMouseIcon(ReferTo(Incoming<IPictureDisp>(New_MouseIcon).Get())); });
}

STDMETHODIMP SylvexObject::get_Picture(IPictureDisp** value)
{
    return Get(value, [&](Sylvex&) { return m_core.Picture(); });
}

STDMETHODIMP SylvexObject::putref_Picture(IPictureDisp* New_Picture)
{
    return LetSurface(Property::Picture, [&] { m_core.SetPicture(Incoming<IPictureDisp>(New_Picture).Get()); });
}

STDMETHODIMP SylvexObject::get_BackColor(OLE_COLOR* value)
{
    return Get(value, [&](Sylvex&) { return m_core.BackColor(); });
}

STDMETHODIMP SylvexObject::put_BackColor(OLE_COLOR New_BackColor)
{
    return LetSurface(Property::BackColor, [&] { m_core.SetBackColor(New_BackColor); });
}

STDMETHODIMP SylvexObject::Refresh()
{
    return Member([](Sylvex& control) { control.Refresh(); });
}

STDMETHODIMP SylvexObject::get_SelectedItem(INode** value)
{
    return Get(value, [&](Sylvex& control) { return m_core.Objects().ObjectOf(control.SelectedItem()); });
}

STDMETHODIMP SylvexObject::put_SelectedItem(INode* New_SelectedItem)
{
    return Member([&](Sylvex& control) { control.LetSelectedItem(NodeOf(New_SelectedItem)); });
}

STDMETHODIMP SylvexObject::get_TreeView(VARIANT* value)
{
    return Get(value, [&](Sylvex&) { return Variant(m_core.Objects().TreeObject().Get()); });
}

STDMETHODIMP SylvexObject::get_ReqListView(VARIANT* value)
{
    return Get(value, [](Sylvex& control) { return VariantFromListView(control.ReqListView()); });
}

STDMETHODIMP SylvexObject::putref_ReqListView(VARIANT New_ReqListView)
{
    return Member([&](Sylvex& control) {
        control.SetReqListView(
            Converted(control.State(), L"ReqListView", "New_ReqListView", New_ReqListView,
                      [&](const VARIANT& list) { return ListViewFromVariant(m_core.Services(), list); }));
    });
}

STDMETHODIMP SylvexObject::CheckNodeSelective(INode** Node, VARIANT_BOOL* result)
{
    return Get(result, [&](Sylvex& control) { return control.CheckNodeSelective(NodeOf(Node)); });
}

STDMETHODIMP SylvexObject::FreezeCtl(VARIANT_BOOL* bFreeze, VARIANT* result)
{
    return Member([&](Sylvex& control) {
        VariantInit(&Checked(result));
        control.FreezeCtl(IsSet(bFreeze));
    });
}

STDMETHODIMP SylvexObject::BuildFileList(INode** pNode, VARIANT_BOOL* RecursiveCall)
{
    return Member([&](Sylvex& control) { control.BuildFileList(NodeOf(pNode), IsSet(RecursiveCall)); });
}

STDMETHODIMP SylvexObject::SetNode()
{
    return Member([](Sylvex& control) { control.SetNode(); });
}

STDMETHODIMP SylvexObject::SetNodeChecked(VARIANT_BOOL* bState, VARIANT_BOOL* bBuildList)
{
    return Member([&](Sylvex& control) { control.SetNodeChecked(IsSet(bState), IsSet(bBuildList)); });
}

STDMETHODIMP SylvexObject::AssignSysIL(VARIANT_BOOL* result)
{
    return Get(result, [](Sylvex& control) { return control.AssignSysIL(); });
}

STDMETHODIMP SylvexObject::CVC(BSTR* ValToConvert, CURRENCY* result)
{
    return Member([&](Sylvex& control) {
        const std::wstring text(ValToConvert ? ViewOf(*ValToConvert) : std::wstring_view());
        Checked(result).int64 = control.CVC(text).units;
    });
}

STDMETHODIMP SylvexObject::ReturnFileName(BSTR Arq, BSTR* result)
{
    return Get(result, [&](Sylvex& control) { return control.ReturnFileName(std::wstring(ViewOf(Arq))); });
}

}  // namespace sylvex
