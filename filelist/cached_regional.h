#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "platform/regional.h"

namespace sylvex {

/// The user's regional services for the length of one list: the texts of a day, of a second of the day and of a rounded
/// number are asked for once. Not to outlive the services that it is given.
class CachedRegional final : public Regional {
public:
    explicit CachedRegional(Regional& regional) : m_regional(regional) {}

    int Compare(std::wstring_view left, std::wstring_view right) override { return m_regional.Compare(left, right); }
    void AppendSortKey(std::wstring_view text, std::string& key) override { m_regional.AppendSortKey(text, key); }
    std::wstring Lower(std::wstring_view text) override { return m_regional.Lower(text); }
    std::wstring Number(double value, int decimals) override;
    std::wstring ShortDate(Date date) override;
    std::wstring LongTime(Date date) override;
    std::int64_t LocalFileTime(std::int64_t utc) override { return m_regional.LocalFileTime(utc); }
    std::string Narrow(std::wstring_view text) override { return m_regional.Narrow(text); }

    /// The date as yyyymmddhhnnss; it orders as text like the dates do.
    std::wstring Stamp(Date date);

private:
    Regional& m_regional;
    std::unordered_map<int, std::wstring> m_dates;
    std::unordered_map<int, std::wstring> m_times;
    std::unordered_map<int, std::wstring> m_stamps;
    std::unordered_map<std::int64_t, std::wstring> m_numbers;
};

/// The last part of a stamp: hhnnss.
constexpr std::size_t kStampDateLength = 8;

}  // namespace sylvex
