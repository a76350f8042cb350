#pragma once

#include <windows.h>

#include <oaidl.h>

#include "platform/value_text.h"

namespace sylvex {

/// Adds a value of automation to a report: arrays with the indices of their elements, what references refer to, objects
/// by their class, and what is in them where they have an enumerator. Takes a quarter of a second at most beyond the
/// call of an object that is running then. Changes nothing; throws std::bad_alloc only.
void RenderVariant(const VARIANT& value, ValueText& report);

/// The same of an object, which may be null.
void RenderObject(IUnknown* object, ValueText& report);

}  // namespace sylvex
