#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/system.h"
#include "tests/simulated/call_gate.h"

namespace sylvex {

/// A machine of the NT family, version 6.1, with drag thresholds of 4 pixels and a host program named "Host".
class SimulatedSystem final : public System {
public:
    explicit SimulatedSystem(CallGate& gate) : m_gate(gate) {}
    void SetVersion(SystemVersion version) { m_version = version; }
    /// The default value of a key below the class root, such as ".txt".
    void SetClassRoot(const std::wstring& key, const std::wstring& value);
    /// The pointer, in screen pixels.
    void SetCursor(Point cursor) { m_cursor = cursor; }
    const std::wstring& Program() const { return m_program; }
    int MetricValue(int number) const;
    /// The keys that were asked for, in order.
    const std::vector<std::string>& ClassRootAsks() const { return m_asks; }
    /// The clock, which the desktop's timers keep; input is made when it is handled.
    void SetClock(std::function<std::uint32_t()> clock) { m_clock = std::move(clock); }
    /// While `body` runs, the input being handled was made at `time`.
    void WithInputOf(std::uint32_t time, const std::function<void()>& body);

    SystemVersion Version() override;
    int Metric(int number) override;
    std::optional<std::wstring> ClassRootValue(const std::wstring& key) override;
    Point CursorPosition() override;
    void ResetPointer() override;
    std::uint32_t Now() override { return m_clock ? m_clock() : 0; }
    std::uint32_t InputTime() override { return m_inputTime.value_or(Now()); }
    std::wstring ProgramName() override;

private:
    CallGate& m_gate;
    SystemVersion m_version;
    std::unordered_map<int, int> m_metrics{{68, 4}, {69, 4}};
    std::unordered_map<std::wstring, std::wstring> m_classes;
    std::vector<std::string> m_asks;
    Point m_cursor;
    std::function<std::uint32_t()> m_clock;
    std::optional<std::uint32_t> m_inputTime;
    std::wstring m_program = L"Host";
};

}  // namespace sylvex
