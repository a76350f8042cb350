#pragma once

#include "component/objects/tree_objects.h"

namespace sylvex {

#define SETTING(name, type, missing) SETTING_MEMBERS(name, type)

/// The automation object of a tree view.
class TreeViewObject final : public TreeMember<ITreeView, ::TreeView> {
public:
    explicit TreeViewObject(std::shared_ptr<TreeLink> link) : TreeMember(std::move(link)) {}

#include "control/properties.def"

    STDMETHODIMP get_Nodes(INodes** value) override;
    STDMETHODIMP get_SelectedItem(INode** value) override;
    STDMETHODIMP putref_SelectedItem(INode* value) override;
    STDMETHODIMP get_DropHighlight(INode** value) override;
    STDMETHODIMP putref_DropHighlight(INode* value) override;
    STDMETHODIMP HitTest(FLOAT x, FLOAT y, INode** result) override;
    STDMETHODIMP StartLabelEdit() override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP get_hWnd(LONG* value) override;
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* value) override;
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
    HRESULT GetSetting(TreeSetting setting, Value* value)
    {
        return Get(value, [&] { return SettingOf<Value>(Tree().Setting(setting)); });
    }
    template <class Value>
    HRESULT LetSetting(TreeSetting setting, Value value)
    {
        return Member([&] { Tree().SetSetting(setting, Given(value)); });
    }
};

}  // namespace sylvex
