#pragma once

#include "component/border/border.h"

namespace sylvex {

/// What a saved property holds: a number or flag, a text, or one of the two kinds of objects.
enum class SavedKind { Number, Text, Font, Picture };

/// A new object of the system's own class for the kind, without content; throws ComError. The system makes it itself:
/// neither saved data nor the registry decides what is created.
ComPtr<IUnknown> NewSystemObject(SavedKind kind);

/// Whether an object is of the system's own class for the kind; false for null.
bool IsSystemObject(SavedKind kind, IUnknown* object);

/// Writes an object, or that there is none: one of another class than the system's would not be loaded again.
void WriteObject(IStream& stream, SavedKind kind, IUnknown* object);

/// Reads what WriteObject() wrote into a stream in memory: VT_UNKNOWN, null for none; VT_EMPTY for content that the
/// object refuses, and for another class, of which nothing is created. Throws ComError, STG_E_DOCFILECORRUPT where
/// nobody can tell how far the entry goes.
Variant ReadObject(IStream& stream, SavedKind kind);

}  // namespace sylvex
