#include "host/system_text.h"

namespace sylvex::host {

std::wstring DescribeResult(HRESULT result)
{
    wchar_t text[512];
    constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    DWORD length = FormatMessageW(kFlags, nullptr, static_cast<DWORD>(result), 0, text, std::size(text), nullptr);
    while (length > 0 && (text[length - 1] == L' ' || text[length - 1] == L'.'))
        --length;
    return {text, length};
}

}  // namespace sylvex::host
