#include <algorithm>
#include <cstdio>

#include "bench/bench.h"
#include "platform/text.h"
#include "widgets/window_list.h"

namespace sylvex::bench {

double Now()
{
    LARGE_INTEGER ticks;
    LARGE_INTEGER perSecond;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(ticks.QuadPart) * 1000.0 / static_cast<double>(perSecond.QuadPart);
}

double Median(const std::function<double()>& run, int runs)
{
    std::vector<double> times(static_cast<std::size_t>(runs));
    std::generate(times.begin(), times.end(), run);
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void Print(const Row& row)
{
    const double ratio = row.floor > 0 ? row.ours / row.floor : 0;
    const char* verdict = row.atMost == 0 ? "" : ratio <= row.atMost ? "within" : "ABOVE";
    std::printf("%-58s %10.3f %10.3f %-5s %6.2f", row.name.c_str(), row.ours, row.floor, row.unit, ratio);
    if (row.atMost > 0) std::printf("  at most %.2f  %s", row.atMost, verdict);
    std::printf("\n");
    std::fflush(stdout);
}

Frame::Frame()
    : m_window(CreateWindowExW(0, L"STATIC", L"Benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                               600, 800, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr))
{
}

HWND NewList(const Frame& frame)
{
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHAREIMAGELISTS, 0,
                                      0, 580, 760, frame.Window(), nullptr, GetModuleHandleW(nullptr), nullptr);
    return list;
}

Platform Subject::Services(bool iconsByType)
{
    if (!iconsByType) return platform.Get();
    // The bundle holds references, so another system means another bundle.
    const auto with = [](System& system, auto& real) {
        auto& [files, shell, regional, oldSystem, windows, images, timers, boxes, reporter, boxTools, network, drag] =
            real;
        static_cast<void>(oldSystem);
        return Platform{files,  shell, regional, system,   windows, images,
                        timers, boxes, reporter, boxTools, network, drag};
    };
    return with(m_oldSystem, platform.Get());
}

Subject::Subject(bool iconsByType)
    : m_services(Services(iconsByType)),
      m_control(std::make_unique<Sylvex>(m_services, *this, *this, reinterpret_cast<WindowHandle>(m_frame.Window())))
{
    m_control->UserControl_InitProperties();
    m_control->UserControl_Resize({580, 760});
    m_control->LetSetting(TreeSetting::Checkboxes, 1);
    m_control->LetFileFilter(L"*");  // every folder with a file can be opened
    m_control->Enumerate();
}

Subject::~Subject()
{
    m_control.reset();
}

Node& Subject::NodeOf(const std::wstring& path)
{
    const auto parts = SplitText(path, L'\\');
    Node* node = &m_control->Tree().GetNodes().Item(parts[0] + L"\\");
    for (std::size_t i = 1; i < parts.size(); ++i) {
        node->SetExpanded(true);
        Node* child = node->Child();
        while (child != nullptr && child->Text() != parts[i])
            child = child->Next();
        if (child == nullptr) throw ElementNotFound();
        node = child;
    }
    return *node;
}

double Subject::Paint()
{
    const double start = Now();
    InvalidateRect(TreeHandle(), nullptr, TRUE);
    UpdateWindow(TreeHandle());
    return Now() - start;
}

double Subject::Open(Node& node)
{
    const double start = Now();
    node.SetExpanded(!node.Expanded());
    Paint();
    return Now() - start;
}

HWND Subject::BindList()
{
    m_listFrame = std::make_unique<Frame>();
    const HWND list = NewList(*m_listFrame);
    m_control->SetReqListView(
        std::make_shared<WindowListView>(platform.Get().windows.WrapList(reinterpret_cast<WindowHandle>(list))));
    return list;
}

namespace {

/// The folder whose rows ask for their buttons, and the window procedure that answers: a button for a subfolder.
std::wstring g_asked;
WNDPROC g_frameProcedure;

bool HoldsFolder(const std::wstring& folder)
{
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return false;
    bool holds = false;
    do
        holds = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && entry.cFileName[0] != L'.';
    while (!holds && FindNextFileW(search, &entry) != 0);
    FindClose(search);
    return holds;
}

LRESULT CALLBACK AnswerButtons(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* question = reinterpret_cast<NMTVDISPINFOW*>(lParam);
    if (message != WM_NOTIFY || question->hdr.code != TVN_GETDISPINFOW)
        return CallWindowProcW(g_frameProcedure, window, message, wParam, lParam);
    wchar_t text[MAX_PATH];
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_HANDLE;
    item.hItem = question->item.hItem;
    item.pszText = text;
    item.cchTextMax = MAX_PATH;
    TreeView_GetItem(question->hdr.hwndFrom, &item);
    question->item.cChildren = HoldsFolder(g_asked + L"\\" + text) ? 1 : 0;
    return 0;
}

}  // namespace

BareTree::BareTree(bool checkBoxes)
    : m_tree(CreateWindowExW(0, WC_TREEVIEWW, L"",
                             WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT, 0, 0, 580, 760,
                             m_frame.Window(), nullptr, GetModuleHandleW(nullptr), nullptr))
{
    m_pictures =
        ImageList_Create(GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), ILC_COLOR32 | ILC_MASK, 1, 1);
    ImageList_AddIcon(m_pictures, LoadIconW(nullptr, IDI_APPLICATION));
    TreeView_SetImageList(m_tree, m_pictures, TVSIL_NORMAL);
    if (checkBoxes) SetWindowLongPtrW(m_tree, GWL_STYLE, GetWindowLongPtrW(m_tree, GWL_STYLE) | TVS_CHECKBOXES);
    TVINSERTSTRUCTW insert{};
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_CHILDREN;
    wchar_t text[] = L"root";
    insert.item.pszText = text;
    insert.item.cChildren = 1;
    m_root = TreeView_InsertItem(m_tree, &insert);
}

BareTree::~BareTree()
{
    ImageList_Destroy(m_pictures);
}

double BareTree::Paint()
{
    const double start = Now();
    InvalidateRect(m_tree, nullptr, TRUE);
    UpdateWindow(m_tree);
    return Now() - start;
}

double BareTree::Fill(const std::wstring& folder, bool buttonsAskedWhenPainted)
{
    g_asked = folder;
    g_frameProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(m_frame.Window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AnswerButtons)));
    const double start = Now();
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
    do
        if (entry.cFileName[0] != L'.') names.emplace_back(entry.cFileName);
    while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
    std::sort(names.begin(), names.end(), [](const std::wstring& left, const std::wstring& right) {
        return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                    static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
    });
    TVINSERTSTRUCTW insert{};
    insert.hParent = m_root;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_CHILDREN | TVIF_PARAM;
    insert.item.cChildren = buttonsAskedWhenPainted ? I_CHILDRENCALLBACK : 0;
    for (std::wstring& name : names) {
        insert.item.pszText = name.data();
        items.push_back(TreeView_InsertItem(m_tree, &insert));
    }
    TreeView_Expand(m_tree, m_root, TVE_EXPAND);
    Paint();
    return Now() - start;
}

}  // namespace sylvex::bench
