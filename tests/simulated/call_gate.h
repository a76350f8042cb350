#pragma once

#include <optional>
#include <string>

#include "platform/runtime_error.h"

namespace sylvex {

/// Stands at the entrance of every call of the simulated platform that may fail; counts them and fails a chosen one.
class CallGate {
public:
    /// Notes the call; raises the error that FailCall set when its turn has come.
    void Enter(const char* call)
    {
        ++m_calls;
        if (!m_error || m_calls != m_failing) return;
        m_failed = call;
        const RuntimeError error = *m_error;
        m_error.reset();
        throw error;
    }

    /// Makes the `number`-th call from now (1: the next one) raise `error`, once.
    void FailCall(long number, RuntimeError error = OutOfMemory())
    {
        m_failing = m_calls + number;
        m_failed.clear();
        m_error = std::move(error);
    }

    /// Takes back what FailCall asked for and has not happened yet.
    void FailNone() { m_error.reset(); }
    /// How many calls there have been.
    long Calls() const { return m_calls; }
    /// The call that was made to fail, such as "Shell::FileIcon"; empty when none was since the last FailCall.
    const std::string& Failed() const { return m_failed; }

private:
    long m_calls = 0;
    long m_failing = 0;
    std::optional<RuntimeError> m_error;
    std::string m_failed;
};

}  // namespace sylvex
