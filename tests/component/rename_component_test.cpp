// Renaming in place in the real component, with the system's own mouse, keyboard, boxes and shell.

#include "tests/component/hand_at_component.h"

namespace sylvex::test {
namespace {

class RenameInComponent : public HandAtComponent {
protected:
    bool IsOpen() const { return Edit() != nullptr; }
    void Open(const std::wstring& text)
    {
        Click(On(text));
        Key(VK_F2);
        ASSERT_TRUE(Until([&] { return IsOpen(); }));
        EXPECT_EQ(EditText(), text);
    }
    /// Opens the label of a, and types over it.
    void TypeOver(const std::wstring& name)
    {
        Open(L"a");
        Type(name);
        ASSERT_TRUE(Until([&] { return EditText() == name; }));
    }
};

TEST_F(RenameInComponent, ATypedNameIsGivenByEnterAndByAClickElsewhere)
{
    const std::pair<const wchar_t*, std::function<void()>> cases[] = {{L"New \u4E2D\u6587", [&] { Key(VK_RETURN); }},
                                                                      {L"next", [&] { Click(On(L"b")); }}};
    for (const auto& [name, end] : cases) {
        CreateDirectoryW((base + L"\\a\\inner").c_str(), nullptr);
        Load();
        const Value node = At({L"a"});
        TypeOver(name);
        end();
        ASSERT_TRUE(Until([&] { return !IsOpen(); }));
        EXPECT_EQ(boxes.Take(), L"");
        EXPECT_TRUE(Has(name + std::wstring(L"\\inner")));
        EXPECT_FALSE(Has(L"a"));
        EXPECT_EQ(control.Call(L"BuildFullPath", {node}).Text(), base + L"\\" + name + L"\\");
        MoveFileW((base + L"\\" + name).c_str(), (base + L"\\a").c_str());
    }
    EXPECT_EQ(reports.Take(), L"");
}

TEST_F(RenameInComponent, ASlowSecondClickOpensTheLabelUnlessTheHostHasToAsk)
{
    constexpr unsigned kSlow = 300;
    SetDoubleClickTime(kSlow);
    const auto clickAgain = [&] {
        Click(On(L"a"));
        Wait(2 * kSlow);
        return IsOpen();
    };
    control.Put(L"LabelEdit", 1);
    clickAgain();
    EXPECT_FALSE(clickAgain());
    control.Put(L"LabelEdit", 0);
    EXPECT_TRUE(Until(clickAgain));
    Key(VK_ESCAPE);
    EXPECT_TRUE(Has(L"a"));
}

TEST_F(RenameInComponent, WhateverHappensMeanwhileNothingIsRenamedByMistake)
{
    const auto before = ContentsOf(base);
    const HWND form = GetAncestor(Tree(), GA_ROOT);
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"opened", [&] { At({L"a"}).Put(L"Expanded", true); }},
        {"its folder closed", [&] { At({}).Put(L"Expanded", false); }},
        {"ticked", [&] { At({L"a"}).Put(L"Checked", true); }},
        {"read anew", [&] { control.Call(L"Enumerate"); }},
        {"another selected", [&] { control.Set(L"SelectedItem", At({L"b"})); }},
        {"its form hidden", [&] { ShowWindow(form, SW_HIDE); }},
        {"closed", [&] { embedded.object->Close(OLECLOSE_NOSAVE); }},
    };
    for (const auto& [what, happen] : cases) {
        ShowWindow(form, SW_SHOW);
        Load();
        TypeOver(L"typed");
        happen();
        Wait(50);
        if (IsWindow(Tree()) && IsOpen()) Key(VK_ESCAPE);
        EXPECT_EQ(boxes.Take(), L"") << what;
        EXPECT_EQ(ContentsOf(base), before) << what;
    }
}

TEST_F(RenameInComponent, AFormThatEndsTakesNoHalfTypedNameAndLeavesNoBox)
{
    const auto before = ContentsOf(base);
    TypeOver(L"ty?ed");
    DestroyWindow(GetAncestor(Tree(), GA_ROOT));
    Wait(300);
    EXPECT_EQ(boxes.Take(), L"");
    EXPECT_EQ(ContentsOf(base), before);
}

}  // namespace
}  // namespace sylvex::test
