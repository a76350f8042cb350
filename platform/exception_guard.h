#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace sylvex {

/// Who turns the processor exceptions met by a guard into C++ exceptions. Must exist as long as the program.
struct ExceptionListener {
    /// Whether exceptions of the calling thread are to be converted. Asked while one is dispatched; must not throw.
    bool (*wanted)();
    /// Throws the C++ exception that stands for an exception with this code.
    void (*raise)(std::uint32_t code);
};

/// Runs `run(data)`. A processor exception inside of it that nobody nearer handles is thrown by the listener as if
/// the instruction at fault had thrown it.
using ExceptionGuard = void (*)(void (*run)(void*), void* data);

/// The guard of the simulated platform and of any program that installs none: exceptions are left alone.
inline void RunUnguarded(void (*run)(void*), void* data)
{
    run(data);
}

/// The guard in force in this process.
inline std::atomic<ExceptionGuard> g_exceptionGuard = &RunUnguarded;

namespace guarded {

template <class Body>
void Run(void* body)
{
    (*static_cast<Body*>(body))();
}

template <class Body>
void UnderGuard(Body& body)
{
    g_exceptionGuard.load(std::memory_order_relaxed)(&Run<Body>, std::addressof(body));
}

/// Made where it stays, so that what the body gives is not moved on its way.
template <class Result>
struct Made {
    template <class Body>
    explicit Made(Body& body) : value(body())
    {
    }
    Result value;
};

}  // namespace guarded

/// Runs `body` under the guard in force and gives what it gives.
template <class Body>
std::invoke_result_t<Body&> Guarded(Body&& body)
{
    using Result = std::invoke_result_t<Body&>;
    if constexpr (std::is_void_v<Result>) {
        guarded::UnderGuard(body);
    } else if constexpr (std::is_reference_v<Result>) {
        std::remove_reference_t<Result>* result = nullptr;
        auto keep = [&] { result = std::addressof(body()); };
        guarded::UnderGuard(keep);
        return static_cast<Result>(*result);
    } else {
        std::optional<guarded::Made<Result>> result;
        auto keep = [&] { result.emplace(body); };
        guarded::UnderGuard(keep);
        return std::move(result->value);
    }
}

}  // namespace sylvex
