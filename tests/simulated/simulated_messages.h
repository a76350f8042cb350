#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/messages.h"
#include "tests/simulated/simulated_boxtools.h"
#include "tests/simulated/simulated_system.h"

namespace sylvex {

/// Message boxes that close by themselves.
class SimulatedBoxes final : public MessageBoxes {
public:
    SimulatedBoxes(CallGate& gate, const SimulatedSystem& system, SimulatedBoxTools& tools)
        : m_gate(gate), m_system(system), m_tools(tools)
    {
    }
    /// The button for the next box that has no answer yet; boxes without one give 1 (OK).
    void Answer(int button) { m_answers.push_back(button); }
    /// Runs once, while the next box is open: what the user or the host does meanwhile.
    void WhileNextOpen(std::function<void()> meanwhile) { m_meanwhile = std::move(meanwhile); }
    /// One line a box, in the order of opening: "[caption] text (style)".
    const std::vector<std::string>& Lines() const { return m_lines; }
    /// The same lines, and forgets them.
    std::vector<std::string> TakeLines() { return std::exchange(m_lines, {}); }
    /// The texts alone, as they are; forgets them likewise.
    std::vector<std::wstring> TakeTexts() { return std::exchange(m_texts, {}); }

    int Show(WindowHandle owner, const std::wstring& text, const std::wstring& caption, unsigned style) override;

private:
    CallGate& m_gate;
    const SimulatedSystem& m_system;
    SimulatedBoxTools& m_tools;
    std::deque<int> m_answers;
    std::function<void()> m_meanwhile;
    std::vector<std::string> m_lines;
    std::vector<std::wstring> m_texts;
};

/// The external error reporter: absent until a test installs it.
class SimulatedReporter final : public Reporter {
public:
    explicit SimulatedReporter(CallGate& gate) : m_gate(gate) {}
    /// From now on reports are kept and answered with `action`.
    void Install(const std::wstring& action) { m_action = action; }
    const std::vector<ErrorReport>& Reports() const { return m_reports; }

    std::optional<std::wstring> Report(const ErrorReport& report) override;

private:
    CallGate& m_gate;
    std::optional<std::wstring> m_action;
    std::vector<ErrorReport> m_reports;
};

}  // namespace sylvex
