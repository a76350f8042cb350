#pragma once

#include <string>
#include <string_view>

#include "platform/types.h"

namespace sylvex {

/// The user's regional services: comparison, letter case, number, date and time texts.
class Regional {
public:
    virtual ~Regional() = default;
    /// Text comparison without regard to letter case: below 0, 0 or above 0.
    virtual int Compare(std::wstring_view left, std::wstring_view right) = 0;
    /// Appends bytes to `key` that order like Compare when compared as bytes.
    virtual void AppendSortKey(std::wstring_view text, std::string& key) = 0;
    virtual std::wstring Lower(std::wstring_view text) = 0;
    /// A number with `decimals` decimals, grouping and separators of the user.
    virtual std::wstring Number(double value, int decimals) = 0;
    virtual std::wstring ShortDate(Date date) = 0;
    virtual std::wstring LongTime(Date date) = 0;
    /// A file time (100 ns since 1601, UTC) in local time, by the platform's own rule.
    virtual std::int64_t LocalFileTime(std::int64_t utc) = 0;
    /// The text in the narrow code page; what it cannot hold becomes the code page's default character.
    virtual std::string Narrow(std::wstring_view text) = 0;
};

}  // namespace sylvex
