#include "bench/bench.h"

#include <string>
#include <string_view>
#include <vector>

#include "filelist/file_types.h"
#include "filelist/formatting.h"
#include "filelist/list_binding.h"
#include "platform/text.h"

namespace sylvex::bench {

namespace {

constexpr int kCalls = 200000;

template <class Body>
double PerCall(Body&& body)
{
    return Median([&] {
        const double start = Now();
        for (int i = 0; i < kCalls; ++i)
            body(i);
        return (Now() - start) * 1000000.0 / kCalls;
    });
}

/// A procedure beside the same statements without a trap.
template <class With, class Without>
void Compare(const char* name, With&& with, Without&& without)
{
    const double trapped = PerCall(with);
    Print({name, trapped, PerCall(without), 0, "ns"});
}

/// Where results go, so that none is left out.
volatile std::size_t g_sink = 0;

void Use(std::size_t value)
{
    g_sink = g_sink + value;
}

void PathProcedures(Subject& subject)
{
    FolderTree& paths = subject.Control().Folders();
    Node& node = subject.NodeOf(ScratchFolder());
    const std::wstring path = node.FullPath();
    const std::wstring folder = ScratchFolder() + L"\\";
    const std::wstring_view name = L"a report of the year.txt";
    FileSystem& files = subject.Control().Parts().platform.files;
    Compare(
        "BuildFullPath with and without its trap", [&](int) { Use(paths.BuildFullPath(&node).size()); },
        [&](int) { Use(paths.PathOf(node.FullPath(), node.Text()).size()); });
    Compare(
        "GetExt", [&](int) { Use(paths.GetExt(name).size()); },
        [&](int) {
            const std::size_t dot = name.rfind(L'.');
            Use(LowerText(subject.Control().Parts().platform.regional, name.substr(dot + 1)).size());
        });
    Compare(
        "QualifyPath", [&](int) { Use(paths.QualifyPath(path).size()); },
        [&](int) { Use((path.ends_with(L'\\') ? path : path + L'\\').size()); });
    const double looked = Median([&] {
        const double start = Now();
        for (int i = 0; i < 200; ++i)
            Use(paths.hasSubDirectory(folder));
        return (Now() - start) * 1000000.0 / 200;
    });
    const double bare = Median([&] {
        const double start = Now();
        for (int i = 0; i < 200; ++i) {
            const auto search = files.Search(folder + L"*.*");
            bool has = false;
            for (bool more = search != nullptr; more && !has; more = search->Next())
                has = !search->Entry().name.starts_with(L'.') && search->Entry().IsDirectory();
            Use(has);
        }
        return (Now() - start) * 1000000.0 / 200;
    });
    Print({"hasSubDirectory", looked, bare, 0, "ns"});
}

void TreeProcedures(Subject& subject)
{
    ControlState& state = subject.Control().State();
    TreeSelect checks(subject.Control().Parts(), state.checks);
    Node& node = *subject.NodeOf(ScratchFolder()).FirstSibling();
    Compare(
        "TreeCheckSibling", [&](int) { Use(checks.TreeCheckSibling(node, false)); },
        [&](int) {
            bool same = true;
            for (const Node* at = node.FirstSibling(); same && at != nullptr; at = at->Next())
                same = !at->Bold() && !at->Checked();
            Use(same);
        });
}

void TypeProcedures(Subject& subject)
{
    constexpr int kTypes = 64;
    ControlState& state = subject.Control().State();
    std::vector<FTs>& records = state.list.TypeNew;
    for (int i = 0; i < kTypes; ++i)
        records.push_back({L"e" + std::to_wstring(100 + i), {}, 0});
    FileTypes types(subject.Control().Parts(), state.list);
    const std::wstring sought = records[kTypes / 3].Ext;
    Compare(
        "BinarySearchTypeNew", [&](int) { Use(static_cast<std::size_t>(types.BinarySearchTypeNew(sought))); },
        [&](int) {
            int lo = 1;
            int hi = static_cast<int>(records.size()) - 1;
            int order = 1;
            while (hi >= lo && order != 0) {
                const int mid = (lo + hi) / 2;
                order = sought.compare(records[static_cast<std::size_t>(mid)].Ext);
                (order > 0 ? lo : hi) = order > 0 ? mid + 1 : mid - 1;
            }
            Use(static_cast<std::size_t>(lo));
        });
}

void ListProcedures(Subject& subject)
{
    ControlState& state = subject.Control().State();
    Regional& regional = subject.Control().Parts().platform.regional;
    const DeclaresModule declares(subject.Control().Parts().platform);
    FolderTree& paths = subject.Control().Folders();
    ListBinding binding(subject.Control().Parts(), paths, state.list);
    subject.BindList();
    const Date date{46342.5};
    Compare(
        "UTCCurrToVbDate",
        [&](int i) { Use(static_cast<std::size_t>(UTCCurrToVbDate(declares, regional, {i + 1ll}, false).days)); },
        [&](int i) { Use(static_cast<std::size_t>(Currency{i + 1ll}.Value() / 86'400'000 - 109'205)); });
    Compare(
        "FormGenDatTim", [&](int) { Use(FormGenDatTim(state, regional, date).size()); },
        [&](int) { Use((regional.ShortDate(date) + L' ' + regional.LongTime(date)).size()); });
    Compare(
        "GetAttrString", [&](int i) { Use(GetAttrString(state, static_cast<std::uint32_t>(i)).size()); },
        [&](int i) {
            constexpr std::wstring_view kLetters = L"rhsvdalnt?lco?e";
            std::wstring text(kLetters.size(), L'.');
            for (std::size_t bit = 0; bit < kLetters.size(); ++bit)
                if ((i >> bit & 1) != 0) text[bit] = kLetters[bit];
            Use(text.size());
        });
    const std::wstring key = L"siz2";
    Compare(
        "LVIdx", [&](int) { Use(static_cast<std::size_t>(binding.LVIdx(key))); },
        [&](int) { Use(static_cast<std::size_t>(state.list.BoundList()->SubItemIndex(key))); });
}

}  // namespace

void TrapRows()
{
    Subject subject;
    const Module& module = subject.Control().State();
    Compare(
        "an empty procedure with and without the trap",
        [&](int i) {
            Trapped(module, L"Empty", VARIABLES(i), kNone, [&](int& line) {
                line = 1;
                Use(static_cast<std::size_t>(i));
            });
        },
        [&](int i) { Use(static_cast<std::size_t>(i)); });
    PathProcedures(subject);
    TreeProcedures(subject);
    TypeProcedures(subject);
    ListProcedures(subject);
}

}  // namespace sylvex::bench
