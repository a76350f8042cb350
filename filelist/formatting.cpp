#include "filelist/formatting.h"

#include <cmath>
#include <string_view>

namespace sylvex {

namespace {

constexpr double kKilo = 1024;
/// From 10 to the power of this many digits of kilobytes on there is no unit any more.
constexpr int kMostDigits = 24;

std::wstring SizeText(Regional& regional, double Size, double& SizeKb, int& Pwr, int& Decimals)
{
    if (Size < kKilo) return regional.Number(Size, 0) + L" b";
    SizeKb = Size / kKilo;
    int digits = 0;
    while (digits < kMostDigits && !(SizeKb < std::pow(10.0, digits + 1)))
        ++digits;
    if (digits == kMostDigits) return L"Out of bounds";
    Pwr = digits / 3;
    SizeKb /= std::pow(kKilo, Pwr);
    Decimals = 4 - static_cast<int>(std::to_wstring(static_cast<long long>(SizeKb)).size());
    constexpr std::wstring_view kUnits = L"KMGTPEZY";
    return regional.Number(SizeKb, Decimals) + L' ' + kUnits[static_cast<std::size_t>(Pwr)] + L'b';
}

}  // namespace

void DeclaresModule::DumpAll(Dump& dump)
{
    // Work space of platform calls, which nothing outlives here.
    dump.Add("Buffer", L"");
    dump.Add("f_Type", L"");
    dump.Add("LVI", Marker{L"{LVITEM}"});
    dump.Add("Master", Marker{L"{Nothing}"});
    dump.Add("SFI", Marker{L"{SHFILEINFO}"});
}

std::wstring FormatSize(const Module& module, Regional& regional, double Size)
{
    double SizeKb = 0;
    int Pwr = 0;
    int Decimals = 0;
    return Trapped(module, VARIABLES(Size), VARIABLES(SizeKb, Pwr, Decimals), [&] {
        try {
            return SizeText(regional, Size, SizeKb, Pwr, Decimals);
        } catch (...) {
            return std::wstring(L"Overflow");
        }
    });
}

Date UTCCurrToVbDate(const Module& module, Regional& regional, Currency UTC, bool TooLocal)
{
    constexpr Currency kMissingTime{119'600'172'000'000'000};
    constexpr double kMillisecondsPerDay = 86'400'000;
    constexpr double kDaysFrom1601 = 109'205;
    return Trapped(module, VARIABLES(UTC, TooLocal), [&](int& line) {
        if (UTC == Currency{}) UTC = kMissingTime;
        line = 2;
        if (TooLocal) UTC.units = regional.LocalFileTime(UTC.units);
        line = 3;
        return Date{UTC.Value() / kMillisecondsPerDay - kDaysFrom1601};
    });
}

std::wstring FormGenDatTim(const Module& module, Regional& regional, Date MyDate)
{
    return Trapped(module, VARIABLES(MyDate), [&](int& line) {
        std::wstring text = regional.ShortDate(MyDate);
        line = 2;
        text += L' ';
        text += regional.LongTime(MyDate);
        return text;
    });
}

std::wstring GetAttrString(const Module& module, std::uint32_t Attr)
{
    constexpr std::wstring_view kLetters = L"rhsvdalnt?lco?e";
    return Trapped(module, VARIABLES(Attr), [&] {
        std::wstring text(kLetters.size(), L'.');
        for (std::size_t bit = 0; bit < kLetters.size(); ++bit)
            if ((Attr >> bit & 1) != 0) text[bit] = kLetters[bit];
        return text;
    });
}

Currency CVC(const Module& module, Regional& regional, const std::wstring& ValToConvert)
{
    return Trapped(module, VARIABLES(ValToConvert), [&](int& line) {
        const std::string bytes = regional.Narrow(ValToConvert);
        line = 2;
        std::uint64_t units = 0;
        for (std::size_t i = 0; i < sizeof units && i < bytes.size(); ++i)
            units |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << 8 * i;
        return Currency{static_cast<std::int64_t>(units)};
    });
}

}  // namespace sylvex
