#pragma once

#include <string>
#include <vector>

#include "platform/network.h"
#include "tests/simulated/call_gate.h"

namespace sylvex {

/// A network of which every server answers but those that a test has silenced.
class SimulatedNetwork final : public Network {
public:
    explicit SimulatedNetwork(CallGate& gate) : m_gate(gate) {}
    /// From now on nothing below this path answers; letter case counts.
    void Silence(const std::wstring& path) { m_silent.push_back(path); }

    bool Answers(const std::wstring& path) override
    {
        m_gate.Enter("Network::Answers");
        for (const std::wstring& silent : m_silent)
            if (path.starts_with(silent)) return false;
        return true;
    }

private:
    CallGate& m_gate;
    std::vector<std::wstring> m_silent;
};

}  // namespace sylvex
