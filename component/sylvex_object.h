#pragma once

#include <functional>

#include "component/border/dispatch.h"
#include "component/border/values.h"
#include "component/container/control_core.h"
#include "component/container/ole_parts.h"

#include "SylvexControl_h.h"

namespace sylvex {

/// Creates the control's object and queries it for `id`. With an `outer` object, `id` must be IUnknown's and the result
/// is the identity that `outer` keeps to itself.
HRESULT CreateSylvexObject(IUnknown* outer, REFIID id, void** object) noexcept;

#define SETTING(name, type, missing) SETTING_MEMBERS(name, type)

/// The object of the class Sylvex: the members of its interface, the events (ConnectionPointsPart), and what a
/// container needs (OleParts), all on one ControlCore. It runs on the thread that made it.
class SylvexObject final : public AggregableObject<Dispatch<::_Sylvex>, ClassInfoWithEvents<::Sylvex, ::__Sylvex>,
                                                   ConnectionPointsPart, OleParts> {
public:
    /// Throws what the control's creation throws.
    explicit SylvexObject(IUnknown* outer) : AggregableObject(outer), m_core(*Outer()) {}

    // The properties of plain values, and the settings of the tree
    STDMETHODIMP get_hWnd(LONG* value) override { return Get(value, &Sylvex::hWnd); }
    STDMETHODIMP put_hWnd(LONG value) override { return Let(value, &Sylvex::LethWnd); }
    STDMETHODIMP get_PathSeparator(BSTR* value) override { return Get(value, &Sylvex::PathSeparator); }
    STDMETHODIMP put_PathSeparator(BSTR value) override { return Let(value, &Sylvex::LetPathSeparator); }
    STDMETHODIMP get_FileFilter(BSTR* value) override { return Get(value, &Sylvex::FileFilter); }
    STDMETHODIMP put_FileFilter(BSTR value) override { return Let(value, &Sylvex::LetFileFilter); }
    STDMETHODIMP get_DragDropEnable(VARIANT_BOOL* value) override { return Get(value, &Sylvex::DragDropEnable); }
    STDMETHODIMP put_DragDropEnable(VARIANT_BOOL value) override { return Let(value, &Sylvex::LetDragDropEnable); }
    STDMETHODIMP get_Path(BSTR* value) override { return Get(value, &Sylvex::Path); }
    STDMETHODIMP put_Path(BSTR value) override { return Let(value, &Sylvex::LetPath); }
    STDMETHODIMP get_RecursiveCheck(VARIANT_BOOL* value) override { return Get(value, &Sylvex::RecursiveCheck); }
    STDMETHODIMP put_RecursiveCheck(VARIANT_BOOL value) override { return Let(value, &Sylvex::LetRecursiveCheck); }
    STDMETHODIMP get_BuildFileListFilter(BSTR* value) override { return Get(value, &Sylvex::BuildFileListFilter); }
    STDMETHODIMP put_BuildFileListFilter(BSTR value) override { return Let(value, &Sylvex::LetBuildFileListFilter); }
#include "control/properties.def"

    // The properties that are objects, or the surface's
    STDMETHODIMP put_ImageList(VARIANT* list) override;
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* font) override;
    STDMETHODIMP get_MouseIcon(IPictureDisp** value) override;
    STDMETHODIMP putref_MouseIcon(IPictureDisp* picture) override;
    STDMETHODIMP get_Picture(IPictureDisp** value) override;
    STDMETHODIMP putref_Picture(IPictureDisp* picture) override;
    STDMETHODIMP get_BackColor(OLE_COLOR* value) override;
    STDMETHODIMP put_BackColor(OLE_COLOR color) override;
    STDMETHODIMP get_SelectedItem(INode** value) override;
    STDMETHODIMP put_SelectedItem(INode* node) override;
    STDMETHODIMP get_TreeView(VARIANT* value) override;
    STDMETHODIMP get_ReqListView(VARIANT* value) override;
    STDMETHODIMP putref_ReqListView(VARIANT list) override;

    // The methods
    STDMETHODIMP Enumerate() override;
    STDMETHODIMP SetNodeVisible() override;
    STDMETHODIMP Clear() override;
    STDMETHODIMP BuildFullPath(INode* nod, BSTR* result) override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP CheckNodeSelective(INode** Node, VARIANT_BOOL* result) override;
    STDMETHODIMP FreezeCtl(VARIANT_BOOL* bFreeze, VARIANT* result) override;
    STDMETHODIMP BuildFileList(INode** pNode, VARIANT_BOOL* RecursiveCall) override;
    STDMETHODIMP SetNode() override;
    STDMETHODIMP SetNodeChecked(VARIANT_BOOL* bState, VARIANT_BOOL* bBuildList) override;
    STDMETHODIMP AssignSysIL(VARIANT_BOOL* result) override;
    STDMETHODIMP CVC(BSTR* ValToConvert, CURRENCY* result) override;
    STDMETHODIMP ReturnFileName(BSTR Arq, BSTR* result) override;

private:
    ~SylvexObject() override = default;

    // ControlPart, for each part that inherits it
    ControlCore& Core() override
    {
        return m_core;
    }
    IUnknown* Identity() override
    {
        return Outer();
    }

    /// Runs a member on the control. The host may let go of the control in an event that the member raises.
    template <class Body>
    HRESULT Member(Body&& body) noexcept
    {
        return Border(Outer(), __uuidof(::_Sylvex), [&] { return body(m_core.Used()); });
    }
    /// Gives what `read`, a member of the control or a function on it, answers.
    template <class Value, class Read>
    HRESULT Get(Value* value, Read&& read) noexcept
    {
        return Member([&](Sylvex& control) { Give(value, [&] { return std::invoke(read, control); }); });
    }
    template <class Value, class Parameter>
    HRESULT Let(Value value, void (Sylvex::*write)(Parameter)) noexcept
    {
        return Member([&](Sylvex& control) { (control.*write)(Given(value)); });
    }
    template <class Value>
    HRESULT GetSetting(TreeSetting setting, Value* value) noexcept
    {
        return Get(value, [&](Sylvex& control) { return SettingOf<Value>(control.Setting(setting)); });
    }
    template <class Value>
    HRESULT LetSetting(TreeSetting setting, Value value) noexcept
    {
        return Member([&](Sylvex& control) { control.LetSetting(setting, Given(value)); });
    }
    /// Writes a property of the surface with the notices that belong to it.
    template <class Write>
    HRESULT LetSurface(Property property, Write&& write) noexcept;
    /// The node behind an argument.
    GivenNode NodeOf(INode* node);
    GivenNode NodeOf(INode** node)
    {
        return NodeOf(node ? *node : nullptr);
    }

    ControlCore m_core;
};

}  // namespace sylvex
