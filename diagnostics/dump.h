#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/types.h"

namespace sylvex {

/// Renders variables for an error report: each value between tags that carry its name. Never throws for want of a
/// value; what cannot be rendered says so.
class Dump {
public:
    template <class Value>
    void Add(std::string_view name, const Value& value)
    {
        Open(name);
        try {
            Render(value);
        } catch (...) {
            m_text += L"{Error formatting for output}";
        }
        Close(name);
    }
    /// The text so far, "{None}" when nothing was added.
    std::wstring Text() const { return m_text.empty() ? L"{None}" : m_text; }

    void Render(const std::wstring& value) { Text(value); }
    void Render(std::wstring_view value) { Text(value); }
    void Render(const wchar_t* value) { Text(value != nullptr ? std::wstring_view(value) : std::wstring_view()); }
    void Render(bool value) { m_text += value ? L"True" : L"False"; }
    void Render(double value);
    void Render(const Currency& value);
    void Render(const Date& value);
    void Render(const ObjectRef& value);
    void Render(const Point&) { m_text += L"{POINTAPI}"; }
    void Render(const Rect&) { m_text += L"{RECT}"; }
    void Render(const Size&) { m_text += L"{SIZE}"; }
    void Render(const FileEntry&) { m_text += L"{WIN32_FIND_DATA}"; }

    template <class Number>
        requires(std::is_integral_v<Number> && !std::is_same_v<Number, bool>)
    void Render(Number value)
    {
        m_text += std::to_wstring(value);
    }
    /// Anything that knows its own text for reports (nodes, lists, records).
    template <class Value>
        requires requires(const Value& value) { { value.ReportText() } -> std::convertible_to<std::wstring>; }
    void Render(const Value& value)
    {
        m_text += value.ReportText();
    }
    /// A type that may be gone by the time it is rendered: only its kind is told.
    template <class Value>
        requires requires { Value::kReportName; }
    void Render(const Value&)
    {
        m_text += Value::kReportName;
    }
    template <class Value>
        requires requires { Value::kReportName; }
    void Render(Value* value)
    {
        m_text += value == nullptr ? L"{Nothing}" : Value::kReportName;
    }
    template <class Value>
    void Render(const std::vector<Value>& values)
    {
        if (values.empty()) m_text += L"{UnInitialised Array}";
        for (std::size_t i = 0; i < values.size() && i < kMostElements; ++i) {
            m_text += L" Index=\"" + std::to_wstring(i) + L"\" ";
            Render(values[i]);
        }
    }

private:
    static constexpr std::size_t kMostElements = 200;
    void Open(std::string_view name);
    void Close(std::string_view name);
    void Text(std::wstring_view value);
    std::wstring m_text;
};

}  // namespace sylvex
