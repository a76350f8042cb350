#pragma once

#include <exception>

#include "component/com.h"
#include "diagnostics/trap.h"
#include "platform/win32/variant_text.h"

namespace sylvex {

/// A value that a host hands over, as a parameter of a report.
struct ReportedValue {
    const VARIANT& value;
    void ReportTo(ValueText& report) const { RenderVariant(value, report); }
};

/// Converts a value that is written to a property. One of the wrong kind is reported as a failure of the property,
/// with the value under the name `parameter`; the host hears what was wrong with it rather than 65535.
template <class Convert>
auto Converted(const Module& module, const wchar_t* property, const char* parameter, const VARIANT& value,
               Convert&& convert)
{
    std::exception_ptr failure;
    const ReportedValue reported{value};
    try {
        return Trapped(module, property, Variables(parameter, reported), kNone, [&](int& line) {
            line = 1;
            try {
                return convert(value);
            } catch (...) {
                failure = std::current_exception();
                throw;
            }
        });
    } catch (...) {
        // A processor exception in another module ends the conversion past its handler.
        if (!failure) throw;
        std::rethrow_exception(failure);
    }
}

}  // namespace sylvex
