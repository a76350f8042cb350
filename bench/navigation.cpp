#include "bench/bench.h"

namespace sylvex::bench {

namespace {

constexpr int kFolders = 10;
constexpr int kEntries = 100000;

/// A million nodes, which no folder on the disk stands behind, before the real ones.
void LoadMillion(Subject& subject)
{
    Nodes& nodes = subject.Control().Tree().GetNodes();
    Node& above = nodes.Item(L"MyComputer");
    for (int folder = 0; folder < kFolders; ++folder) {
        Node& parent = nodes.AddChild(above, L"loaded" + std::to_wstring(folder), 0);
        for (int i = 0; i < kEntries; ++i)
            nodes.AddChild(parent, L"entry" + std::to_wstring(i) + L".txt", 0);
    }
}

/// One pass over the texts of the nodes, each compared with a name.
double FloorPass(Node& root)
{
    std::vector<const std::wstring*> texts;
    for (Node* folder = root.Child(); folder != nullptr; folder = folder->Next())
        for (Node* entry = folder->Child(); entry != nullptr; entry = entry->Next())
            texts.push_back(&entry->Text());
    const std::wstring wanted = L"NAME";
    return Median([&] {
        const double start = Now();
        volatile int met = 0;
        for (const std::wstring* const text : texts)
            if (CompareStringOrdinal(text->c_str(), static_cast<int>(text->size()), wanted.c_str(),
                                     static_cast<int>(wanted.size()), TRUE) == CSTR_EQUAL)
                met = met + 1;
        return Now() - start;
    });
}

/// What painting the whole tree costs, which each of these ends with.
double PaintOf(Subject& subject)
{
    return Median([&] { return subject.Paint(); });
}

/// A list of one row, selected.
void SelectRow(HWND list, std::wstring text)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_STATE;
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.pszText = text.data();
    ListView_InsertItem(list, &item);
}

void MillionRows()
{
    Subject subject;
    Sylvex& control = subject.Control();
    const std::wstring folder = FlatFolder(1000);
    LoadMillion(subject);
    Node& opened = subject.NodeOf(folder);
    subject.Open(opened);
    Node& wanted = *opened.Child();
    const std::wstring path = folder + L"\\" + wanted.Text();
    const double floor = FloorPass(control.Tree().GetNodes().Item(L"MyComputer"));
    const auto go = [&] {
        const double start = Now();
        control.LetPath(path);
        UpdateWindow(subject.TreeHandle());
        return Now() - start;
    };
    const double painted = Median(go);
    if (control.Tree().SelectedItem() != &wanted) throw ElementNotFound();
    Print({"Path among a million loaded nodes, with the paint", painted, floor + PaintOf(subject), 0});
    ShowWindow(GetParent(subject.TreeHandle()), SW_HIDE);
    Print({"the same in a hidden window (at most 50 ms)", Median(go), floor, 0});
    ShowWindow(GetParent(subject.TreeHandle()), SW_SHOWNA);
    const double start = Now();
    control.Enumerate();
    const double again = Now() - start;
    Subject fresh;
    Print({"Enumerate after a million nodes, and with a fresh tree", again, Median([&] {
               const double begun = Now();
               fresh.Control().Enumerate();
               return Now() - begun;
           }),
           0});
}

void SelectedRowRows()
{
    Subject subject;
    Sylvex& control = subject.Control();
    const HWND list = subject.BindList();
    const std::wstring folder = FlatFolder(kEntries);
    Node& node = subject.NodeOf(folder);
    subject.Open(node);
    Node* last = node.Child();
    while (last->Next() != nullptr)
        last = last->Next();
    SelectRow(list, folder + L"\\" + last->Text());
    const double floor = FloorPass(*node.Parent()) + PaintOf(subject);
    const auto timed = [&](const std::function<void()>& run) {
        return Median([&] {
            const double start = Now();
            run();
            UpdateWindow(subject.TreeHandle());
            return Now() - start;
        });
    };
    Print({"SetNode to the last of 100000 entries", timed([&] { control.SetNode(); }), floor, 0});
    bool ticked = false;
    Print({"SetNodeChecked on the last of 100000 entries",
           timed([&] { control.SetNodeChecked(ticked = !ticked, false); }), floor, 0});
}

}  // namespace

void NavigationRows()
{
    MillionRows();
    SelectedRowRows();
}

}  // namespace sylvex::bench
