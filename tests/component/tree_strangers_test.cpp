// What strangers and hosts do to a tree's window in the middle of its work.

#include <tuple>

#include "platform/win32/handles.h"
#include "tests/component/tree_window_fixture.h"
#include "tests/support/hand.h"

namespace sylvex::test {
namespace {

TEST(TreeWindowOfAControl, RowsOfStrangersAreNobodysNodes)
{
    Scene scene;
    scene.desk().Make({L"a\\sub\\", L"b\\x\\"});
    scene.Enumerate();
    Hand hand(scene);
    Node& a = scene.At(L"a");
    TreeView& tree = scene.control().Tree();
    auto* const window = reinterpret_cast<HWND>(tree.hWnd());
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM;
    item.hItem = HandleOf<HTREEITEM>(tree.ItemOf(a));
    SendMessageW(window, TVM_GETITEMW, 0, ParameterOf(&item));
    const LPARAM dataOfA = item.lParam;
    item.lParam = 1;
    EXPECT_TRUE(SendMessageW(window, TVM_SETITEMW, 0, ParameterOf(&item)));
    EXPECT_EQ(tree.NodeOfItem(tree.ItemOf(a)), &a) << "what others write does not reach our rows";

    wchar_t name[] = L"strange";
    for (const LPARAM data : {LPARAM{0}, LPARAM{1}, LPARAM{-8}, dataOfA, dataOfA + 8, ParameterOf(&scene)}) {
        TVINSERTSTRUCTW insert{};
        insert.hParent = TVI_ROOT;
        insert.hInsertAfter = TVI_FIRST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN | TVIF_IMAGE;
        insert.item.pszText = name;
        insert.item.lParam = data;
        insert.item.cChildren = I_CHILDRENCALLBACK;
        insert.item.iImage = I_IMAGECALLBACK;
        auto* const row = reinterpret_cast<HTREEITEM>(SendMessageW(window, TVM_INSERTITEMW, 0, ParameterOf(&insert)));
        ASSERT_NE(row, nullptr);
        insert.hParent = row;
        SendMessageW(window, TVM_INSERTITEMW, 0, ParameterOf(&insert));
        tree.Refresh();
        scene.Heard();
        SendMessageW(window, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, ParameterOf(row));
        SendMessageW(window, TVM_SELECTITEM, TVGN_CARET, ParameterOf(row));
        EXPECT_EQ(scene.control().SelectedItem(), nullptr);
        EXPECT_EQ(tree.HitTest({40, 5}), nullptr);
        EXPECT_EQ(tree.NodeOfItem(NumberOf(row)), nullptr);
        for (const WPARAM key : {VK_RIGHT, VK_LEFT, VK_SPACE, VK_MULTIPLY, VK_F2})
            SendMessageW(window, WM_KEYDOWN, key, 1);
        for (const LPARAM x : {5, 20, 30, 45, 60}) {
            SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 5));
            SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, 5));
            SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(x, 5));
            SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, 5));
        }
        EXPECT_EQ(scene.Heard().find(L":a"), std::wstring::npos);
        SendMessageW(window, TVM_DELETEITEM, 0, ParameterOf(row));
    }
    EXPECT_FALSE(a.Checked() || a.Expanded());
}

enum class Destroyed { Tree, Form, Window };

/// A listener that closes the form, or only the tree, or destroys the tree's window, in the middle of a call.
class DestroyedInACall : public TreeWindowTest, public testing::WithParamInterface<std::tuple<const char*, Destroyed>> {
protected:
    void Provoke(ItemHandle row, const std::string& word)
    {
        if (word == "down1" || word == "chosen:1" || word == "up1") Click(On(row, TVHT_ONITEMLABEL));
        if (word == "opening:1" || word == "open:1") Click(On(row, TVHT_ONITEMBUTTON));
        if (word == "closing:1") tree->Expand(row, true), Click(On(row, TVHT_ONITEMBUTTON));
        if (word == "box:1") Click(On(row, TVHT_ONITEMSTATEICON));
        if (word == "key37" || word == "keyup37") Key(VK_LEFT);
        if (word == "selected:1") tree->Select(row);
        if (word == "edit:1" || word == "abandoned") tree->EditLabel(row);
        if (word == "abandoned" && tree) tree->CancelEdit();
    }
};

TEST_P(DestroyedInACall, TheCallReturnsAndNothingMoreIsTold)
{
    const auto& [word, what] = GetParam();
    tree->Apply(TreeSetting::Checkboxes, 1);
    const auto row = Add(0, 1, L"row", ExpandButton::Yes);
    Add(row, 2, L"child");
    tree->Refresh();
    auto* const native = Tree();
    diary.onWord = [&, awaited = std::string(word), destroyed = what](const std::string& told) {
        if (told != awaited) return;
        diary.Take();
        if (destroyed == Destroyed::Form) DestroyWindow(form);
        if (destroyed == Destroyed::Window) DestroyWindow(native);
        tree.reset();
        // Else the platform's code would go on in a window that it has freed.
        EXPECT_EQ(IsWindow(native), destroyed != Destroyed::Window) << "went before its own code had returned";
    };
    Provoke(row, word);
    Wait(20);
    EXPECT_FALSE(IsWindow(native));
    EXPECT_EQ(tree, nullptr) << "the call did not come";
    EXPECT_EQ(diary.Take(), "");
}

INSTANTIATE_TEST_SUITE_P(Calls, DestroyedInACall,
                         testing::Combine(testing::Values("down1", "chosen:1", "up1", "opening:1", "open:1",
                                                          "closing:1", "box:1", "key37", "keyup37", "selected:1",
                                                          "edit:1", "abandoned"),
                                          testing::Values(Destroyed::Tree, Destroyed::Form, Destroyed::Window)));

}  // namespace
}  // namespace sylvex::test
