#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <vector>

#include "bench/bench.h"
#include "com/error.h"

using namespace sylvex;

namespace {

struct Group {
    std::string_view name;
    void (*rows)();
};
constexpr Group kGroups[] = {{"trap", bench::TrapRows},      {"open", bench::OpeningRows},
                             {"check", bench::CheckingRows}, {"list", bench::ListRows},
                             {"late", bench::LateListRows},  {"navigate", bench::NavigationRows}};

}  // namespace

/// Without an argument all groups of rows, otherwise those named.
int main(int count, char** arguments)
{
    const std::vector<std::string_view> wanted(arguments + 1, arguments + count);
    for (const std::string_view name : wanted)
        if (std::ranges::find(kGroups, name, &Group::name) == std::end(kGroups)) {
            std::printf("there is no group %s\n", name.data());
            return 2;
        }
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    CoInitialize(nullptr);
    std::printf("%-58s %10s %10s %-5s %6s\n", "", "ours", "floor", "", "ratio");
    try {
        for (const Group& group : kGroups) {
            if (wanted.empty() || std::ranges::find(wanted, group.name) != wanted.end()) group.rows();
        }
    } catch (const RuntimeError& error) {
        std::printf("stopped by error %ld: %ls\n", error.number, error.description.c_str());
        return 1;
    } catch (const ComError& error) {
        std::printf("stopped by a call of the component: 0x%08lX\n", static_cast<unsigned long>(error.result));
        return 1;
    }
    std::printf("benchmark finished\n");
    return 0;
}
