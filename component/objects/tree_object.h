#pragma once

#include "component/objects/tree_objects.h"

namespace sylvex {

/// The automation object of a tree view.
class TreeViewObject final : public TreeMember<ITreeView, ::TreeView> {
public:
    explicit TreeViewObject(std::shared_ptr<TreeLink> link) : TreeMember(std::move(link)) {}

    STDMETHODIMP get_Nodes(INodes** value) override;
    STDMETHODIMP get_SelectedItem(INode** value) override;
    STDMETHODIMP putref_SelectedItem(INode* value) override;
    STDMETHODIMP get_DropHighlight(INode** value) override;
    STDMETHODIMP putref_DropHighlight(INode* value) override;
    STDMETHODIMP HitTest(FLOAT x, FLOAT y, INode** result) override;
    STDMETHODIMP StartLabelEdit() override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP get_hWnd(LONG* value) override;
    STDMETHODIMP get_Appearance(AppearanceConstants* value) override;
    STDMETHODIMP put_Appearance(AppearanceConstants value) override;
    STDMETHODIMP get_BorderStyle(BorderLineStyle* value) override;
    STDMETHODIMP put_BorderStyle(BorderLineStyle value) override;
    STDMETHODIMP get_Checkboxes(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Checkboxes(VARIANT_BOOL value) override;
    STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Enabled(VARIANT_BOOL value) override;
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* value) override;
    STDMETHODIMP get_FullRowSelect(VARIANT_BOOL* value) override;
    STDMETHODIMP put_FullRowSelect(VARIANT_BOOL value) override;
    STDMETHODIMP get_HideSelection(VARIANT_BOOL* value) override;
    STDMETHODIMP put_HideSelection(VARIANT_BOOL value) override;
    STDMETHODIMP get_HotTracking(VARIANT_BOOL* value) override;
    STDMETHODIMP put_HotTracking(VARIANT_BOOL value) override;
    STDMETHODIMP get_LabelEdit(LabelEditConstants* value) override;
    STDMETHODIMP put_LabelEdit(LabelEditConstants value) override;
    STDMETHODIMP get_LineStyle(TreeLineStyleConstants* value) override;
    STDMETHODIMP put_LineStyle(TreeLineStyleConstants value) override;
    STDMETHODIMP get_MousePointer(MousePointerConstants* value) override;
    STDMETHODIMP put_MousePointer(MousePointerConstants value) override;
    STDMETHODIMP get_MouseIcon(IPictureDisp** value) override;
    STDMETHODIMP putref_MouseIcon(IPictureDisp* value) override;
    STDMETHODIMP get_PathSeparator(BSTR* value) override;
    STDMETHODIMP put_PathSeparator(BSTR value) override;
    STDMETHODIMP get_Sorted(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Sorted(VARIANT_BOOL value) override;
    STDMETHODIMP get_ImageList(VARIANT* value) override;
    STDMETHODIMP putref_ImageList(VARIANT value) override;
    STDMETHODIMP GetVisibleCount(LONG* result) override;
    STDMETHODIMP get_Visible(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Visible(VARIANT_BOOL value) override;
    STDMETHODIMP get_Indentation(FLOAT* value) override;
    STDMETHODIMP put_Indentation(FLOAT value) override;

private:
    template <class Value>
    HRESULT Get(TreeSetting setting, Value* value);
    HRESULT Let(TreeSetting setting, int value);
    HRESULT GetFlag(TreeSetting setting, VARIANT_BOOL* value);
    HRESULT LetFlag(TreeSetting setting, VARIANT_BOOL value);
};

}  // namespace sylvex
