#include "component/container/property_table.h"

#include <concepts>
#include <type_traits>

#include "component/border/fonts.h"
#include "component/border/object_ref.h"
#include "component/container/ambient.h"
#include "component/container/property_values.h"

#include "SylvexControl_h.h"

namespace sylvex {

namespace {

/// What a container keeps of a property of a type of automation.
template <class Type>
constexpr SavedKind kKind = SavedKind::Number;
template <>
constexpr SavedKind kKind<BSTR> = SavedKind::Text;
template <>
constexpr SavedKind kKind<IFontDisp> = SavedKind::Font;
template <>
constexpr SavedKind kKind<IPictureDisp> = SavedKind::Picture;

constexpr struct {
} AmbientFont;

Variant Standard(ControlCore&, std::integral auto number)
{
    return ShortValue(static_cast<long>(number));
}
Variant Standard(ControlCore&, const wchar_t* text)
{
    return Variant(std::wstring_view(text));
}
Variant Standard(ControlCore&, std::nullptr_t)
{
    return ObjectValue(nullptr);
}
Variant Standard(ControlCore& core, decltype(AmbientFont))
{
    return ObjectValue(CopyOfAmbientFont(core).Get());
}

template <TreeSetting setting, class Type>
Variant GetSetting(ControlCore& core)
{
    const int value = core.Control().Tree().Setting(setting);
    return std::is_same_v<Type, VARIANT_BOOL> ? Variant(value != 0) : ShortValue(value);
}

template <TreeSetting setting, class Type>
void SetSetting(ControlCore& core, const VARIANT& value)
{
    const bool isFlag = std::is_same_v<Type, VARIANT_BOOL>;
    core.Control().Tree().SetSetting(setting, isFlag ? FlagIn(value) : NumberIn(value));
}

Variant GethWnd(ControlCore& core)
{
    return ShortValue(core.Control().State().m_hWnd);
}

void SethWnd(ControlCore& core, const VARIANT& value)
{
    core.Control().State().m_hWnd = NumberIn(value);
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

Variant GetFileFilter(ControlCore& core)
{
    return Variant(std::wstring_view(core.Control().State().tree.m_FileFilter));
}

void SetFileFilter(ControlCore& core, const VARIANT& value)
{
    core.Control().State().tree.m_FileFilter = TextIn(value);
}

Variant GetPicture(ControlCore& core)
{
    return ObjectValue(core.Picture().Get());
}

void SetPicture(ControlCore& core, const VARIANT& value)
{
    core.SetPicture(ObjectIn<IPictureDisp>(value).Get());
}

Variant GetDragDropEnable(ControlCore& core)
{
    return Variant(core.Control().State().drag.m_DragDropEnable);
}

void SetDragDropEnable(ControlCore& core, const VARIANT& value)
{
    core.Control().State().drag.m_DragDropEnable = FlagIn(value);
}

Variant GetBackColor(ControlCore& core)
{
    return Variant(static_cast<long>(core.BackColor()));
}

void SetBackColor(ControlCore& core, const VARIANT& value)
{
    core.SetBackColor(static_cast<OLE_COLOR>(NumberIn(value)));
}

Variant GetRecursiveCheck(ControlCore& core)
{
    return Variant(core.Control().State().checks.m_RecursiveCheck);
}

void SetRecursiveCheck(ControlCore& core, const VARIANT& value)
{
    core.Control().State().checks.m_RecursiveCheck = FlagIn(value);
}

constexpr std::array<SavedProperty, kSavedPropertyCount> kProperties{{
#define ROW(name, type, missing, get, set) \
    {L## #name, kKind<type>, [](ControlCore& core) { return Standard(core, missing); }, get, set},
#define SETTING(name, type, missing) \
    ROW(name, type, missing, (GetSetting<TreeSetting::name, type>), (SetSetting<TreeSetting::name, type>))
#define SAVED(name, type, missing) ROW(name, type, missing, Get##name, Set##name)
#include "control/properties.def"
#undef ROW
}};

constexpr auto kFont = static_cast<std::size_t>(Property::Font);

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
    return Trapped(control, L"UserControl_ReadProperties", Variables("PropBag", kPropertyBag), [&](int& line) {
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
