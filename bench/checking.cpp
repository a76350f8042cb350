#include "bench/bench.h"

namespace sylvex::bench {

namespace {

/// The marks of 100,000 rows as a program would keep them, and the visible rows painted.
double FloorTick(BareTree& tree, std::vector<unsigned char>& marks)
{
    return Median([&] {
        const double start = Now();
        for (unsigned char& mark : marks)
            mark ^= 1;
        HTREEITEM item = TreeView_GetFirstVisible(tree.Window());
        DefWindowProcW(tree.Window(), WM_SETREDRAW, FALSE, 0);
        for (UINT row = 0; item != nullptr && row < TreeView_GetVisibleCount(tree.Window()); ++row) {
            TreeView_SetItemState(tree.Window(), item, INDEXTOSTATEIMAGEMASK(marks[0] + 1u), TVIS_STATEIMAGEMASK);
            item = TreeView_GetNextVisible(tree.Window(), item);
        }
        DefWindowProcW(tree.Window(), WM_SETREDRAW, TRUE, 0);
        tree.Paint();
        return Now() - start;
    });
}

/// The ticking of one node, with everything loaded below it and the visible rows painted; milliseconds.
double OursTick(Subject& subject, Node& node, bool checked)
{
    subject.Control().State().navigation.InSetNodeChecked = true;  // the tick alone, without building the list
    return Median([&] {
        node.SetChecked(!checked);
        subject.Paint();
        const double start = Now();
        node.SetChecked(checked);
        subject.Control().CheckNodeSelective(&node);
        subject.Paint();
        return Now() - start;
    });
}

void DeepRows(double floor)
{
    constexpr int kLevels = 100;
    Subject subject;
    subject.BindList();
    std::wstring path = DeepFolder();
    Node& top = subject.NodeOf(path);
    for (int depth = 0; depth < kLevels; ++depth)
        path += L"\\d";
    Node& deepest = subject.NodeOf(path);
    Print({"tick the top of 100 levels of 1000 files (at most 80 ms)", OursTick(subject, top, true), floor, 2});
    Print({"tick the deepest of 100 levels of 1000 files", OursTick(subject, deepest, true), floor, 2});
}

}  // namespace

void CheckingRows()
{
    const std::wstring folder = FlatFolder(100000);
    BareTree bare(true);
    bare.Fill(folder, false);
    std::vector<unsigned char> marks(100000);
    const double floor = FloorTick(bare, marks);
    Subject subject;
    subject.BindList();
    Node& node = subject.NodeOf(folder);
    subject.Open(node);
    for (const bool checked : {true, false}) {
        const double ours = OursTick(subject, node, checked);
        Print({checked ? "tick a node over 100000 (at most 80 ms)" : "untick a node over 100000 (at most 80 ms)", ours,
               floor, 2});
    }
    DeepRows(floor);
}

}  // namespace sylvex::bench
