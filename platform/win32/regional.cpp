#include "platform/win32/regional.h"

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <memory>

#include "diagnostics/runtime_error.h"

namespace sylvex {
namespace {

constexpr DWORD kSortKeyFlags = LCMAP_SORTKEY | NORM_IGNORECASE;

struct TextFreer {
    void operator()(OLECHAR* text) const noexcept { SysFreeString(text); }
};

int LengthOf(std::wstring_view text) { return static_cast<int>(text.size()); }

RuntimeError InvalidArgument() { return {5, L"Invalid procedure call or argument"}; }

SYSTEMTIME SystemTimeOf(Date date)
{
    SYSTEMTIME time{};
    if (!VariantTimeToSystemTime(date.days, &time)) throw InvalidArgument();
    return time;
}

// The maps of the platform take their output as text even where it is bytes.
int MapToBytes(std::wstring_view text, char* bytes, int size)
{
    return LCMapStringW(LOCALE_USER_DEFAULT, kSortKeyFlags, text.data(), LengthOf(text),
                        reinterpret_cast<wchar_t*>(bytes), size);
}

template <typename Format>
std::wstring Formatted(Date date, Format format)
{
    const auto time = SystemTimeOf(date);
    wchar_t text[128];
    const auto length = format(time, text, 128);
    if (length == 0) throw InvalidArgument();
    return {text, static_cast<std::size_t>(length) - 1};
}

}  // namespace

void AppendSortKeyOf(std::wstring_view text, std::string& key)
{
    if (text.empty()) return;
    alignas(wchar_t) char bytes[1600];
    if (const auto length = MapToBytes(text, bytes, sizeof bytes); length > 0) {
        key.append(bytes, static_cast<std::size_t>(length));
        return;
    }
    const auto length = MapToBytes(text, nullptr, 0);
    const auto before = key.size();
    key.resize(before + static_cast<std::size_t>(std::max(length, 0)));
    MapToBytes(text, key.data() + before, length);
}

int Win32Regional::Compare(std::wstring_view left, std::wstring_view right)
{
    const auto result = CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, left.data(), LengthOf(left), right.data(),
                                       LengthOf(right));
    return result - CSTR_EQUAL;
}

void Win32Regional::AppendSortKey(std::wstring_view text, std::string& key) { AppendSortKeyOf(text, key); }

std::wstring Win32Regional::Lower(std::wstring_view text)
{
    std::wstring lower(text);
    const bool plain = std::all_of(text.begin(), text.end(), [](wchar_t c) { return c < 128; });
    if (plain) {
        for (auto& c : lower) c = c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
        return lower;
    }
    LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_LOWERCASE, text.data(), LengthOf(text), lower.data(), LengthOf(lower));
    return lower;
}

std::wstring Win32Regional::Number(double value, int decimals)
{
    constexpr int kUserDefault = -2;
    VARIANT number{};
    number.vt = VT_R8;
    number.dblVal = value;
    BSTR text = nullptr;
    if (FAILED(VarFormatNumber(&number, decimals, kUserDefault, kUserDefault, kUserDefault, 0, &text))) {
        throw InvalidArgument();
    }
    const std::unique_ptr<OLECHAR, TextFreer> owned(text);
    return {text, SysStringLen(text)};
}

std::wstring Win32Regional::ShortDate(Date date)
{
    return Formatted(date, [](const SYSTEMTIME& time, wchar_t* text, int size) {
        return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text, size);
    });
}

std::wstring Win32Regional::LongTime(Date date)
{
    return Formatted(date, [](const SYSTEMTIME& time, wchar_t* text, int size) {
        return GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, text, size);
    });
}

std::int64_t Win32Regional::LocalFileTime(std::int64_t utc)
{
    ULARGE_INTEGER count;
    count.QuadPart = static_cast<ULONGLONG>(utc);
    const FILETIME given{count.LowPart, count.HighPart};
    FILETIME local{};
    if (!FileTimeToLocalFileTime(&given, &local)) throw InvalidArgument();
    return static_cast<std::int64_t>(ULARGE_INTEGER{{local.dwLowDateTime, local.dwHighDateTime}}.QuadPart);
}

std::string Win32Regional::Narrow(std::wstring_view text)
{
    if (text.empty()) return {};
    const auto size = WideCharToMultiByte(CP_ACP, 0, text.data(), LengthOf(text), nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), LengthOf(text), narrow.data(), size, nullptr, nullptr);
    return narrow;
}

}  // namespace sylvex
