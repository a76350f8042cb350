#include "tests/component/tree_window_fixture.h"

#include "platform/win32/handles.h"

namespace sylvex::test {

void TreeDiary::Note(const std::string& word)
{
    log += (log.empty() ? "" : " ") + word;
    if (onWord) onWord(word);
}

bool TreeDiary::Note(const std::string& word, ItemData item, const bool& answer)
{
    Note(word + std::to_string(item));
    return answer;
}

RowMarks TreeDiary::Marks(ItemData item)
{
    ++marksAsked;
    const auto found = marks.find(item);
    return found == marks.end() ? RowMarks{} : found->second;
}

void TreeDiary::CheckClicked(ItemData item)
{
    marks[item].checked = !marks[item].checked;
    Note("box:", item);
}

void TreeDiary::MouseMove(short button, short, Point)
{
    // Without a button the pointer's way is of no interest, and the platform repeats moves.
    if (button != 0 && !log.ends_with("drag" + std::to_string(button))) Note("drag" + std::to_string(button));
}

bool TreeDiary::LabelEdited(ItemData, const std::optional<std::wstring>& text)
{
    Note(text ? "typed:" + std::string(text->begin(), text->end()) : "abandoned");
    return keepsLabel;
}

void TreeWindowTest::SetUp()
{
    form = CreateWindowExW(0, L"STATIC", L"form", WS_CHILD | WS_VISIBLE, 0, 0, 300, 400, Stage(), nullptr, nullptr,
                           nullptr);
    tree = platform.Get().windows.CreateTree(NumberOf(form), diary);
    tree->Move({0, 0, 300, 400});
    tree->Apply(TreeSetting::LineStyle, 1);
    SetForegroundWindow(Stage());
    SetFocus(Tree());
    MoveTo({600, 600});
    Wait(20);
    diary.Take();
}

void TreeWindowTest::TearDown()
{
    tree.reset();
    if (IsWindow(form)) DestroyWindow(form);
    Wait();
}

ItemHandle TreeWindowTest::Add(ItemHandle parent, ItemData data, const std::wstring& text, ExpandButton button)
{
    ItemLook look;
    look.text = text;
    look.button = button;
    return tree->Insert(parent, 0, data, look);
}

POINT TreeWindowTest::On(ItemHandle row, UINT flag) const
{
    const auto place = PlaceOf(HandleOf<HTREEITEM>(row), false);
    const auto y = (place.top + place.bottom) / 2;
    LONG first = -1;
    LONG last = -1;
    for (auto x = place.left; x < place.right; ++x) {
        TVHITTESTINFO hit{};
        hit.pt = {x, y};
        Send(TVM_HITTEST, 0, ParameterOf(&hit));
        if ((hit.flags & flag) == 0) continue;
        if (first < 0) first = x;
        last = x;
    }
    EXPECT_GE(first, 0) << "the row has no such part";
    POINT middle{(first + last) / 2, y};
    ClientToScreen(Tree(), &middle);
    return middle;
}

UINT TreeWindowTest::NativeState(ItemHandle row) const
{
    return static_cast<UINT>(Send(TVM_GETITEMSTATE, row, ~0));
}

}  // namespace sylvex::test
