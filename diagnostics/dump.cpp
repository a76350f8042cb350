#include "diagnostics/dump.h"

#include "diagnostics/trap.h"

namespace sylvex {

void Dump::Record(const wchar_t* name)
{
    m_value.Marker(m_of == Of::Parameters ? L"{Can't dump UDT parameters}" : name);
}

void Dump::Put(std::string_view name, std::wstring_view value)
{
    const std::wstring tag(name.begin(), name.end());
    m_text += L'<' + tag + L'>' + std::wstring(value) + L"</" + tag + L'>';
}

void Dump::PutFailure(std::string_view name) noexcept
{
    try {
        Put(name, FormattingError(CaptureError().number));
    } catch (...) {  // not even memory for these words: the value is left out
    }
}

}  // namespace sylvex
