#include "bench/bench.h"

#include <psapi.h>
#include <shellapi.h>

#include <cstdio>
#include <memory>

namespace sylvex::bench {

namespace {

double OursOpen(const std::wstring& folder, bool iconsByType = false)
{
    return Median([&] {
        Subject subject(iconsByType);
        Node& node = subject.NodeOf(folder);
        subject.Paint();
        return subject.Open(node);
    });
}

double FloorOpen(const std::wstring& folder, bool buttonsAskedWhenPainted)
{
    return Median([&] {
        BareTree tree(true);
        return tree.Fill(folder, buttonsAskedWhenPainted);
    });
}

double WorkingSet()
{
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.WorkingSetSize);
}

/// Bytes of the process for each entry of the folder, as `fill` opens it. What `fill` makes lives until the end.
template <class Fill>
double BytesPerEntry(int entries, Fill&& fill)
{
    const double before = WorkingSet();
    const auto kept = fill();
    return (WorkingSet() - before) / entries;
}

/// The shell's answer once per type, as a program with icons by type needs it.
double ShellQueries(const std::wstring& folder, int types)
{
    const double start = Now();
    for (int i = 0; i < types; ++i) {
        SHFILEINFOW info{};
        wchar_t name[40];
        std::swprintf(name, 40, L"\\file%06d.x%d", i * 7919 % 10000, i);
        SHGetFileInfoW((folder + name).c_str(), 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON);
        if (info.hIcon != nullptr) DestroyIcon(info.hIcon);
    }
    return Now() - start;
}

}  // namespace

void OpeningRows()
{
    double perEntry[2] = {};
    int at = 0;
    for (const int files : {1000, 10000, 100000}) {
        const std::wstring folder = FlatFolder(files);
        const Row row{"open a folder of " + std::to_string(files) + " files", OursOpen(folder),
                      FloorOpen(folder, false), 1.25};
        Print(row);
        if (files > 1000) perEntry[at++] = row.ours / files;
    }
    Print({"cost of one file at 100000 against at 10000", perEntry[1] * 1000, perEntry[0] * 1000, 1.2, "us"});
    for (const int folders : {1000, 10000}) {
        const std::wstring folder = FolderOfFolders(folders);
        Print({"open a folder of " + std::to_string(folders) + " subfolders", OursOpen(folder), FloorOpen(folder, true),
               1.5});
    }
    const std::wstring typed = FlatFolder(10000);
    Print({"open a folder of 10000 files, icons of 200 types", OursOpen(typed, true),
           FloorOpen(typed, false) + Median([&] { return ShellQueries(typed, 200); }), 1.3});
    const std::wstring flat = FlatFolder(100000);
    const double bare = BytesPerEntry(100000, [&] {
        auto tree = std::make_unique<BareTree>(true);
        tree->Fill(flat, false);
        tree->items = {};
        return tree;
    });
    const double ours = BytesPerEntry(100000, [&] {
        auto subject = std::make_unique<Subject>();
        subject->Open(subject->NodeOf(flat));
        return subject;
    });
    Print({"memory of one node among 100000 (at most 500 bytes)", ours, bare, 0, "bytes"});
}

}  // namespace sylvex::bench
