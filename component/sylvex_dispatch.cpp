#include <exception>

#include "component/com/object_ref.h"
#include "component/com/reported_value.h"
#include "component/com/values.h"
#include "component/objects/late_bound_list.h"
#include "component/sylvex_object.h"

namespace sylvex {

namespace {

constexpr DISPID kPicture = 0x68030008;
constexpr DISPID kBackColor = 0x68030006;

/// A Boolean argument by reference; one that was left out is false.
bool IsSet(const VARIANT_BOOL* argument)
{
    return argument && *argument != VARIANT_FALSE;
}

}  // namespace

template <class Body>
HRESULT SylvexObject::Member(Body&& body) noexcept
{
    return Border(Outer(), __uuidof(::_Sylvex), [&] { return body(m_core.Used()); });
}

template <class Read>
HRESULT SylvexObject::GetText(BSTR* value, Read&& read) noexcept
{
    return Member([&](Sylvex& control) { Checked(value) = nullptr, *value = TextOf(read(control)); });
}

template <class Read>
HRESULT SylvexObject::GetFlag(VARIANT_BOOL* value, Read&& read) noexcept
{
    return Member([&](Sylvex& control) { Checked(value) = BoolOf(read(control)); });
}

template <class Value>
HRESULT SylvexObject::GetSetting(TreeSetting setting, Value* value) noexcept
{
    return Member([&](Sylvex& control) { Checked(value) = static_cast<Value>(control.Setting(setting)); });
}

HRESULT SylvexObject::LetSetting(TreeSetting setting, int value) noexcept
{
    return Member([&](Sylvex& control) { control.LetSetting(setting, value); });
}

HRESULT SylvexObject::GetFlagSetting(TreeSetting setting, VARIANT_BOOL* value) noexcept
{
    return GetFlag(value, [&](Sylvex& control) { return control.Setting(setting) != 0; });
}

HRESULT SylvexObject::LetFlagSetting(TreeSetting setting, VARIANT_BOOL value) noexcept
{
    return LetSetting(setting, value != VARIANT_FALSE ? 1 : 0);
}

template <class Write>
HRESULT SylvexObject::LetSurface(DISPID property, Write&& write) noexcept
{
    return Member([&](Sylvex&) {
        if (!m_core.MayChange(property)) return;
        write();
        m_core.Notify(property);
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
    return GetText(result, [&](Sylvex& control) { return control.BuildFullPath(NodeOf(nod)); });
}

STDMETHODIMP SylvexObject::get_hWnd(LONG* value)
{
    return Member([&](Sylvex& control) { Checked(value) = LongOf(control.hWnd()); });
}

STDMETHODIMP SylvexObject::put_hWnd(LONG New_hWnd)
{
    return Member([&](Sylvex& control) { control.LethWnd(New_hWnd); });
}

STDMETHODIMP SylvexObject::get_Appearance(AppearanceConstants* value)
{
    return GetSetting(TreeSetting::Appearance, value);
}

STDMETHODIMP SylvexObject::put_Appearance(AppearanceConstants New_Appearance)
{
    return LetSetting(TreeSetting::Appearance, New_Appearance);
}

STDMETHODIMP SylvexObject::get_BorderStyle(BorderLineStyle* value)
{
    return GetSetting(TreeSetting::BorderStyle, value);
}

STDMETHODIMP SylvexObject::put_BorderStyle(BorderLineStyle New_BorderStyle)
{
    return LetSetting(TreeSetting::BorderStyle, New_BorderStyle);
}

STDMETHODIMP SylvexObject::get_Checkboxes(VARIANT_BOOL* value)
{
    return GetFlagSetting(TreeSetting::Checkboxes, value);
}

STDMETHODIMP SylvexObject::put_Checkboxes(VARIANT_BOOL New_Checkboxes)
{
    return LetFlagSetting(TreeSetting::Checkboxes, New_Checkboxes);
}

STDMETHODIMP SylvexObject::get_Enabled(VARIANT_BOOL* value)
{
    return GetFlagSetting(TreeSetting::Enabled, value);
}

STDMETHODIMP SylvexObject::put_Enabled(VARIANT_BOOL New_Enabled)
{
    return LetFlagSetting(TreeSetting::Enabled, New_Enabled);
}

STDMETHODIMP SylvexObject::get_Font(IFontDisp** value)
{
    return Member([&](Sylvex& control) {
        Checked(value) = nullptr;
        ComPtr<IFontDisp> font = Behind<IFontDisp>(control.Font());
        if (!font) font = m_core.Font();
        *value = font.Detach();
    });
}

STDMETHODIMP SylvexObject::putref_Font(IFontDisp* New_Font)
{
    return Member([&](Sylvex& control) {
        control.SetFont(ReferTo(Incoming<IFontDisp>(New_Font).Get()));
        m_core.FollowFont();
    });
}

STDMETHODIMP SylvexObject::get_FullRowSelect(VARIANT_BOOL* value)
{
    return GetFlagSetting(TreeSetting::FullRowSelect, value);
}

STDMETHODIMP SylvexObject::put_FullRowSelect(VARIANT_BOOL New_FullRowSelect)
{
    return LetFlagSetting(TreeSetting::FullRowSelect, New_FullRowSelect);
}

STDMETHODIMP SylvexObject::get_HideSelection(VARIANT_BOOL* value)
{
    return GetFlagSetting(TreeSetting::HideSelection, value);
}

STDMETHODIMP SylvexObject::put_HideSelection(VARIANT_BOOL New_HideSelection)
{
    return LetFlagSetting(TreeSetting::HideSelection, New_HideSelection);
}

STDMETHODIMP SylvexObject::get_HotTracking(VARIANT_BOOL* value)
{
    return GetFlagSetting(TreeSetting::HotTracking, value);
}

STDMETHODIMP SylvexObject::put_HotTracking(VARIANT_BOOL New_HotTracking)
{
    return LetFlagSetting(TreeSetting::HotTracking, New_HotTracking);
}

STDMETHODIMP SylvexObject::get_LabelEdit(LabelEditConstants* value)
{
    return GetSetting(TreeSetting::LabelEdit, value);
}

STDMETHODIMP SylvexObject::put_LabelEdit(LabelEditConstants New_LabelEdit)
{
    return LetSetting(TreeSetting::LabelEdit, New_LabelEdit);
}

STDMETHODIMP SylvexObject::get_LineStyle(TreeLineStyleConstants* value)
{
    return GetSetting(TreeSetting::LineStyle, value);
}

STDMETHODIMP SylvexObject::put_LineStyle(TreeLineStyleConstants New_LineStyle)
{
    return LetSetting(TreeSetting::LineStyle, New_LineStyle);
}

STDMETHODIMP SylvexObject::get_MouseIcon(IPictureDisp** value)
{
    return Member([&](Sylvex& control) {
        Checked(value) = nullptr;
        *value = Behind<IPictureDisp>(control.MouseIcon()).Detach();
    });
}

STDMETHODIMP SylvexObject::putref_MouseIcon(IPictureDisp* New_MouseIcon)
{
    return Member([&](Sylvex& control) { control.SetMouseIcon(ReferTo(Incoming<IPictureDisp>(New_MouseIcon).Get())); });
}

STDMETHODIMP SylvexObject::get_MousePointer(MousePointerConstants* value)
{
    return GetSetting(TreeSetting::MousePointer, value);
}

STDMETHODIMP SylvexObject::put_MousePointer(MousePointerConstants New_MousePointer)
{
    return LetSetting(TreeSetting::MousePointer, New_MousePointer);
}

STDMETHODIMP SylvexObject::get_PathSeparator(BSTR* value)
{
    return GetText(value, [](Sylvex& control) { return control.PathSeparator(); });
}

STDMETHODIMP SylvexObject::put_PathSeparator(BSTR New_PathSeparator)
{
    return Member([&](Sylvex& control) { control.LetPathSeparator(std::wstring(ViewOf(New_PathSeparator))); });
}

STDMETHODIMP SylvexObject::get_FileFilter(BSTR* value)
{
    return GetText(value, [](Sylvex& control) { return control.FileFilter(); });
}

STDMETHODIMP SylvexObject::put_FileFilter(BSTR New_FileFilter)
{
    return Member([&](Sylvex& control) { control.LetFileFilter(std::wstring(ViewOf(New_FileFilter))); });
}

STDMETHODIMP SylvexObject::get_Picture(IPictureDisp** value)
{
    return Member([&](Sylvex&) { m_core.Picture().CopyTo(&Checked(value)); });
}

STDMETHODIMP SylvexObject::putref_Picture(IPictureDisp* New_Picture)
{
    return LetSurface(kPicture, [&] { m_core.SetPicture(Incoming<IPictureDisp>(New_Picture).Get()); });
}

STDMETHODIMP SylvexObject::get_DragDropEnable(VARIANT_BOOL* value)
{
    return GetFlag(value, [](Sylvex& control) { return control.DragDropEnable(); });
}

STDMETHODIMP SylvexObject::put_DragDropEnable(VARIANT_BOOL New_DragDropEnable)
{
    return Member([&](Sylvex& control) { control.LetDragDropEnable(New_DragDropEnable != VARIANT_FALSE); });
}

STDMETHODIMP SylvexObject::get_BackColor(OLE_COLOR* value)
{
    return Member([&](Sylvex&) { Checked(value) = m_core.BackColor(); });
}

STDMETHODIMP SylvexObject::put_BackColor(OLE_COLOR New_BackColor)
{
    return LetSurface(kBackColor, [&] { m_core.SetBackColor(New_BackColor); });
}

STDMETHODIMP SylvexObject::get_Path(BSTR* value)
{
    return GetText(value, [](Sylvex& control) { return control.Path(); });
}

STDMETHODIMP SylvexObject::put_Path(BSTR New_Path)
{
    return Member([&](Sylvex& control) { control.LetPath(std::wstring(ViewOf(New_Path))); });
}

STDMETHODIMP SylvexObject::Refresh()
{
    return Member([](Sylvex& control) { control.Refresh(); });
}

STDMETHODIMP SylvexObject::get_SelectedItem(INode** value)
{
    return Member([&](Sylvex& control) {
        Checked(value) = nullptr;
        *value = m_core.Objects().ObjectOf(control.SelectedItem()).Detach();
    });
}

STDMETHODIMP SylvexObject::put_SelectedItem(INode* New_SelectedItem)
{
    return Member([&](Sylvex& control) { control.LetSelectedItem(NodeOf(New_SelectedItem)); });
}

STDMETHODIMP SylvexObject::get_TreeView(VARIANT* value)
{
    return Member([&](Sylvex&) {
        VariantInit(&Checked(value));
        *value = Variant(m_core.Objects().TreeObject().Get()).Detach();
    });
}

STDMETHODIMP SylvexObject::get_RecursiveCheck(VARIANT_BOOL* value)
{
    return GetFlag(value, [](Sylvex& control) { return control.RecursiveCheck(); });
}

STDMETHODIMP SylvexObject::put_RecursiveCheck(VARIANT_BOOL New_RecursiveCheck)
{
    return Member([&](Sylvex& control) { control.LetRecursiveCheck(New_RecursiveCheck != VARIANT_FALSE); });
}

STDMETHODIMP SylvexObject::get_ReqListView(VARIANT* value)
{
    return Member([&](Sylvex& control) {
        VariantInit(&Checked(value));
        *value = VariantFromListView(control.ReqListView()).Detach();
    });
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
    return GetFlag(result, [&](Sylvex& control) { return control.CheckNodeSelective(NodeOf(Node)); });
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
    return GetFlag(result, [](Sylvex& control) { return control.AssignSysIL(); });
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
    return GetText(result, [&](Sylvex& control) { return control.ReturnFileName(std::wstring(ViewOf(Arq))); });
}

STDMETHODIMP SylvexObject::get_BuildFileListFilter(BSTR* value)
{
    return GetText(value, [](Sylvex& control) { return control.BuildFileListFilter(); });
}

STDMETHODIMP SylvexObject::put_BuildFileListFilter(BSTR New_BuildFileListFilter)
{
    return Member(
        [&](Sylvex& control) { control.LetBuildFileListFilter(std::wstring(ViewOf(New_BuildFileListFilter))); });
}

}  // namespace sylvex
