#include "diagnostics/dump.h"

namespace sylvex {

namespace {

/// Longer texts are cut: a report must stay small enough to be read and sent.
constexpr std::size_t kLongestText = 4096;

}  // namespace

void Dump::Open(std::string_view name)
{
    m_text += L'<';
    m_text.append(name.begin(), name.end());
    m_text += L'>';
}

void Dump::Close(std::string_view name)
{
    m_text += L"</";
    m_text.append(name.begin(), name.end());
    m_text += L'>';
}

void Dump::Text(std::wstring_view value)
{
    m_text += value.substr(0, kLongestText);
}

void Dump::Render(double value)
{
    m_text += std::to_wstring(value);
}

void Dump::Render(const Currency& value)
{
    m_text += std::to_wstring(value.Value());
}

void Dump::Render(const Date& value)
{
    m_text += std::to_wstring(value.days);
}

void Dump::Render(const ObjectRef& value)
{
    if (!value) {
        m_text += L"{Nothing}";
        return;
    }
    const std::wstring name = value->ClassName();
    m_text += name.empty() ? L"{Object}" : L"{" + name + L"}";
}

}  // namespace sylvex
