#pragma once

#include "platform/regional.h"

namespace sylvex {

/// The user's regional settings, asked anew at each call.
class Win32Regional : public Regional {
public:
    int Compare(std::wstring_view left, std::wstring_view right) override;
    void AppendSortKey(std::wstring_view text, std::string& key) override;
    std::wstring Lower(std::wstring_view text) override;
    /// Raises 5 for a value that is no number of the platform's.
    std::wstring Number(double value, int decimals) override;
    /// Both raise 5 for a date outside the platform's calendar.
    std::wstring ShortDate(Date date) override;
    std::wstring LongTime(Date date) override;
    std::int64_t LocalFileTime(std::int64_t utc) override;
    std::string Narrow(std::wstring_view text) override;
};

/// As Regional::AppendSortKey, for other parts of this back end.
void AppendSortKeyOf(std::wstring_view text, std::string& key);
/// As Regional::Compare; a text of nothing at all counts as an empty one.
int CompareTexts(std::wstring_view left, std::wstring_view right);

}  // namespace sylvex
