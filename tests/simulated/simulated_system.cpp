#include "tests/simulated/simulated_system.h"

#include "tests/simulated/text.h"

namespace sylvex {

void SimulatedSystem::SetClassRoot(const std::wstring& key, const std::wstring& value)
{
    m_classes[Folded(key)] = value;
}

SystemVersion SimulatedSystem::Version()
{
    m_gate.Enter("System::Version");
    return m_version;
}

int SimulatedSystem::Metric(int number)
{
    m_gate.Enter("System::Metric");
    return MetricValue(number);
}

int SimulatedSystem::MetricValue(int number) const
{
    const auto found = m_metrics.find(number);
    return found == m_metrics.end() ? 0 : found->second;
}

std::optional<std::wstring> SimulatedSystem::ClassRootValue(const std::wstring& key)
{
    m_gate.Enter("System::ClassRootValue");
    m_asks.push_back(Utf8(key));
    const auto found = m_classes.find(Folded(key));
    if (found == m_classes.end()) return std::nullopt;
    return found->second;
}

Point SimulatedSystem::CursorPosition()
{
    m_gate.Enter("System::CursorPosition");
    return m_cursor;
}

void SimulatedSystem::ResetPointer()
{
    m_gate.Enter("System::ResetPointer");
}

void SimulatedSystem::WithInputOf(std::uint32_t time, const std::function<void()>& body)
{
    m_inputTime = time;
    body();
    m_inputTime.reset();
}

std::wstring SimulatedSystem::ProgramName()
{
    m_gate.Enter("System::ProgramName");
    return m_program;
}

}  // namespace sylvex
