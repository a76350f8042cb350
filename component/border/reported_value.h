#pragma once

#include <exception>

#include "component/border/border.h"
#include "diagnostics/trap.h"
#include "platform/runtime_error.h"
#include "platform/win32/variant_text.h"

namespace sylvex {

/// A value that a host hands over, as a parameter of a report.
struct ReportedValue {
    const VARIANT& value;
    void ReportTo(ValueText& report) const { RenderVariant(value, report); }
};

/// Converts a value that is written to a property. One of the wrong kind is reported as a failure of the property
/// (13), with the value under the name `parameter`, and raised as 65535.
template <class Convert>
auto ReportedConversion(const Module& module, const wchar_t* property, const char* parameter, const VARIANT& value,
                        Convert&& convert)
{
    const ReportedValue reported{value};
    return Trapped(module, property, Variables(parameter, reported), [&] {
        try {
            return convert(value);
        } catch (const ComError&) {
            // What the platform cannot even copy is no value of the right kind.
            ThrowTypeMismatch();
        }
    });
}

/// As above, but the host hears what was wrong with the value rather than 65535.
template <class Convert>
auto Converted(const Module& module, const wchar_t* property, const char* parameter, const VARIANT& value,
               Convert&& convert)
{
    std::exception_ptr failure;
    try {
        return ReportedConversion(module, property, parameter, value, [&](const VARIANT& given) {
            try {
                return convert(given);
            } catch (const ComError&) {
                failure = std::make_exception_ptr(TypeMismatch());
                throw;
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
