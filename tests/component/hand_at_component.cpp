#include "tests/component/hand_at_component.h"

#include <utility>
#include <vector>

namespace sylvex::test {

namespace {

std::wstring Extended(const std::wstring& path)
{
    return L"\\\\?\\" + path;
}

std::string BytesOf(const std::wstring& path)
{
    const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "?";
    char bytes[256];
    DWORD read = 0;
    ReadFile(file, bytes, sizeof bytes, &read, nullptr);
    CloseHandle(file);
    return {bytes, read};
}

void AddContents(const std::wstring& folder, const std::wstring& below, std::map<std::wstring, std::string>& contents)
{
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((Extended(folder + below) + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L"..") continue;
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const std::wstring path = below + L"\\" + name;
        contents[path] = isFolder ? "\\" : BytesOf(folder + path);
        if (isFolder) AddContents(folder, path, contents);
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
}

void SendInputs(std::vector<INPUT> inputs)
{
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

INPUT KeyInput(WORD key, WORD scan, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    return input;
}

}  // namespace

std::wstring BoxReader::s_texts;

BoxReader::BoxReader() : m_hook(SetWindowsHookExW(WH_CBT, &OnHook, nullptr, GetCurrentThreadId()))
{
    s_texts.clear();
}

BoxReader::~BoxReader()
{
    UnhookWindowsHookEx(m_hook);
}

std::wstring BoxReader::Take()
{
    return std::exchange(s_texts, {});
}

LRESULT CALLBACK BoxReader::OnHook(int code, WPARAM wParam, LPARAM lParam)
{
    constexpr int kText = 0xFFFF;
    const HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && GetDlgItem(window, kText)) {
        wchar_t text[512] = {};
        GetDlgItemTextW(window, kText, text, 512);
        s_texts += L"[" + std::wstring(text) + L"]";
        for (const int button : {IDOK, IDCANCEL})
            if (GetDlgItem(window, button)) PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::map<std::wstring, std::string> ContentsOf(const std::wstring& folder)
{
    std::map<std::wstring, std::string> contents;
    AddContents(folder, L"", contents);
    return contents;
}

void WriteBytes(const std::wstring& path, const std::string& bytes)
{
    for (std::size_t at = path.find(L'\\', 3); at != std::wstring::npos; at = path.find(L'\\', at + 1))
        CreateDirectoryW(Extended(path.substr(0, at)).c_str(), nullptr);
    const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
}

void RemoveBranch(const std::wstring& folder)
{
    const auto contents = ContentsOf(folder);
    // What is below comes after its folder.
    for (auto entry = contents.rbegin(); entry != contents.rend(); ++entry) {
        const std::wstring path = Extended(folder + entry->first);
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        entry->second == "\\" ? RemoveDirectoryW(path.c_str()) : DeleteFileW(path.c_str());
    }
    RemoveDirectoryW(Extended(folder).c_str());
}

HandAtComponent::HandAtComponent()
{
    container.place = {0, 0, 320, 460};
    container.keyAnswer = S_FALSE;  // keys that the control leaves to it go on to their window
    embedded.Start();
    SetWindowPos(container.Form(), HWND_TOPMOST, 0, 0, 400, 500, SWP_SHOWWINDOW);
    SetForegroundWindow(container.Form());
    RemoveBranch(base);
    for (const wchar_t* name : {L"", L"\\a", L"\\a\\inner", L"\\b"})
        CreateDirectoryW((base + name).c_str(), nullptr);
    control.Put(L"DragDropEnable", true);
    SetDoubleClickTime(1);  // a hand that works this fast would double-click all the time
    Load();
}

HandAtComponent::~HandAtComponent()
{
    SetDoubleClickTime(m_doubleClick);
    RemoveBranch(base);
}

void HandAtComponent::Load()
{
    control.Call(L"Enumerate");
    At({}).Put(L"Expanded", true);
    At({}).Call(L"EnsureVisible");
    Wait(20);
}

Value HandAtComponent::Child(const Value& parent, const std::wstring& text)
{
    Value child = parent.Get(L"Child");
    while (!child.IsNothing() && child.Get(L"Text").Text() != text)
        child = child.Get(L"Next");
    return child;
}

Value HandAtComponent::At(std::initializer_list<const wchar_t*> names) const
{
    Value node = Nodes().Get(L"Item", {L"C:\\"});
    node.Put(L"Expanded", true);
    node = Child(node, base.substr(3));
    for (const wchar_t* name : names) {
        if (!node.Get(L"Expanded").Flag()) node.Put(L"Expanded", true);
        node = Child(node, name);
    }
    return node;
}

bool HandAtComponent::Has(const std::wstring& name) const
{
    return GetFileAttributesW((base + L"\\" + name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

LRESULT HandAtComponent::Send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageW(Tree(), message, wParam, lParam);
}

HWND HandAtComponent::Edit() const
{
    return reinterpret_cast<HWND>(Send(TVM_GETEDITCONTROL, 0, 0));
}

std::wstring HandAtComponent::EditText() const
{
    wchar_t text[MAX_PATH] = {};
    GetWindowTextW(Edit(), text, MAX_PATH);
    return text;
}

HTREEITEM HandAtComponent::Row(const std::wstring& text) const
{
    LRESULT row = Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0);
    for (; row != 0; row = Send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, row)) {
        wchar_t shown[MAX_PATH] = {};
        TVITEMW item{};
        item.mask = TVIF_HANDLE | TVIF_TEXT;
        item.hItem = reinterpret_cast<HTREEITEM>(row);
        item.pszText = shown;
        item.cchTextMax = MAX_PATH;
        Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        if (shown == text) break;
    }
    return reinterpret_cast<HTREEITEM>(row);
}

RECT HandAtComponent::LabelOf(const std::wstring& text) const
{
    union {
        HTREEITEM item;
        RECT place;
    } question{Row(text)};
    EXPECT_TRUE(Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&question)));
    MapWindowPoints(Tree(), nullptr, reinterpret_cast<POINT*>(&question.place), 2);
    return question.place;
}

POINT HandAtComponent::On(const std::wstring& text) const
{
    const RECT label = LabelOf(text);
    return {label.left + 2, (label.top + label.bottom) / 2};
}

void HandAtComponent::Serve(MSG& message)
{
    if (message.message == WM_TIMER && message.hwnd != Tree()) ++m_ticks;
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    const ComPtr<IOleInPlaceActiveObject> first = container.active;
    if (isKey && first && first->TranslateAccelerator(&message) == S_OK) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void HandAtComponent::Wait(unsigned milliseconds)
{
    const auto end = GetTickCount64() + milliseconds;
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            Serve(message);
        const auto now = GetTickCount64();
        if (now >= end) return;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
}

bool HandAtComponent::Until(const std::function<bool()>& isSo)
{
    constexpr unsigned kLongest = 10000;
    const auto end = GetTickCount64() + kLongest;
    while (!isSo()) {
        if (GetTickCount64() >= end) return false;
        Wait(10);
    }
    return true;
}

void HandAtComponent::MoveTo(POINT point)
{
    SetCursorPos(point.x, point.y);
    Wait(15);
}

void HandAtComponent::Buttons(std::initializer_list<DWORD> flags)
{
    std::vector<INPUT> inputs;
    for (const DWORD flag : flags) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        inputs.push_back(input);
    }
    SendInputs(inputs);
    Wait(15);
}

void HandAtComponent::Click(POINT point)
{
    MoveTo(point);
    Button(MOUSEEVENTF_LEFTDOWN);
    Button(MOUSEEVENTF_LEFTUP);
}

void HandAtComponent::DragTo(const std::wstring& from, const std::wstring& to)
{
    const POINT start = On(from);
    MoveTo(start);
    Button(MOUSEEVENTF_LEFTDOWN);
    MoveTo({start.x + 10, start.y});
    const POINT end = On(to);
    MoveTo(end);
    MoveTo({end.x + 1, end.y});
}

void HandAtComponent::Key(WORD key)
{
    const WORD scan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    SendInputs({KeyInput(key, scan, 0), KeyInput(key, scan, KEYEVENTF_KEYUP)});
    Wait(15);
}

void HandAtComponent::Type(const std::wstring& text)
{
    for (const wchar_t character : text) {
        const WORD scan = static_cast<WORD>(character);
        SendInputs({KeyInput(0, scan, KEYEVENTF_UNICODE), KeyInput(0, scan, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP)});
        Wait(5);
    }
}

std::string HandAtComponent::LeftOver() const
{
    std::string left;
    if (GetCapture()) left += "capture ";
    if (ImageList_GetDragImage(nullptr, nullptr)) left += "picture ";
    if (IsWindow(Tree()) && Send(TVM_GETNEXTITEM, TVGN_DROPHILITE, 0)) left += "highlight ";
    return left;
}

int HandAtComponent::Ticks()
{
    constexpr unsigned kLongestInterval = 1000;
    m_ticks = 0;
    Wait(kLongestInterval + 150);
    return m_ticks;
}

}  // namespace sylvex::test
