#include "tests/soak/soak_tree.h"

#include <algorithm>

namespace sylvex::test {

namespace {

constexpr const wchar_t* kNames[] = {L"s", L"t", L"a", L"B", L"two words", L"d.txt", L"\u00DC\u0436 \u4E2D", L"x.y"};

bool Holds(const std::map<std::wstring, std::string>& shown, const std::vector<Value>& rows)
{
    return std::all_of(rows.begin(), rows.end(),
                       [&](const Value& row) { return shown.contains(row.Get(L"Text").Text()); });
}

/// Runs a program of the system below the emulated one, where there is such a thing. Windows' own call makes no links
/// there.
void RunBelow(const std::wstring& program, const std::wstring& arguments)
{
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    std::wstring line = program + L" " + arguments;
    const std::wstring path = L"\\\\?\\unix\\bin\\" + program;
    if (!CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        return;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

/// The path that such a program knows; empty where there is none.
std::wstring PathBelow(const std::wstring& path)
{
    const auto ask = reinterpret_cast<char* (*)(const wchar_t*)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    const char* const found = ask ? ask(path.c_str()) : nullptr;
    return found ? std::wstring(found, found + std::string_view(found).size()) : std::wstring();
}

}  // namespace

SoakTree::SoakTree(unsigned seed) : m_random(seed)
{
    RemoveBranch(base);
    MakeBranch(base, 0);
    if (OneIn(2)) MakeLink();
    if (OneIn(2)) control.Put(L"FileFilter", L"*.txt");
    LoadAnew();
}

SoakTree::~SoakTree()
{
    if (m_link.empty()) return;
    // Not by looking into folders, which would go through the link.
    RunBelow(L"rm", L"-rf " + PathBelow(base));
    Until([this] { return GetFileAttributesW(base.c_str()) == INVALID_FILE_ATTRIBUTES; });
    RemoveBranch(m_linked);
}

void SoakTree::MakeLink()
{
    RemoveBranch(m_linked);
    MakeBranch(m_linked, 1);
    const std::wstring link = base + L"\\link";
    if (!PathBelow(base).empty()) RunBelow(L"ln", L"-s " + PathBelow(m_linked) + L" " + PathBelow(base) + L"/link");
    if (Until([&] { return GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES; }))
        m_link = Census(m_linked).top;
}

int SoakTree::Any(int limit)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(limit));
}

void SoakTree::Mark(const std::wstring& folder)
{
    WriteBytes(folder + L"\\" + Census::kMark, "folder " + std::to_string(++m_made));
    SetFileAttributesW((folder + L"\\" + Census::kMark).c_str(), FILE_ATTRIBUTE_HIDDEN);
}

/// Few names for many folders, so that one is often in the way of another, and in each folder a file that no other has.
void SoakTree::MakeBranch(const std::wstring& folder, int depth)
{
    constexpr int kDeepest = 2;
    Mark(folder);
    WriteBytes(folder + L"\\" + std::to_wstring(m_made) + L".txt", "file " + std::to_string(m_made));
    for (const wchar_t* name : kNames) {
        const std::wstring path = folder + L"\\" + name;
        if (depth > 0 && !OneIn(3)) continue;
        if (depth == kDeepest || OneIn(5))
            WriteBytes(path, "file " + std::to_string(++m_made));
        else
            MakeBranch(path, depth + 1);
    }
}

void SoakTree::LoadAnew()
{
    m_rows.clear();
    Load();
    m_base = At({});
    m_base.Put(L"Tag", m_nextNumber);
    m_rows[m_nextNumber++] = {m_base, Census(base).top, base};
    Survey();
    for (int turn = 0; turn < 6; ++turn) {
        const auto rows = ShownRows();
        const Shown& shown = AnyOf(rows);
        if (!shown.row || shown.row->node.Get(L"Children").Number() == 0) continue;
        shown.row->node.Put(L"Expanded", true);
        Wait(20);
        Survey();
    }
}

void SoakTree::Survey()
{
    const Census now(base);
    wrong += now.odd;
    Survey(m_base, now.top, now);
}

void SoakTree::Survey(const Value& folder, const std::string& known, const Census& now)
{
    std::vector<Value> fresh;
    std::vector<const Row*> rows;
    for (Value node = folder.Get(L"Child"); !node.IsNothing(); node = node.Get(L"Next")) {
        const std::wstring text = node.Get(L"Text").Text();
        if (text.empty()) continue;
        const Value number = node.Get(L"Tag");
        if (V_VT(&number.Raw()) != VT_I4) {
            fresh.push_back(node);
            continue;
        }
        const Row& row = m_rows.at(number.Number());
        if (row.label != text) wrong += L"the row \"" + row.label + L"\" reads \"" + text + L"\"\n";
        rows.push_back(&row);
    }
    Enter(fresh, folder, known, now);
    for (const Value& node : fresh)
        rows.push_back(&m_rows.at(node.Get(L"Tag").Number()));
    for (const Row* row : rows)
        Survey(row->node, row->known, now);
}

/// A folder that does not read as it is called on disk may show what is in itself, or in the folder that it reads as.
void SoakTree::Enter(const std::vector<Value>& fresh, const Value& folder, const std::string& known, const Census& now)
{
    if (fresh.empty()) return;
    auto shown = now.Shown(known);
    if (!Holds(shown, fresh)) {
        std::wstring path = control.Call(L"BuildFullPath", {folder}).Text();
        if (path.ends_with(L'\\')) path.pop_back();
        shown = now.Shown(path.size() >= base.size() ? now.At(path.substr(base.size())) : std::string());
        if (!Holds(shown, fresh)) wrong += L"rows in " + path + L" that no folder holds\n";
    }
    for (const Value& node : fresh) {
        const std::wstring text = node.Get(L"Text").Text();
        node.Put(L"Tag", m_nextNumber);
        m_rows[m_nextNumber++] = {node, shown.contains(text) ? shown.at(text) : "nothing", text};
    }
}

/// A place on the label, in sight; none on a row that is cut off, since the tree scrolls when that is pressed.
std::optional<POINT> SoakTree::HoldOf(HTREEITEM item) const
{
    union {
        HTREEITEM item;
        RECT place;
    } question{item};
    if (!Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&question))) return {};
    RECT client;
    GetClientRect(Tree(), &client);
    POINT hold{std::max(question.place.left, client.left) + 3, (question.place.top + question.place.bottom) / 2};
    if (question.place.bottom > client.bottom || !PtInRect(&question.place, hold) || !PtInRect(&client, hold))
        return {};
    ClientToScreen(Tree(), &hold);
    return hold;
}

HTREEITEM SoakTree::ItemAt(POINT place) const
{
    TVHITTESTINFO hit{};
    hit.pt = place;
    ScreenToClient(Tree(), &hit.pt);
    return reinterpret_cast<HTREEITEM>(Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

std::vector<SoakTree::Shown> SoakTree::ShownRows()
{
    std::vector<Shown> rows;
    LRESULT item = Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0);
    for (; item != 0; item = Send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) {
        const HTREEITEM handle = reinterpret_cast<HTREEITEM>(item);
        if (const auto hold = HoldOf(handle)) rows.push_back({handle, *hold, RowOf(*hold)});
    }
    return rows;
}

const SoakTree::Row* SoakTree::RowAt(POINT place)
{
    const HTREEITEM item = ItemAt(place);
    const auto hold = item ? HoldOf(item) : std::nullopt;
    return hold ? RowOf(*hold) : nullptr;
}

Value SoakTree::NodeAt(POINT place) const
{
    const HDC screen = GetDC(nullptr);
    const double twips = 1440.0 / GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    ScreenToClient(Tree(), &place);
    return control.Get(L"TreeView").Call(L"HitTest", {place.x * twips, place.y * twips});
}

const SoakTree::Row* SoakTree::RowOf(POINT place)
{
    const Value node = NodeAt(place);
    if (node.IsNothing()) return nullptr;
    const Value number = node.Get(L"Tag");
    if (V_VT(&number.Raw()) != VT_I4) return nullptr;
    const auto found = m_rows.find(number.Number());
    return found == m_rows.end() ? nullptr : &found->second;
}

bool SoakTree::ReadsTrue(const Row& row, const Census& now) const
{
    std::wstring path = control.Call(L"BuildFullPath", {row.node}).Text();
    if (path.ends_with(L'\\')) path.pop_back();
    return path == base + now.PathOf(row.known);
}

}  // namespace sylvex::test
