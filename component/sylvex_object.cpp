#include "component/sylvex_object.h"

#include "component/object.h"

#include "SylvexControl_h.h"

namespace sylvex {

namespace {

class SylvexObject final
    : public AggregableObject<Dispatch<::_Sylvex>, ClassInfoWithEvents<::Sylvex, ::__Sylvex>> {
public:
    using AggregableObject::AggregableObject;

    STDMETHODIMP Enumerate() override { return Absent(); }
    STDMETHODIMP SetNodeVisible() override { return Absent(); }
    STDMETHODIMP put_ImageList(VARIANT*) override { return Absent(); }
    STDMETHODIMP Clear() override { return Absent(); }
    STDMETHODIMP BuildFullPath(INode*, BSTR*) override { return Absent(); }
    STDMETHODIMP get_hWnd(LONG*) override { return Absent(); }
    STDMETHODIMP put_hWnd(LONG) override { return Absent(); }
    STDMETHODIMP get_Appearance(AppearanceConstants*) override { return Absent(); }
    STDMETHODIMP put_Appearance(AppearanceConstants) override { return Absent(); }
    STDMETHODIMP get_BorderStyle(BorderLineStyle*) override { return Absent(); }
    STDMETHODIMP put_BorderStyle(BorderLineStyle) override { return Absent(); }
    STDMETHODIMP get_Checkboxes(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_Checkboxes(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_Enabled(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_Enabled(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_Font(IFontDisp**) override { return Absent(); }
    STDMETHODIMP putref_Font(IFontDisp*) override { return Absent(); }
    STDMETHODIMP get_FullRowSelect(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_FullRowSelect(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_HideSelection(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_HideSelection(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_HotTracking(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_HotTracking(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_LabelEdit(LabelEditConstants*) override { return Absent(); }
    STDMETHODIMP put_LabelEdit(LabelEditConstants) override { return Absent(); }
    STDMETHODIMP get_LineStyle(TreeLineStyleConstants*) override { return Absent(); }
    STDMETHODIMP put_LineStyle(TreeLineStyleConstants) override { return Absent(); }
    STDMETHODIMP get_MouseIcon(IPictureDisp**) override { return Absent(); }
    STDMETHODIMP putref_MouseIcon(IPictureDisp*) override { return Absent(); }
    STDMETHODIMP get_MousePointer(MousePointerConstants*) override { return Absent(); }
    STDMETHODIMP put_MousePointer(MousePointerConstants) override { return Absent(); }
    STDMETHODIMP get_PathSeparator(BSTR*) override { return Absent(); }
    STDMETHODIMP put_PathSeparator(BSTR) override { return Absent(); }
    STDMETHODIMP get_FileFilter(BSTR*) override { return Absent(); }
    STDMETHODIMP put_FileFilter(BSTR) override { return Absent(); }
    STDMETHODIMP get_Picture(IPictureDisp**) override { return Absent(); }
    STDMETHODIMP putref_Picture(IPictureDisp*) override { return Absent(); }
    STDMETHODIMP get_DragDropEnable(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_DragDropEnable(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_BackColor(OLE_COLOR*) override { return Absent(); }
    STDMETHODIMP put_BackColor(OLE_COLOR) override { return Absent(); }
    STDMETHODIMP get_Path(BSTR*) override { return Absent(); }
    STDMETHODIMP put_Path(BSTR) override { return Absent(); }
    STDMETHODIMP Refresh() override { return Absent(); }
    STDMETHODIMP get_SelectedItem(INode**) override { return Absent(); }
    STDMETHODIMP put_SelectedItem(INode*) override { return Absent(); }
    STDMETHODIMP get_TreeView(VARIANT*) override { return Absent(); }
    STDMETHODIMP get_RecursiveCheck(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP put_RecursiveCheck(VARIANT_BOOL) override { return Absent(); }
    STDMETHODIMP get_ReqListView(VARIANT*) override { return Absent(); }
    STDMETHODIMP putref_ReqListView(VARIANT) override { return Absent(); }
    STDMETHODIMP CheckNodeSelective(INode**, VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP FreezeCtl(VARIANT_BOOL*, VARIANT*) override { return Absent(); }
    STDMETHODIMP BuildFileList(INode**, VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP SetNode() override { return Absent(); }
    STDMETHODIMP SetNodeChecked(VARIANT_BOOL*, VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP AssignSysIL(VARIANT_BOOL*) override { return Absent(); }
    STDMETHODIMP CVC(BSTR*, CURRENCY*) override { return Absent(); }
    STDMETHODIMP ReturnFileName(BSTR, BSTR*) override { return Absent(); }
    STDMETHODIMP get_BuildFileListFilter(BSTR*) override { return Absent(); }
    STDMETHODIMP put_BuildFileListFilter(BSTR) override { return Absent(); }

private:
    static HRESULT Absent() { return NotImplemented(__uuidof(::_Sylvex)); }
};

}  // namespace

HRESULT CreateSylvexObject(IUnknown* outer, REFIID id, void** object) noexcept
{
    return Border(IID_IClassFactory, [&] { return MakeInner<SylvexObject>(outer)->QueryInterface(id, object); });
}

}  // namespace sylvex
