#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/exception_guard.h"
#include "platform/types.h"
#include "platform/value_text.h"

namespace sylvex {

/// Words that stand in a report for a value that is never shown.
struct Marker {
    const wchar_t* text;
};

/// Renders variables for an error report: each value between tags that carry its name. Nothing that is rendered is
/// changed, nothing is thrown; what cannot be rendered says so, and what would be too long is cut.
class Dump {
public:
    enum class Of { Variables, Parameters };
    /// Records are shown by their names among variables, not at all among parameters.
    explicit Dump(Of of = Of::Variables) noexcept : m_of(of) {}

    template <class Value>
    void Add(std::string_view name, const Value& value) noexcept
    {
        m_value = ValueText();
        try {
            if (m_text.size() >= kLongest) {
                m_value.Marker(TruncatedAt(kLongest, L"characters"));
            } else {
                // A value of the host's may fault.
                Guarded([&] { Render(value); });
            }
            Put(name, m_value.Get());
        } catch (...) {
            PutFailure(name);
        }
    }
    /// The text so far, "{None}" when nothing was added.
    std::wstring Text() const { return m_text.empty() ? L"{None}" : m_text; }

private:
    static constexpr std::size_t kLongest = 262144;

    void Render(std::wstring_view value) { m_value.Text(value); }
    void Render(const std::wstring& value) { m_value.Text(value); }
    void Render(const wchar_t* value) { m_value.Text(value != nullptr ? value : L""); }
    void Render(Marker value) { m_value.Marker(value.text); }
    void Render(bool value) { m_value.Boolean(value); }
    void Render(const Currency& value) { m_value.Amount(value); }
    void Render(const Date& value) { m_value.Moment(value); }
    void Render(const ObjectRef& value) { m_value.Marker(value ? value->ReportText() : L"{Nothing}"); }
    void Render(const Point&) { Record(L"{POINTAPI}"); }
    void Render(const Rect&) { Record(L"{RECT}"); }
    void Render(const Size&) { Record(L"{SIZE}"); }
    void Render(const FileEntry&) { Record(L"{WIN32_FIND_DATA}"); }
    template <class Number>
    requires(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool>) void Render(Number value)
    {
        m_value.Number(value);
    }
    template <class Value>
    requires requires { Value::kRecordName; }
    void Render(const Value&) { Record(Value::kRecordName); }
    /// Anything that knows its own words for reports, and what to show behind them.
    template <class Value>
    requires requires(const Value& value, ValueText& text) { value.ReportTo(text); }
    void Render(const Value& value) { value.ReportTo(m_value); }
    /// A type that may be gone by the time it is rendered: only its kind is told.
    template <class Value>
    requires requires { Value::kReportName; }
    void Render(const Value&) { m_value.Marker(Value::kReportName); }
    template <class Value>
    requires requires { Value::kReportName; }
    void Render(Value* value) { m_value.Marker(value == nullptr ? L"{Nothing}" : Value::kReportName); }
    template <class Value>
    requires requires { Value::kReportName; }
    void Render(const std::shared_ptr<Value>& value) { Render(value.get()); }
    template <class Value>
    void Render(const std::vector<Value>& values)
    {
        if (values.empty()) m_value.Marker(L"{UnInitialised Array}");
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i == ValueText::kMostElements || m_value.IsFull()) return m_value.Marker(TruncatedAt(i, L"elements"));
            m_value.BeginElement(std::to_wstring(i));
            Render(values[i]);
            m_value.EndElement();
        }
    }

    void Record(const wchar_t* name);
    void Put(std::string_view name, std::wstring_view value);
    void PutFailure(std::string_view name) noexcept;
    Of m_of;
    ValueText m_value;
    std::wstring m_text;
};

}  // namespace sylvex
