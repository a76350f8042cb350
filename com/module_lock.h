#pragma once

#include <atomic>

namespace sylvex {

/// Keeps the component in memory while it exists.
class ModuleLock {
public:
    ModuleLock() { Add(); }
    ModuleLock(const ModuleLock&) : ModuleLock() {}
    ModuleLock& operator=(const ModuleLock&) = default;
    ~ModuleLock() { Release(); }

    static void Add() { ++s_count; }
    static void Release() { --s_count; }
    /// Number of locks in force in this module.
    static long Count() { return s_count; }

private:
    static inline std::atomic<long> s_count{0};
};

}  // namespace sylvex
