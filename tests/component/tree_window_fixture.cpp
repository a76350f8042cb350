#include "tests/component/tree_window_fixture.h"

#include "platform/win32/handles.h"

namespace sylvex::test {

std::string TreeDiary::Take()
{
    return std::exchange(log, {});
}

void TreeDiary::Note(const std::string& word)
{
    log += (log.empty() ? "" : " ") + word;
    if (onWord) onWord(word);
}

bool TreeDiary::Expanding(ItemData item, bool expand)
{
    Note((expand ? "opening:" : "closing:") + std::to_string(item));
    return expands;
}

void TreeDiary::Expanded(ItemData item, bool expand)
{
    Note((expand ? "open:" : "closed:") + std::to_string(item));
}

bool TreeDiary::HasChildren(ItemData)
{
    return true;
}

RowMarks TreeDiary::Marks(ItemData item)
{
    ++marksAsked;
    const auto found = marks.find(item);
    return found == marks.end() ? RowMarks{} : found->second;
}

void TreeDiary::CheckClicked(ItemData item)
{
    if (flipsChecks) marks[item].checked = !marks[item].checked;
    Note("box:" + std::to_string(item));
}

void TreeDiary::Selected(ItemData item, bool byUser)
{
    Note((byUser ? "chosen:" : "selected:") + std::to_string(item));
}

void TreeDiary::Clicked(ItemData item)
{
    Note("click:" + std::to_string(item));
}

void TreeDiary::DoubleClicked()
{
    Note("double");
}

void TreeDiary::KeyDown(short& key, short shift)
{
    Note("key" + std::to_string(key) + (shift ? "/" + std::to_string(shift) : ""));
    if (changedKey >= 0) key = changedKey;
}

void TreeDiary::KeyPress(short& character)
{
    Note("char" + std::to_string(character));
    if (changedKey >= 0) character = changedKey;
}

void TreeDiary::KeyUp(short& key, short)
{
    Note("keyup" + std::to_string(key));
}

void TreeDiary::MouseDown(short button, short shift, Point)
{
    Note("down" + std::to_string(button) + (shift ? "/" + std::to_string(shift) : ""));
}

void TreeDiary::MouseMove(short button, short, Point)
{
    // Without a button the pointer's way is of no interest, and the platform repeats moves.
    if (button != 0 && !log.ends_with("drag" + std::to_string(button))) Note("drag" + std::to_string(button));
}

void TreeDiary::MouseUp(short button, short, Point)
{
    Note("up" + std::to_string(button));
}

bool TreeDiary::LabelEditing(ItemData item)
{
    Note("edit:" + std::to_string(item));
    return edits;
}

bool TreeDiary::LabelEdited(ItemData, const std::optional<std::wstring>& text)
{
    Note(text ? "typed:" + std::string(text->begin(), text->end()) : "abandoned");
    return keepsLabel;
}

void PumpMessages(unsigned milliseconds)
{
    const auto end = GetTickCount64() + milliseconds;
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        const auto now = GetTickCount64();
        if (now >= end) return;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
}

void TreeWindowTest::SetUp()
{
    // One for the whole program: without a window manager a main window takes seconds to go.
    static HWND const stage = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"stage", WS_POPUP | WS_VISIBLE, 100, 100, 300,
                                              400, nullptr, nullptr, nullptr, nullptr);
    form =
        CreateWindowExW(0, L"STATIC", L"form", WS_CHILD | WS_VISIBLE, 0, 0, 300, 400, stage, nullptr, nullptr, nullptr);
    tree = platform.Get().windows.CreateTree(NumberOf(form), diary);
    tree->Move({0, 0, 300, 400});
    tree->Apply(TreeSetting::LineStyle, 1);
    SetForegroundWindow(stage);
    SetFocus(Native());
    MoveMouse({600, 600});
    PumpMessages(20);
    diary.Take();
}

void TreeWindowTest::TearDown()
{
    tree.reset();
    if (IsWindow(form)) DestroyWindow(form);
    PumpMessages();
}

ItemHandle TreeWindowTest::Add(ItemHandle parent, ItemData data, const std::wstring& text, ExpandButton button)
{
    ItemLook look;
    look.text = text;
    look.button = button;
    return tree->Insert(parent, 0, data, look);
}

RECT TreeWindowTest::PlaceOf(ItemHandle row, bool label) const
{
    // The message takes the item in the place of its answer.
    union {
        HTREEITEM item;
        RECT place;
    } question{HandleOf<HTREEITEM>(row)};
    EXPECT_TRUE(SendMessageW(Native(), TVM_GETITEMRECT, label, ParameterOf(&question))) << "the row is not in view";
    return question.place;
}

POINT TreeWindowTest::On(ItemHandle row, UINT flag) const
{
    const auto place = PlaceOf(row, false);
    const auto y = (place.top + place.bottom) / 2;
    LONG first = -1;
    LONG last = -1;
    for (auto x = place.left; x < place.right; ++x) {
        TVHITTESTINFO hit{};
        hit.pt = {x, y};
        SendMessageW(Native(), TVM_HITTEST, 0, ParameterOf(&hit));
        if ((hit.flags & flag) == 0) continue;
        if (first < 0) first = x;
        last = x;
    }
    EXPECT_GE(first, 0) << "the row has no such part";
    POINT middle{(first + last) / 2, y};
    ClientToScreen(Native(), &middle);
    return middle;
}

UINT TreeWindowTest::NativeState(ItemHandle row) const
{
    return static_cast<UINT>(SendMessageW(Native(), TVM_GETITEMSTATE, row, ~0));
}

void TreeWindowTest::MoveMouse(POINT where)
{
    SetCursorPos(where.x, where.y);
    PumpMessages(5);
}

void TreeWindowTest::Buttons(std::initializer_list<DWORD> flags)
{
    for (const auto flag : flags) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        SendInput(1, &input, sizeof input);
    }
    PumpMessages(15);
}

void TreeWindowTest::Click(POINT where)
{
    MoveMouse(where);
    Buttons({MOUSEEVENTF_LEFTDOWN});
    Buttons({MOUSEEVENTF_LEFTUP});
}

void TreeWindowTest::Key(WORD key)
{
    for (const DWORD flag : {0u, static_cast<unsigned>(KEYEVENTF_KEYUP)}) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = flag;
        SendInput(1, &input, sizeof input);
        PumpMessages(10);
    }
}

}  // namespace sylvex::test
