#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <string_view>

#include "host/layout.h"

namespace sylvex::host {

/// The lines of the log, in a list box that tabs are expanded in. Old lines go when there are too many.
class EventLog {
public:
    /// `box` is the list box; its font, which the metrics are of, must be set.
    void Attach(HWND box, const Metrics& metrics);
    /// Adds a line: the time, what happened, and the details.
    void Add(std::wstring_view what, std::wstring_view details);
    /// As Add, but takes the place of the last line when that came from here with the same `what`.
    void AddLatest(std::wstring_view what, std::wstring_view details);

private:
    void Append(const std::wstring& line);
    void Widen(const std::wstring& line);

    HWND m_box = nullptr;
    /// Where the texts behind the tabs begin, in pixels.
    std::array<INT, 2> m_tabs{};
    int m_extent = 0;
    std::wstring m_latest;
    int m_repeats = 0;
};

}  // namespace sylvex::host
