#include "filelist/cached_regional.h"

#include <chrono>
#include <cmath>

namespace sylvex {

namespace {

constexpr int kSecondsPerDay = 86'400;

struct Moment {
    int day;     ///< since 1899-12-30
    int second;  ///< of the day
};

/// The nearest second. The fraction counts forward in the day even before 1899-12-30.
Moment MomentOf(Date date)
{
    const double day = std::trunc(date.days);
    const int second = static_cast<int>(std::lround(std::fabs(date.days - day) * kSecondsPerDay));
    if (second < kSecondsPerDay) return {static_cast<int>(day), second};
    return {static_cast<int>(day) + 1, 0};
}

void AppendDigits(std::wstring& text, unsigned value, unsigned highest)
{
    for (; highest > 0; highest /= 10)
        text += static_cast<wchar_t>(L'0' + value / highest % 10);
}

std::wstring DayStamp(int day)
{
    constexpr int kDaysTo1970 = 25'569;
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day - kDaysTo1970}}};
    std::wstring text;
    AppendDigits(text, static_cast<unsigned>(static_cast<int>(date.year())), 1000);
    AppendDigits(text, static_cast<unsigned>(date.month()), 10);
    AppendDigits(text, static_cast<unsigned>(date.day()), 10);
    return text;
}

template <class Key, class Make>
const std::wstring& Cached(std::unordered_map<Key, std::wstring>& texts, Key key, Make&& make)
{
    const auto found = texts.find(key);
    return found != texts.end() ? found->second : texts.emplace(key, make()).first->second;
}

}  // namespace

std::wstring CachedRegional::ShortDate(Date date)
{
    const int day = MomentOf(date).day;
    return Cached(m_dates, day, [&] { return m_regional.ShortDate({static_cast<double>(day)}); });
}

std::wstring CachedRegional::LongTime(Date date)
{
    const int second = MomentOf(date).second;
    return Cached(m_times, second, [&] { return m_regional.LongTime({static_cast<double>(second) / kSecondsPerDay}); });
}

std::wstring CachedRegional::Stamp(Date date)
{
    const Moment moment = MomentOf(date);
    std::wstring stamp;
    stamp.reserve(kStampDateLength + 6);
    stamp = Cached(m_stamps, moment.day, [&] { return DayStamp(moment.day); });
    const auto second = static_cast<unsigned>(moment.second);
    AppendDigits(stamp, second / 3600, 10);
    AppendDigits(stamp, second / 60 % 60, 10);
    AppendDigits(stamp, second % 60, 10);
    return stamp;
}

std::wstring CachedRegional::Number(double value, int decimals)
{
    constexpr double kMostDigits = 1e6;
    constexpr double kNearTie = 1e-6;
    const double scaled = value * std::pow(10.0, decimals);
    const double whole = std::floor(scaled);
    // Where rounding might go either way, the answer is the platform's for this very value.
    const bool sure = std::fabs(scaled - whole - 0.5) > kNearTie;
    if (!sure || !(scaled >= 0 && scaled < kMostDigits)) return m_regional.Number(value, decimals);
    const auto key = static_cast<std::int64_t>(std::lround(scaled)) * 8 + decimals;
    return Cached(m_numbers, key, [&] { return m_regional.Number(value, decimals); });
}

}  // namespace sylvex
