#pragma once

#include "component/com/object.h"
#include "component/container/control_core.h"
#include "component/container/ole_parts.h"

#include "SylvexControl_h.h"

namespace sylvex {

/// Creates the control's object and queries it for `id`. With an `outer` object, `id` must be IUnknown's and the result
/// is the identity that `outer` keeps to itself.
HRESULT CreateSylvexObject(IUnknown* outer, REFIID id, void** object) noexcept;

/// The object of the class Sylvex: the members of its interface, the events (ConnectionPointsPart), and what a
/// container needs (OleParts), all on one ControlCore. It runs on the thread that made it.
class SylvexObject final : public AggregableObject<Dispatch<::_Sylvex>, ClassInfoWithEvents<::Sylvex, ::__Sylvex>,
                                                   ConnectionPointsPart, OleParts> {
public:
    /// Throws what the control's creation throws.
    explicit SylvexObject(IUnknown* outer) : AggregableObject(outer), m_core(*Outer()) {}

    STDMETHODIMP Enumerate() override;
    STDMETHODIMP SetNodeVisible() override;
    STDMETHODIMP put_ImageList(VARIANT* New_ImageList) override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP BuildFullPath(INode* nod, BSTR* result) override;
    STDMETHODIMP get_hWnd(LONG* value) override;
    STDMETHODIMP put_hWnd(LONG New_hWnd) override;
    STDMETHODIMP get_Appearance(AppearanceConstants* value) override;
    STDMETHODIMP put_Appearance(AppearanceConstants New_Appearance) override;
    STDMETHODIMP get_BorderStyle(BorderLineStyle* value) override;
    STDMETHODIMP put_BorderStyle(BorderLineStyle New_BorderStyle) override;
    STDMETHODIMP get_Checkboxes(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Checkboxes(VARIANT_BOOL New_Checkboxes) override;
    STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Enabled(VARIANT_BOOL New_Enabled) override;
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* New_Font) override;
    STDMETHODIMP get_FullRowSelect(VARIANT_BOOL* value) override;
    STDMETHODIMP put_FullRowSelect(VARIANT_BOOL New_FullRowSelect) override;
    STDMETHODIMP get_HideSelection(VARIANT_BOOL* value) override;
    STDMETHODIMP put_HideSelection(VARIANT_BOOL New_HideSelection) override;
    STDMETHODIMP get_HotTracking(VARIANT_BOOL* value) override;
    STDMETHODIMP put_HotTracking(VARIANT_BOOL New_HotTracking) override;
    STDMETHODIMP get_LabelEdit(LabelEditConstants* value) override;
    STDMETHODIMP put_LabelEdit(LabelEditConstants New_LabelEdit) override;
    STDMETHODIMP get_LineStyle(TreeLineStyleConstants* value) override;
    STDMETHODIMP put_LineStyle(TreeLineStyleConstants New_LineStyle) override;
    STDMETHODIMP get_MouseIcon(IPictureDisp** value) override;
    STDMETHODIMP putref_MouseIcon(IPictureDisp* New_MouseIcon) override;
    STDMETHODIMP get_MousePointer(MousePointerConstants* value) override;
    STDMETHODIMP put_MousePointer(MousePointerConstants New_MousePointer) override;
    STDMETHODIMP get_PathSeparator(BSTR* value) override;
    STDMETHODIMP put_PathSeparator(BSTR New_PathSeparator) override;
    STDMETHODIMP get_FileFilter(BSTR* value) override;
    STDMETHODIMP put_FileFilter(BSTR New_FileFilter) override;
    STDMETHODIMP get_Picture(IPictureDisp** value) override;
    STDMETHODIMP putref_Picture(IPictureDisp* New_Picture) override;
    STDMETHODIMP get_DragDropEnable(VARIANT_BOOL* value) override;
    STDMETHODIMP put_DragDropEnable(VARIANT_BOOL New_DragDropEnable) override;
    STDMETHODIMP get_BackColor(OLE_COLOR* value) override;
    STDMETHODIMP put_BackColor(OLE_COLOR New_BackColor) override;
    STDMETHODIMP get_Path(BSTR* value) override;
    STDMETHODIMP put_Path(BSTR New_Path) override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP get_SelectedItem(INode** value) override;
    STDMETHODIMP put_SelectedItem(INode* New_SelectedItem) override;
    STDMETHODIMP get_TreeView(VARIANT* value) override;
    STDMETHODIMP get_RecursiveCheck(VARIANT_BOOL* value) override;
    STDMETHODIMP put_RecursiveCheck(VARIANT_BOOL New_RecursiveCheck) override;
    STDMETHODIMP get_ReqListView(VARIANT* value) override;
    STDMETHODIMP putref_ReqListView(VARIANT New_ReqListView) override;
    STDMETHODIMP CheckNodeSelective(INode** Node, VARIANT_BOOL* result) override;
    STDMETHODIMP FreezeCtl(VARIANT_BOOL* bFreeze, VARIANT* result) override;
    STDMETHODIMP BuildFileList(INode** pNode, VARIANT_BOOL* RecursiveCall) override;
    STDMETHODIMP SetNode() override;
    STDMETHODIMP SetNodeChecked(VARIANT_BOOL* bState, VARIANT_BOOL* bBuildList) override;
    STDMETHODIMP AssignSysIL(VARIANT_BOOL* result) override;
    STDMETHODIMP CVC(BSTR* ValToConvert, CURRENCY* result) override;
    STDMETHODIMP ReturnFileName(BSTR Arq, BSTR* result) override;
    STDMETHODIMP get_BuildFileListFilter(BSTR* value) override;
    STDMETHODIMP put_BuildFileListFilter(BSTR New_BuildFileListFilter) override;

private:
    ~SylvexObject() override = default;

    // ControlPart, for each part that inherits it
    ControlCore& Core() override { return m_core; }
    IUnknown* Identity() override { return Outer(); }

    /// Runs a member on the control. The host may let go of the control in an event that the member raises.
    template <class Body>
    HRESULT Member(Body&& body) noexcept;
    template <class Read>
    HRESULT GetText(BSTR* value, Read&& read) noexcept;
    template <class Read>
    HRESULT GetFlag(VARIANT_BOOL* value, Read&& read) noexcept;
    template <class Value>
    HRESULT GetSetting(TreeSetting setting, Value* value) noexcept;
    HRESULT LetSetting(TreeSetting setting, int value) noexcept;
    HRESULT GetFlagSetting(TreeSetting setting, VARIANT_BOOL* value) noexcept;
    HRESULT LetFlagSetting(TreeSetting setting, VARIANT_BOOL value) noexcept;
    /// Writes a property of the surface with the notices that belong to it.
    template <class Write>
    HRESULT LetSurface(DISPID property, Write&& write) noexcept;
    /// The node behind an argument.
    GivenNode NodeOf(INode* node);
    GivenNode NodeOf(INode** node) { return NodeOf(node ? *node : nullptr); }

    ControlCore m_core;
};

}  // namespace sylvex
