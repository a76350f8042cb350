#include "platform/win32/regional.h"

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

#include "platform/runtime_error.h"

namespace sylvex {
namespace {

constexpr DWORD kSortKeyFlags = LCMAP_SORTKEY | NORM_IGNORECASE;

int LengthOf(std::wstring_view text)
{
    return static_cast<int>(text.size());
}

RuntimeError InvalidArgument()
{
    return {5, L"Invalid procedure call or argument"};
}

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

UINT SettingOf(LCTYPE which)
{
    DWORD value = 0;
    GetLocaleInfoW(LOCALE_USER_DEFAULT, which | LOCALE_RETURN_NUMBER, reinterpret_cast<wchar_t*>(&value),
                   sizeof value / sizeof(wchar_t));
    return value;
}

// The user's settings for numbers, read anew each time: the platform keeps them at hand, and they may change.
struct NumberSettings {
    NumberSettings()
    {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_point, kSize);
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, m_thousand, kSize);
        wchar_t grouping[16] = {};
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SGROUPING, grouping, 16);
        format.Grouping = GroupingOf(grouping);
        format.LeadingZero = SettingOf(LOCALE_ILZERO);
        format.NegativeOrder = SettingOf(LOCALE_INEGNUMBER);
        format.lpDecimalSep = m_point;
        format.lpThousandSep = m_thousand;
    }
    NumberSettings(const NumberSettings&) = delete;
    NumberSettings& operator=(const NumberSettings&) = delete;

    NUMBERFMTW format{};

private:
    // The setting reads "3;0" where the format wants 3, "3;2;0" for 32, and "3" for 30: the last group repeats only
    // where the setting ends in 0.
    static UINT GroupingOf(std::wstring_view setting)
    {
        UINT grouping = 0;
        for (const auto c : setting) {
            if (c >= L'0' && c <= L'9') grouping = grouping * 10 + static_cast<UINT>(c - L'0');
        }
        return setting.ends_with(L";0") ? grouping / 10 : grouping * 10;
    }

    static constexpr int kSize = 8;
    wchar_t m_point[kSize] = {};
    wchar_t m_thousand[kSize] = {};
};

// Adds one to the last digit.
void CarryInto(std::string& digits)
{
    for (auto at = digits.size(); at-- > 0;) {
        if (digits[at] == '.') continue;
        if (digits[at] == '-') break;
        if (digits[at] != '9') {
            ++digits[at];
            return;
        }
        digits[at] = '0';
    }
    digits.insert(digits.starts_with('-') ? 1 : 0, 1, '1');
}

// Plain digits with a point, rounded, halves away from zero: whether the platform groups what a carry has brought in
// front is not said.
std::wstring DigitsOf(double value, int decimals)
{
    constexpr int kSignificant = 15;
    char text[400];
    const auto whole = std::abs(value) < 1 ? 1 : static_cast<int>(std::log10(std::abs(value))) + 1;
    const auto shown = std::max(kSignificant - std::clamp(whole, 1, kSignificant), decimals);
    const auto end = std::to_chars(text, std::end(text), value, std::chars_format::fixed, shown);
    if (end.ec != std::errc() || !std::isfinite(value)) throw InvalidArgument();
    std::string digits(text, end.ptr);
    const auto point = digits.find('.');
    const auto first = point + 1 + static_cast<std::size_t>(decimals);  // of those that are cut off
    if (point != digits.npos && first < digits.size()) {
        const bool up = digits[first] >= '5';
        digits.resize(decimals > 0 ? first : point);
        if (up) CarryInto(digits);
    }
    return {digits.begin(), digits.end()};
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

int CompareTexts(std::wstring_view left, std::wstring_view right)
{
    // The platform takes no null, also not for a text without characters.
    const auto characters = [](std::wstring_view text) { return text.data() != nullptr ? text.data() : L""; };
    const auto result = CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, characters(left), LengthOf(left),
                                       characters(right), LengthOf(right));
    return result - CSTR_EQUAL;
}

int Win32Regional::Compare(std::wstring_view left, std::wstring_view right)
{
    return CompareTexts(left, right);
}

void Win32Regional::AppendSortKey(std::wstring_view text, std::string& key)
{
    AppendSortKeyOf(text, key);
}

std::wstring Win32Regional::Lower(std::wstring_view text)
{
    std::wstring lower(text);
    const bool plain = std::all_of(text.begin(), text.end(), [](wchar_t c) { return c < 128; });
    if (plain) {
        for (auto& c : lower)
            c = c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
        return lower;
    }
    LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_LOWERCASE, text.data(), LengthOf(text), lower.data(), LengthOf(lower));
    return lower;
}

std::wstring Win32Regional::Number(double value, int decimals)
{
    const auto digits = DigitsOf(value, decimals);
    NumberSettings settings;
    settings.format.NumDigits = static_cast<UINT>(decimals);
    // The leading zero is the one before the point: a whole number keeps its only digit.
    if (decimals == 0) settings.format.LeadingZero = 1;
    wchar_t text[128];
    const auto length = GetNumberFormatW(LOCALE_USER_DEFAULT, 0, digits.c_str(), &settings.format, text, 128);
    if (length == 0) throw InvalidArgument();
    return {text, static_cast<std::size_t>(length) - 1};
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
