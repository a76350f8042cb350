#include "tests/simulated/simulated_regional.h"

#include <chrono>
#include <cmath>
#include <cstdio>

#include "tests/simulated/text.h"

namespace sylvex {

namespace {

constexpr int kSecondsPerDay = 86400;
constexpr int kDaysTo1970 = 25569;

struct Moment {
    int day;
    int second;
};

// The fraction of a date before 1899-12-30 counts forward all the same.
Moment MomentOf(Date date)
{
    const double whole = std::trunc(date.days);
    const int day = static_cast<int>(whole);
    const int second = static_cast<int>(std::lround(std::fabs(date.days - whole) * kSecondsPerDay));
    return second == kSecondsPerDay ? Moment{day + 1, 0} : Moment{day, second};
}

template <class... Values>
std::wstring Format(const char* pattern, Values... values)
{
    char text[400];
    const int length = std::snprintf(text, sizeof text, pattern, values...);
    return std::wstring(text, text + length);
}

}  // namespace

int SimulatedRegional::Compare(std::wstring_view left, std::wstring_view right)
{
    m_gate.Enter("Regional::Compare");
    return CompareFolded(left, right);
}

void SimulatedRegional::AppendSortKey(std::wstring_view text, std::string& key)
{
    m_gate.Enter("Regional::AppendSortKey");
    for (const wchar_t character : text) {
        const auto code = CodeOf(FoldCase(character));
        for (const int shift : {16, 8, 0})
            key += static_cast<char>(code >> shift & 0xFF);
    }
}

std::wstring SimulatedRegional::Lower(std::wstring_view text)
{
    m_gate.Enter("Regional::Lower");
    return Folded(text);
}

std::wstring SimulatedRegional::Number(double value, int decimals)
{
    m_gate.Enter("Regional::Number");
    const double scale = std::pow(10.0, decimals);
    const double rounded = std::fabs(value) < 1e15 ? std::round(value * scale) / scale : value;
    std::wstring text = Format("%.*f", decimals, std::fabs(rounded));
    const std::size_t dot = text.find(L'.');
    for (std::size_t at = dot == text.npos ? text.size() : dot; at > 3;)
        text.insert(at -= 3, L",");
    return rounded < 0 ? L"-" + text : text;
}

std::wstring SimulatedRegional::ShortDate(Date date)
{
    m_gate.Enter("Regional::ShortDate");
    const std::chrono::sys_days day{std::chrono::days{MomentOf(date).day - kDaysTo1970}};
    const std::chrono::year_month_day civil{day};
    return Format("%02u/%02u/%04d", static_cast<unsigned>(civil.day()), static_cast<unsigned>(civil.month()),
                  static_cast<int>(civil.year()));
}

std::wstring SimulatedRegional::LongTime(Date date)
{
    m_gate.Enter("Regional::LongTime");
    const int second = MomentOf(date).second;
    return Format("%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60);
}

std::int64_t SimulatedRegional::LocalFileTime(std::int64_t utc)
{
    m_gate.Enter("Regional::LocalFileTime");
    return utc + std::int64_t{m_offset} * 60 * 10'000'000;
}

std::string SimulatedRegional::Narrow(std::wstring_view text)
{
    m_gate.Enter("Regional::Narrow");
    std::string narrow;
    for (const wchar_t character : text) {
        narrow += CodeOf(character) < 0x100 ? static_cast<char>(character) : '?';
    }
    return narrow;
}

}  // namespace sylvex
