#pragma once

#include <cstddef>

#include "platform/treewindow.h"

namespace sylvex {

/// A property of the control, as its container is asked and told about it: a row of properties.def.
enum class Property {
#define PROPERTY(name) name,
#include "control/properties.def"
};

/// By which reports and containers know it.
constexpr const wchar_t* NameOf(Property property)
{
    constexpr const wchar_t* names[] = {
#define PROPERTY(name) L## #name,
#include "control/properties.def"
    };
    return names[static_cast<std::size_t>(property)];
}

/// The property that writes a setting of the tree.
constexpr Property PropertyOf(TreeSetting setting)
{
    switch (setting) {
#define SETTING(name, type, missing) \
    case TreeSetting::name:          \
        return Property::name;
#include "control/properties.def"
    }
    return {};
}

}  // namespace sylvex
