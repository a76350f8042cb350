#include "component/container/property_table.h"

#include <limits>

#include "component/com/fonts.h"
#include "component/com/object_ref.h"
#include "component/container/ambient.h"
#include "component/container/property_values.h"

namespace sylvex {

namespace {

constexpr OLE_COLOR kButtonFace = 0x8000000F;

template <short value>
Variant Short(ControlCore&)
{
    return ShortValue(value);
}

template <bool value>
Variant Flag(ControlCore&)
{
    return Variant(value);
}

Variant NoObject(ControlCore&)
{
    return ObjectValue(nullptr);
}

Variant NoText(ControlCore&)
{
    return Variant(std::wstring_view());
}

Variant Backslash(ControlCore&)
{
    return Variant(std::wstring_view(L"\\"));
}

Variant AmbientFontValue(ControlCore& core)
{
    return ObjectValue(CopyOfAmbientFont(core).Get());
}

Variant ButtonFace(ControlCore&)
{
    return Variant(static_cast<long>(kButtonFace));
}

template <TreeSetting setting>
Variant GetNumber(ControlCore& core)
{
    return ShortValue(core.Control().Tree().Setting(setting));
}

template <TreeSetting setting>
void SetNumber(ControlCore& core, const VARIANT& value)
{
    core.Control().Tree().SetSetting(setting, NumberIn(value));
}

template <TreeSetting setting>
Variant GetFlag(ControlCore& core)
{
    return Variant(core.Control().Tree().Setting(setting) != 0);
}

template <TreeSetting setting>
void SetFlag(ControlCore& core, const VARIANT& value)
{
    core.Control().Tree().SetSetting(setting, FlagIn(value) ? 1 : 0);
}

template <auto part, auto variable>
Variant GetBoolean(ControlCore& core)
{
    return Variant((core.Control().State().*part).*variable);
}

Variant GetWindowNumber(ControlCore& core)
{
    return ValueOf(core.Control().State().m_hWnd);
}

void SetWindowNumber(ControlCore& core, const VARIANT& value)
{
    core.Control().State().m_hWnd = NumberIn(value);
}

Variant GetFileFilter(ControlCore& core)
{
    return ValueOf(core.Control().State().tree.m_FileFilter);
}

void SetFileFilter(ControlCore& core, const VARIANT& value)
{
    core.Control().State().tree.m_FileFilter = TextIn(value);
}

template <auto part, auto variable>
void SetBoolean(ControlCore& core, const VARIANT& value)
{
    (core.Control().State().*part).*variable = FlagIn(value);
}

Variant GetFont(ControlCore& core)
{
    return ObjectValue(core.Font().Get());
}

void SetFont(ControlCore& core, const VARIANT& value)
{
    const ComPtr<IFontDisp> font = Limited(ObjectIn<IFontDisp>(value));
    core.SetFont(font ? font.Get() : CopyOfAmbientFont(core).Get());
}

Variant GetMouseIcon(ControlCore& core)
{
    return ObjectValue(ObjectBehind(core.Control().Tree().MouseIcon()).Get());
}

void SetMouseIcon(ControlCore& core, const VARIANT& value)
{
    core.Control().Tree().SetMouseIcon(ReferTo(ObjectIn<IPictureDisp>(value).Get()));
}

Variant GetPathSeparator(ControlCore& core)
{
    return Variant(std::wstring_view(core.Control().Tree().GetNodes().PathSeparator()));
}

void SetPathSeparator(ControlCore& core, const VARIANT& value)
{
    core.Control().Tree().GetNodes().SetPathSeparator(TextIn(value));
}

Variant GetPicture(ControlCore& core)
{
    return ObjectValue(core.Picture().Get());
}

void SetPicture(ControlCore& core, const VARIANT& value)
{
    core.SetPicture(ObjectIn<IPictureDisp>(value).Get());
}

Variant GetBackColor(ControlCore& core)
{
    return Variant(static_cast<long>(core.BackColor()));
}

void SetBackColor(ControlCore& core, const VARIANT& value)
{
    core.SetBackColor(static_cast<OLE_COLOR>(NumberIn(value)));
}

#define SETTING(name, kind) Get##kind<TreeSetting::name>, Set##kind<TreeSetting::name>
#define VARIABLE(part, name)                                              \
    GetBoolean<&ControlState::part, &decltype(ControlState::part)::name>, \
        SetBoolean<&ControlState::part, &decltype(ControlState::part)::name>

constexpr std::array<SavedProperty, kSavedPropertyCount> kProperties{{
    {L"hWnd", VT_I2, Short<0>, GetWindowNumber, SetWindowNumber},
    {L"Appearance", VT_I2, Short<1>, SETTING(Appearance, Number)},
    {L"BorderStyle", VT_I2, Short<0>, SETTING(BorderStyle, Number)},
    {L"Checkboxes", VT_BOOL, Flag<false>, SETTING(Checkboxes, Flag)},
    {L"Enabled", VT_BOOL, Flag<true>, SETTING(Enabled, Flag)},
    {L"Font", VT_UNKNOWN, AmbientFontValue, GetFont, SetFont, SavedKind::Font},
    {L"FullRowSelect", VT_BOOL, Flag<false>, SETTING(FullRowSelect, Flag)},
    {L"HideSelection", VT_BOOL, Flag<true>, SETTING(HideSelection, Flag)},
    {L"HotTracking", VT_BOOL, Flag<false>, SETTING(HotTracking, Flag)},
    {L"LabelEdit", VT_I2, Short<1>, SETTING(LabelEdit, Number)},
    {L"LineStyle", VT_I2, Short<1>, SETTING(LineStyle, Number)},
    {L"MouseIcon", VT_UNKNOWN, NoObject, GetMouseIcon, SetMouseIcon, SavedKind::Picture},
    {L"MousePointer", VT_I2, Short<0>, SETTING(MousePointer, Number)},
    {L"PathSeparator", VT_BSTR, Backslash, GetPathSeparator, SetPathSeparator},
    {L"FileFilter", VT_BSTR, NoText, GetFileFilter, SetFileFilter},
    {L"Picture", VT_UNKNOWN, NoObject, GetPicture, SetPicture, SavedKind::Picture},
    {L"DragDropEnable", VT_BOOL, Short<0>, VARIABLE(drag, m_DragDropEnable)},
    {L"BackColor", VT_I4, ButtonFace, GetBackColor, SetBackColor},
    {L"RecursiveCheck", VT_BOOL, Short<1>, VARIABLE(checks, m_RecursiveCheck)},
}};

#undef SETTING
#undef VARIABLE

constexpr std::size_t kFont = 5;

// False when the standard value was taken.
bool Apply(ControlCore& core, const SavedProperty& property, const VARIANT& value)
{
    if (V_VT(&value) != VT_EMPTY && V_VT(&value) != VT_NULL) {
        try {
            property.set(core, value);
            return true;
        } catch (const RuntimeError&) {
        } catch (const ComError&) {
        }
    }
    property.set(core, property.standard(core).Get());
    return false;
}

}  // namespace

const std::array<SavedProperty, kSavedPropertyCount>& SavedProperties()
{
    return kProperties;
}

bool IsStandard(ControlCore& core, const SavedProperty& property, const VARIANT& value)
{
    return SameValue(property.standard(core).Get(), value);
}

bool ApplyProperties(ControlCore& core, const PropertyValues& values)
{
    const Module& control = core.Control().State();
    return Trapped(control, L"UserControl_ReadProperties", Variables("PropBag", kPropertyBag), kNone, [&](int& line) {
        core.Loaded();
        bool ownFont = false;
        for (std::size_t i = 0; i < kProperties.size(); ++i) {
            line = static_cast<int>(i) + 1;
            const bool own = Apply(core, kProperties[i], values[i].Get());
            if (i == kFont) ownFont = own;
        }
        core.Control().State().list.m_BuildFileListFilter = {L"*"};
        return !ownFont;
    });
}

}  // namespace sylvex
