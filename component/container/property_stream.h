#pragma once

#include "component/container/property_table.h"

namespace sylvex {

/// What a stream holds of the control.
struct SavedControl {
    /// Hundredths of a millimetre.
    SIZEL extent{};
    PropertyValues values;
};

/// Writes the control behind the stream's present position. Throws ComError.
void WriteControl(IStream& stream, const SavedControl& control);

/// Reads what WriteControl() wrote, not a byte further. Throws ComError: STG_E_INVALIDHEADER for something else,
/// STG_E_OLDDLL for a form that a later version wrote, STG_E_READFAULT for a stream cut short, STG_E_DOCFILECORRUPT
/// for one whose content makes no sense.
SavedControl ReadControl(IStream& stream);

}  // namespace sylvex
