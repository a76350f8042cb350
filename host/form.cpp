#include "host/form.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "host/resource.h"

namespace sylvex::host {
namespace {

constexpr wchar_t kTitle[] = L"Sylvex sample host";
constexpr UINT kStart = WM_APP + 1;

constexpr UINT_PTR kPaintTimer = 1;

struct Child {
    const wchar_t* className;
    const wchar_t* text;
    DWORD style;
    int id;
    DWORD extendedStyle = 0;
};

constexpr DWORD kLabel = SS_LEFT | SS_CENTERIMAGE;
constexpr DWORD kEdit = WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD kCheck = WS_TABSTOP | BS_AUTOCHECKBOX;
constexpr DWORD kButton = WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kList = WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHAREIMAGELISTS | LVS_SHOWSELALWAYS;
constexpr DWORD kLog = WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_USETABSTOPS | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY;

constexpr Child kSettings[] = {
    {WC_STATICW, L"&Go to:", kLabel, IDC_PATH_LABEL},
    {WC_EDITW, L"", kEdit, IDC_PATH, WS_EX_CLIENTEDGE},
    {WC_STATICW, L"&File filter:", kLabel, IDC_FILE_FILTER_LABEL},
    {WC_EDITW, L"", kEdit, IDC_FILE_FILTER, WS_EX_CLIENTEDGE},
    {WC_STATICW, L"List &patterns:", kLabel, IDC_PATTERNS_LABEL},
    {WC_EDITW, L"", kEdit, IDC_PATTERNS, WS_EX_CLIENTEDGE},
    {WC_BUTTONW, L"&Recursive check", kCheck, IDC_RECURSIVE},
    {WC_BUTTONW, L"Check &boxes", kCheck, IDC_CHECKBOXES},
    {WC_BUTTONW, L"&Drag and rename", kCheck, IDC_DRAG_DROP},
    {WC_BUTTONW, L"&Enumerate", kButton, IDC_ENUMERATE},
    {WC_BUTTONW, L"Refre&sh", kButton, IDC_REFRESH},
    {WC_BUTTONW, L"E&xport\u2026", kButton, IDC_EXPORT},
    {WC_BUTTONW, L"&Copy", kButton, IDC_COPY},
};

void CreateChild(HWND form, const Child& child)
{
    CreateWindowExW(child.extendedStyle, child.className, child.text, WS_CHILD | WS_VISIBLE | child.style, 0, 0, 0, 0,
                    form, reinterpret_cast<HMENU>(static_cast<INT_PTR>(child.id)), GetModuleHandleW(nullptr), nullptr);
}

/// Gives the focus to a child, if there is one, as a dialog does: with the text of an edit selected.
void GiveFocus(HWND child)
{
    if (!child) return;
    SetFocus(child);
    const bool isEdit = (SendMessageW(child, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0;
    if (isEdit) SendMessageW(child, EM_SETSEL, 0, -1);
}

/// A comfortable size for the resolution, within the part of the screen that is free.
RECT FirstPlace()
{
    constexpr int kWidth = 1000;
    constexpr int kHeight = 680;
    const HDC dc = GetDC(nullptr);
    const int dotsPerInch = GetDeviceCaps(dc, LOGPIXELSX);
    ReleaseDC(nullptr, dc);
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const LONG width = std::min<LONG>(MulDiv(kWidth, dotsPerInch, USER_DEFAULT_SCREEN_DPI), work.right - work.left);
    const LONG height = std::min<LONG>(MulDiv(kHeight, dotsPerInch, USER_DEFAULT_SCREEN_DPI), work.bottom - work.top);
    const LONG left = work.left + (work.right - work.left - width) / 2;
    const LONG top = work.top + (work.bottom - work.top - height) / 2;
    return {left, top, left + width, top + height};
}

}  // namespace

Form::Form(const LOGFONTW& description, const Options& options)
    : m_options(options), m_font(description), m_fontDescription(description), m_metrics(m_font.Get())
{
}

Form::~Form()
{
    if (Handle()) DestroyWindow(Handle());
}

bool Form::Create(int show)
{
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    m_accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    WNDCLASSEXW windowClass{};
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_HOST));
    windowClass.hIconSm =
        static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(IDI_HOST), IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                      GetSystemMetrics(SM_CYSMICON), 0));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    const Shape shape{L"SylvexHostForm",   kTitle,       WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                      WS_EX_CONTROLPARENT, FirstPlace(), 0};
    if (!CreateThis(windowClass, shape, nullptr)) return false;
    ShowWindow(Handle(), show);
    UpdateWindow(Handle());
    PostMessageW(Handle(), kStart, 0, 0);
    return true;
}

bool Form::CreateChildren()
{
    for (const Child& child : kSettings)
        CreateChild(Handle(), child);
    CreatePanes();
    for (HWND child = GetWindow(Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Get()), FALSE);
    }
    m_log.Attach(Item(IDC_LOG), m_metrics);

    const DWORD extended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP | LVS_EX_HEADERDRAGDROP;
    SendMessageW(Item(IDC_LIST), LVM_SETEXTENDEDLISTVIEWSTYLE, extended, extended);
    SetWindowTextW(Item(IDC_FILE_FILTER), m_options.fileFilter.value_or(L"*").c_str());
    SetWindowTextW(Item(IDC_PATTERNS), m_options.patterns.value_or(L"*").c_str());
    CheckDlgButton(Handle(), IDC_RECURSIVE, m_options.recursive ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(Handle(), IDC_CHECKBOXES, BST_CHECKED);
    CheckDlgButton(Handle(), IDC_DRAG_DROP, m_options.dragDrop ? BST_CHECKED : BST_UNCHECKED);
    m_layout.emplace(Handle(), m_metrics);
    return Item(IDC_LIST) && Item(IDC_LOG) && Item(IDC_STATUS) && m_place.Handle();
}

void Form::CreatePanes()
{
    // A label stands right before the window that its mnemonic leads to.
    CreateChild(Handle(), {WC_STATICW, L"F&olders and files", SS_LEFT, IDC_TREE_LABEL});
    m_place.Create(Handle(), IDC_TREE, m_font.Get(),
                   {[this] {
                        if (m_container) m_container->Activate(nullptr);
                    },
                    [this] {
                        if (m_container) m_container->Resize();
                    }});
    m_panesSplitter.Create(Handle(), IDC_PANES_SPLITTER, Splitter::Bar::Vertical, [this](int x) {
        m_layout->MoveTreeEdge(x);
        m_layout->Arrange();
    });
    CreateChild(Handle(), {WC_STATICW, L"&Ticked", SS_LEFT, IDC_LIST_LABEL});
    CreateChild(Handle(), {WC_LISTVIEWW, L"", kList, IDC_LIST, WS_EX_CLIENTEDGE});
    m_logSplitter.Create(Handle(), IDC_LOG_SPLITTER, Splitter::Bar::Horizontal, [this](int y) {
        m_layout->MovePanesEdge(y);
        m_layout->Arrange();
    });
    CreateChild(Handle(), {WC_STATICW, L"E&vents", SS_LEFT, IDC_LOG_LABEL});
    CreateChild(Handle(), {WC_LISTBOXW, L"", kLog, IDC_LOG, WS_EX_CLIENTEDGE});
    CreateChild(Handle(), {STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, IDC_STATUS});
}

LRESULT Form::Answer(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY:
            if (wParam == IDC_LIST) OnListNotice(*reinterpret_cast<const NMHDR*>(lParam));
            return 0;
        case WM_NEXTDLGCTL:
            // Comes for the mnemonic of a label; only windows of dialogs know it by themselves.
            MoveFocus(wParam, LOWORD(lParam) != FALSE);
            return 0;
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        case kStart:
            if (!std::exchange(m_started, true)) Start();
            return 0;
        default:
            return AnswerFrame(message, wParam, lParam);
    }
}

LRESULT Form::AnswerFrame(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
        case WM_CREATE:
            return CreateChildren() ? 0 : -1;
        case WM_SIZE:
            OnSize();
            return 0;
        case WM_GETMINMAXINFO:
            OnMinMax(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_DESTROY:
            m_script.reset();
            m_watch.reset();
            m_container.reset();
            PostQuitMessage(m_status);
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

int Form::Run()
{
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        ServeMessage(message);
    return static_cast<int>(message.wParam);
}

void Form::ServeMessage(MSG& message)
{
    if (m_container && m_container->TranslateKey(message)) return;
    if (TranslateAcceleratorW(Handle(), m_accelerators, &message)) return;
    if (TakeTab(message)) return;
    // The control gets every other key; Alt with a letter is the form's.
    const bool plainKey = message.message == WM_KEYDOWN || message.message == WM_KEYUP || message.message == WM_CHAR;
    const bool forControl = plainKey && m_container && m_container->HasFocus();
    if (forControl || !IsDialogMessageW(Handle(), &message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (m_container) m_container->FollowFocus();
    LookAtPaths();
}

bool Form::TakeTab(const MSG& message)
{
    const bool tab = message.message == WM_KEYDOWN && message.wParam == VK_TAB;
    if (!tab || !m_container || !m_container->HasFocus()) return false;
    TabOut(GetKeyState(VK_SHIFT) < 0);
    return true;
}

void Form::TabOut(bool back)
{
    GiveFocus(GetNextDlgTabItem(Handle(), m_place.Handle(), back));
}

void Form::MoveFocus(WPARAM where, bool isWindow)
{
    GiveFocus(isWindow ? reinterpret_cast<HWND>(where) : GetNextDlgTabItem(Handle(), GetFocus(), where != 0));
}

void Form::OnSize()
{
    if (!m_layout || IsIconic(Handle())) return;
    m_layout->Arrange();
    RECT area;
    GetClientRect(Handle(), &area);
    constexpr int kCountWidth = 80;
    const int parts[] = {area.right - m_metrics.X(kCountWidth), -1};
    SendMessageW(Item(IDC_STATUS), SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
}

void Form::OnActivate(bool active)
{
    if (!active) {
        m_lastFocus = GetFocus();
    } else if (IsChild(Handle(), m_lastFocus)) {
        SetFocus(m_lastFocus);
    } else {
        SetFocus(m_place.Handle());
    }
}

void Form::OnMinMax(MINMAXINFO& info) const
{
    if (!m_layout) return;
    const SIZE least = m_layout->Minimum();
    RECT frame{0, 0, least.cx, least.cy};
    AdjustWindowRectEx(&frame, WS_OVERLAPPEDWINDOW, FALSE, WS_EX_CONTROLPARENT);
    info.ptMinTrackSize = {frame.right - frame.left, frame.bottom - frame.top};
}

void Form::OnTimer(UINT_PTR timer)
{
    if (timer != kPaintTimer) return;
    KillTimer(Handle(), kPaintTimer);
    if (const auto action = std::exchange(m_whenPainted, nullptr)) action();
}

void Form::OnClose()
{
    if (m_busy > 0) {
        m_leaving = true;
    } else {
        DestroyWindow(Handle());
    }
}

void Form::WhenPainted(std::function<void()> action)
{
    // A window system that runs apart gets the picture when the program waits for messages.
    constexpr UINT kOnItsWay = 300;
    RedrawWindow(Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
    m_whenPainted = std::move(action);
    SetTimer(Handle(), kPaintTimer, kOnItsWay, nullptr);
}

void Form::Leave()
{
    PostMessageW(Handle(), WM_CLOSE, 0, 0);
}

}  // namespace sylvex::host
