// A drag and a rename in the real component, placed in a container, with the system's own mouse, boxes and shell.

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include "tests/component/automation.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

/// Reads and closes the message boxes that open on this thread while it lives.
class BoxReader {
public:
    BoxReader() : m_hook(SetWindowsHookExW(WH_CBT, &OnHook, nullptr, GetCurrentThreadId())) { s_texts.clear(); }
    BoxReader(const BoxReader&) = delete;
    BoxReader& operator=(const BoxReader&) = delete;
    ~BoxReader() { UnhookWindowsHookEx(m_hook); }
    std::wstring Take() const { return std::exchange(s_texts, {}); }

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam)
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
    static inline std::wstring s_texts;
    HHOOK m_hook;
};

class DragInComponent : public testing::Test {
protected:
    DragInComponent()
    {
        container.place = {0, 0, 320, 460};
        embedded.Start();
        SetWindowPos(container.Form(), HWND_TOPMOST, 0, 0, 400, 500, SWP_SHOWWINDOW);
        SetForegroundWindow(container.Form());
        for (const wchar_t* name : {L"", L"\\a", L"\\a\\inner", L"\\b"}) CreateDirectoryW((base + name).c_str(), nullptr);
        control.Put(L"DragDropEnable", true);
        control.Call(L"Enumerate");
        Value(control.Get(L"TreeView").Get(L"Nodes").Get(L"Item", {L"C:\\"})).Put(L"Expanded", true);
        Child(control.Get(L"TreeView").Get(L"Nodes").Get(L"Item", {L"C:\\"}), base.substr(3)).Put(L"Expanded", true);
        SetDoubleClickTime(1);
        Wait(50);
    }
    ~DragInComponent() override
    {
        SetDoubleClickTime(doubleClick);
        for (const wchar_t* name : {L"\\a\\inner", L"\\b\\a\\inner", L"\\new\\inner", L"\\a", L"\\b\\a", L"\\b", L"\\new", L""})
            RemoveDirectoryW((base + name).c_str());
    }
    static Value Child(const Value& parent, const std::wstring& text)
    {
        Value child = parent.Get(L"Child");
        while (!child.IsNothing() && child.Get(L"Text").Text() != text) child = child.Get(L"Next");
        return child;
    }
    bool Has(const wchar_t* name) const { return GetFileAttributesW((base + name).c_str()) != INVALID_FILE_ATTRIBUTES; }
    HWND Tree() const { return embedded.Tree(); }
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const { return SendMessageW(Tree(), message, wParam, lParam); }
    /// A place on the label of the row with this text, on the screen.
    POINT On(const std::wstring& text) const
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
        union {
            LRESULT item;
            RECT place;
        } question{row};
        EXPECT_TRUE(Send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&question)));
        POINT point{question.place.left + 2, (question.place.top + question.place.bottom) / 2};
        ClientToScreen(Tree(), &point);
        return point;
    }
    static void Wait(unsigned milliseconds)
    {
        const auto end = GetTickCount64() + milliseconds;
        do {
            DrainMessages();
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        } while (GetTickCount64() < end);
        DrainMessages();
    }
    static void MoveTo(POINT point)
    {
        SetCursorPos(point.x, point.y);
        Wait(20);
    }
    static void Buttons(std::initializer_list<DWORD> flags)
    {
        for (const DWORD flag : flags) {
            INPUT input{};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = flag;
            SendInput(1, &input, sizeof input);
        }
        Wait(30);
    }
    static void Button(DWORD flag) { Buttons({flag}); }
    void DragTo(const std::wstring& from, const std::wstring& to) const
    {
        const POINT start = On(from);
        MoveTo(start);
        Button(MOUSEEVENTF_LEFTDOWN);
        MoveTo({start.x + 10, start.y});
        const POINT end = On(to);
        MoveTo(end);
        MoveTo({end.x + 1, end.y});
    }
    static bool Clean() { return !GetCapture() && !ImageList_GetDragImage(nullptr, nullptr); }

    const std::wstring base = L"C:\\SylvexDrag" + std::to_wstring(GetCurrentProcessId());
    const UINT doubleClick = GetDoubleClickTime();
    TestContainer container;
    Embedded embedded{container};
    Value control{static_cast<IDispatch*>(embedded.control.Get())};
    ReportLog reports;
    BoxReader boxes;
};

TEST_F(DragInComponent, AFolderMovesAndTheHostHearsTheMouse)
{
    EventLog events(control);
    DragTo(L"a", L"b");
    EXPECT_EQ(GetCapture(), Tree());
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(Clean());
    EXPECT_EQ(boxes.Take(), L"[Successful drop of folder " + base + L"\\a\ronto " + base + L"\\b]");
    EXPECT_TRUE(Has(L"\\b\\a\\inner"));
    EXPECT_FALSE(Has(L"\\a"));
    const Value selected = control.Get(L"TreeView").Get(L"SelectedItem");
    EXPECT_EQ(control.Call(L"BuildFullPath", {selected}).Text(), base + L"\\b\\a\\");
    const std::wstring heard = events.Take();
    EXPECT_NE(heard.find(L"MouseDown"), std::wstring::npos);
    EXPECT_NE(heard.find(L"MouseMove"), std::wstring::npos);
    EXPECT_NE(heard.find(L"MouseUp"), std::wstring::npos);
    EXPECT_EQ(reports.Take(), L"");
}

TEST_F(DragInComponent, EscapeThroughTheContainerEndsTheDrag)
{
    DragTo(L"a", L"b");
    container.Key(WM_KEYDOWN, VK_ESCAPE);
    Wait(30);
    EXPECT_TRUE(Clean());
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(boxes.Take(), L"");
    EXPECT_TRUE(Has(L"\\a\\inner"));
}

TEST_F(DragInComponent, ASecondPressEndsCleanly)
{
    DragTo(L"a", L"b");
    // Together, since the tree itself waits for the release.
    Buttons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(Clean());
    EXPECT_NE(Has(L"\\a\\inner"), Has(L"\\b\\a\\inner"));
}

TEST_F(DragInComponent, AFormThatClosesInMidDragTakesAllAlong)
{
    DragTo(L"a", L"b");
    container.DestroyForm();
    EXPECT_TRUE(Clean());
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(boxes.Take(), L"");
    EXPECT_TRUE(Has(L"\\a\\inner"));
}

TEST_F(DragInComponent, ALabelIsEditedInPlaceAndARefusedNameOpensItAgain)
{
    const auto edit = [this] { return reinterpret_cast<HWND>(Send(TVM_GETEDITCONTROL, 0, 0)); };
    const auto type = [&](const wchar_t* name) {
        SetWindowTextW(edit(), name);
        container.Key(WM_KEYDOWN, VK_RETURN);
        Wait(30);
    };
    MoveTo(On(L"a"));
    Button(MOUSEEVENTF_LEFTDOWN);
    Button(MOUSEEVENTF_LEFTUP);
    container.Key(WM_KEYDOWN, VK_F2);
    Wait(30);
    ASSERT_NE(edit(), nullptr);
    type(L"x:y");
    EXPECT_EQ(boxes.Take(), L"[Error. Enter a valid file name (or Esc).]");
    Wait(250);
    ASSERT_NE(edit(), nullptr);
    wchar_t text[64] = {};
    GetWindowTextW(edit(), text, 64);
    EXPECT_STREQ(text, L"x:y");
    type(L"new");
    EXPECT_EQ(edit(), nullptr);
    EXPECT_EQ(boxes.Take(), L"");
    EXPECT_TRUE(Has(L"\\new\\inner"));
    EXPECT_FALSE(Has(L"\\a"));
}

}  // namespace
}  // namespace sylvex::test
