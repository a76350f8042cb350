#include "tests/simulated/simulated_messages.h"

#include "tests/simulated/text.h"

namespace sylvex {

int SimulatedBoxes::Show(WindowHandle owner, const std::wstring& text, const std::wstring& caption, unsigned style)
{
    m_gate.Enter("MessageBoxes::Show");
    const std::wstring& title = caption.empty() ? m_system.Program() : caption;
    m_lines.push_back("[" + OneLine(title) + "] " + OneLine(text) + " (" + std::to_string(style) + ")");
    m_texts.push_back(text);
    m_tools.OpenBox(owner, title);
    if (const auto meanwhile = std::exchange(m_meanwhile, nullptr)) meanwhile();
    m_tools.CloseBox();
    if (m_answers.empty()) return 1;
    const int answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

std::optional<std::wstring> SimulatedReporter::Report(const ErrorReport& report)
{
    m_gate.Enter("Reporter::Report");
    if (m_action) m_reports.push_back(report);
    return m_action;
}

}  // namespace sylvex
