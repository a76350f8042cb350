#include "bench/bench.h"

namespace sylvex::bench {

namespace {

constexpr int kCalls = 1000000;

template <class Body>
double PerCall(Body&& body)
{
    return Median([&] {
        const double start = Now();
        for (int i = 0; i < kCalls; ++i) body(i);
        return (Now() - start) * 1000000.0 / kCalls;
    });
}

}  // namespace

void TrapRows()
{
    Subject subject;
    FolderTree paths(subject.Control().State());
    Node& node = subject.NodeOf(ScratchFolder());
    const std::wstring fullPath = node.FullPath();
    std::size_t length = 0;
    const double with = PerCall([&](int) { length += paths.BuildFullPath(&node).size(); });
    const double without = PerCall([&](int) { length += paths.PathOf(node.FullPath(), node.Text()).size(); });
    Print({"BuildFullPath with and without its trap", with, without, 0, "ns"});
    volatile int sink = 0;
    const Instance& module = subject.Control().State();
    const double trapped = PerCall([&](int i) {
        Trapped(module, L"Empty", VARIABLES(i), kNone, [&](int& line) {
            line = 1;
            sink = sink + i;
        });
    });
    const double bare = PerCall([&](int i) { sink = sink + i; });
    Print({"an empty procedure with and without the trap", trapped, bare, 0, "ns"});
    if (length == 0) throw ElementNotFound();
}

}  // namespace sylvex::bench
