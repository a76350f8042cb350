// Renaming in place in the real component, with the system's own mouse, keyboard, boxes and shell.

#include "tests/component/hand_at_component.h"

namespace sylvex::test {
namespace {

using RenameInComponent = HandAtComponent;

TEST_F(RenameInComponent, ATypedNameIsGivenByEnterAndByAClickElsewhere)
{
    const Value node = At({L"a"});
    const std::pair<std::wstring, std::function<void()>> cases[] = {{L"New \u4E2D\u6587", [&] { Key(VK_RETURN); }},
                                                                    {L"next", [&] { Click(On(L"b")); }}};
    for (const auto& [name, end] : cases) {
        const std::wstring before = node.Get(L"Text").Text();
        TypeOver(before, name);
        end();
        ASSERT_TRUE(Until([&] { return !Edit(); }));
        EXPECT_EQ(boxes.Take(), L"");
        EXPECT_TRUE(Has(name + L"\\inner"));
        EXPECT_FALSE(Has(before));
        EXPECT_EQ(control.Call(L"BuildFullPath", {node}).Text(), base + L"\\" + name + L"\\");
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
        return Edit() != nullptr;
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
        {"its form hidden", [&] { ShowWindow(form, SW_HIDE); }},
        {"closed", [&] { embedded.object->Close(OLECLOSE_NOSAVE); }},
        {"its form gone", [&] { DestroyWindow(GetAncestor(Tree(), GA_ROOT)); }},
    };
    for (const auto& [what, happen] : cases) {
        ShowWindow(form, SW_SHOW);
        embedded.Do(OLEIVERB_UIACTIVATE);
        Load();
        TypeOver(L"a", L"ty?ed");
        happen();
        Wait(300);
        if (IsWindow(Tree()) && Edit()) Key(VK_ESCAPE);
        EXPECT_EQ(boxes.Take(), L"") << what;
        EXPECT_EQ(ContentsOf(base), before) << what;
    }
}

}  // namespace
}  // namespace sylvex::test
