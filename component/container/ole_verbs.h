#pragma once

#include <string_view>

#include "component/border/border.h"

namespace sylvex {

/// The control's own verb for its property pages, as containers show it in their menus.
constexpr LONG kVerbProperties = 1;

/// The verbs that containers show in their menus.
ComPtr<IEnumOLEVERB> Verbs();

/// A text in memory that the caller frees by CoTaskMemFree; throws std::bad_alloc.
LPOLESTR CopyForCaller(std::wstring_view text);

}  // namespace sylvex
