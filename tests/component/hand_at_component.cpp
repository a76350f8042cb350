#include "tests/component/hand_at_component.h"

namespace sylvex::test {

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
    NeverDoubleClick();
    Load();
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

HTREEITEM HandAtComponent::Row(const std::wstring& text) const
{
    LRESULT row = Send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0);
    while (row != 0 && RowText(reinterpret_cast<HTREEITEM>(row)) != text)
        row = Send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, row);
    return reinterpret_cast<HTREEITEM>(row);
}

RECT HandAtComponent::LabelOf(const std::wstring& text) const
{
    RECT label = PlaceOf(Row(text), true);
    MapWindowPoints(Tree(), nullptr, reinterpret_cast<POINT*>(&label), 2);
    return label;
}

POINT HandAtComponent::On(const std::wstring& text) const
{
    const RECT label = LabelOf(text);
    return {label.left + 2, (label.top + label.bottom) / 2};
}

void HandAtComponent::Serve(MSG& message)
{
    if (message.message == WM_TIMER && message.hwnd != Tree()) ++m_ticks;
    if (!container.Takes(message)) RealInput::Serve(message);
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

std::wstring HandAtComponent::Drop(const std::wstring& from, const std::wstring& to)
{
    DragTo(from, to);
    Button(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(LeftOver(), "");
    return boxes.Take();
}

void HandAtComponent::TypeOver(const std::wstring& text, const std::wstring& name)
{
    Click(On(text));
    Key(VK_F2);
    ASSERT_TRUE(Until([&] { return Edit() != nullptr; }));
    EXPECT_EQ(EditText(), text);
    Type(name);
    ASSERT_TRUE(Until([&] { return EditText() == name; }));
}

int HandAtComponent::Ticks()
{
    constexpr unsigned kLongestInterval = 1000;
    m_ticks = 0;
    Wait(kLongestInterval + 150);
    return m_ticks;
}

}  // namespace sylvex::test
