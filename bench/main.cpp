#include <cstdio>

#include "bench/bench.h"

using namespace sylvex;

int main()
{
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    CoInitialize(nullptr);
    std::printf("%-58s %10s %10s %-5s %6s\n", "", "ours", "floor", "", "ratio");
    try {
        bench::TrapRows();
        bench::OpeningRows();
        bench::CheckingRows();
        bench::ListRows();
    } catch (const RuntimeError& error) {
        std::printf("stopped by error %ld: %ls\n", error.number, error.description.c_str());
        return 1;
    }
    std::printf("benchmark finished\n");
    return 0;
}
