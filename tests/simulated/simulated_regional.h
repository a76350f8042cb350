#pragma once

#include "platform/regional.h"
#include "tests/simulated/call_gate.h"

namespace sylvex {

/// A user with "," between groups, "." before decimals, dates dd/mm/yyyy, times hh:nn:ss and Latin-1 as code page.
class SimulatedRegional final : public Regional {
public:
    explicit SimulatedRegional(CallGate& gate) : m_gate(gate) {}
    /// Local time less UTC, in minutes; at first 0.
    void SetUtcOffset(int minutes) { m_offset = minutes; }

    int Compare(std::wstring_view left, std::wstring_view right) override;
    void AppendSortKey(std::wstring_view text, std::string& key) override;
    std::wstring Lower(std::wstring_view text) override;
    std::wstring Number(double value, int decimals) override;
    std::wstring ShortDate(Date date) override;
    std::wstring LongTime(Date date) override;
    std::int64_t LocalFileTime(std::int64_t utc) override;
    std::string Narrow(std::wstring_view text) override;

private:
    CallGate& m_gate;
    int m_offset = 0;
};

}  // namespace sylvex
