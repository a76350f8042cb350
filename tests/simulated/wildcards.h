#pragma once

#include <string>
#include <string_view>

namespace sylvex {

/// A pattern of file names as the platform's search reads it: "*.*" is every name, with or without a dot; a dot before
/// a wildcard also matches the end of the name; "?" before a dot or the end may match nothing.
class Wildcards {
public:
    explicit Wildcards(std::wstring_view pattern);
    bool Matches(std::wstring_view name) const;
    static bool Present(std::wstring_view pattern) { return pattern.find_first_of(L"*?") != pattern.npos; }

private:
    bool MatchFrom(std::size_t step, std::wstring_view name, std::size_t at) const;
    std::wstring m_steps;
};

}  // namespace sylvex
