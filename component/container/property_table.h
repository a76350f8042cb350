#pragma once

#include <array>
#include <iterator>

#include "component/border/border.h"
#include "component/container/control_core.h"
#include "component/container/saved_objects.h"
#include "diagnostics/dump.h"

namespace sylvex {

/// One property that containers save with the control: a row of properties.def.
struct SavedProperty {
    const wchar_t* name;
    SavedKind kind;
    /// What stands for a missing entry, and is not worth saving.
    Variant (*standard)(ControlCore& core);
    /// The present value: VT_BOOL, VT_I2 or VT_I4, VT_BSTR, VT_UNKNOWN.
    Variant (*get)(ControlCore& core);
    /// Writes without notices. Throws, and changes nothing, for a value that cannot be converted or is out of range.
    void (*set)(ControlCore& core, const VARIANT& value);
};

constexpr std::size_t kSavedPropertyCount = [] {
    constexpr Property saved[] = {
#define SETTING(name, type, missing) Property::name,
#define SAVED(name, type, missing) Property::name,
#include "control/properties.def"
    };
    return std::size(saved);
}();

/// The container's part in reading and writing, as reports show it: a bag, a stream or a storage.
constexpr Marker kPropertyBag{L"{PropertyBag}"};

/// A value for each saved property, in their order; VT_EMPTY where there is none.
using PropertyValues = std::array<Variant, kSavedPropertyCount>;

/// The saved properties in the order in which they are read and written.
const std::array<SavedProperty, kSavedPropertyCount>& SavedProperties();

/// Whether the value is the standard one.
bool IsStandard(ControlCore& core, const SavedProperty& property, const VARIANT& value);

/// Writes all values into a control that has been loaded; a missing one, and one that the property cannot take, gives
/// way to the standard value. Returns whether the font is the standard one. (UserControl_ReadProperties)
bool ApplyProperties(ControlCore& core, const PropertyValues& values);

}  // namespace sylvex
