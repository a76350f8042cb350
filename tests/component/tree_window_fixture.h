#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/win32/win32_platform.h"

namespace sylvex::test {

/// Writes down what a tree window tells, one word for each call, and answers from a model of marks.
class TreeDiary : public TreeWindowListener {
public:
    std::string log;                     ///< words since the last Take
    std::map<ItemData, RowMarks> marks;  ///< rows that are not there have no marks
    int marksAsked = 0;
    bool expands = true;
    bool edits = true;
    bool keepsLabel = true;
    bool flipsChecks = true;  ///< answers a click on a box by a mark
    short changedKey = -1;    ///< what every key becomes; -1 leaves it
    std::function<void(const std::string&)> onWord;
    /// The words so far, which are forgotten.
    std::string Take();

    bool Owns(ItemHandle, ItemData item) const noexcept override { return item != 0; }
    bool Expanding(ItemData item, bool expand) override;
    void Expanded(ItemData item, bool expand) override;
    bool HasChildren(ItemData item) override;
    RowMarks Marks(ItemData item) override;
    void CheckClicked(ItemData item) override;
    void Selected(ItemData item, bool byUser) override;
    void Clicked(ItemData item) override;
    void DoubleClicked() override;
    void KeyDown(short& key, short shift) override;
    void KeyPress(short& character) override;
    void KeyUp(short& key, short shift) override;
    void MouseDown(short button, short shift, Point where) override;
    void MouseMove(short button, short shift, Point where) override;
    void MouseUp(short button, short shift, Point where) override;
    bool LabelEditing(ItemData item) override;
    bool LabelEdited(ItemData item, const std::optional<std::wstring>& text) override;
    void Destroying() override {}

private:
    void Note(const std::string& word);
};

/// Handles what waits in the thread's queue, for at least `milliseconds`.
void PumpMessages(unsigned milliseconds = 0);

/// A form with a tree that fills it, in front of all others; the diary is the tree's listener.
class TreeWindowTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    HWND Native() const { return reinterpret_cast<HWND>(tree->Handle()); }
    ItemHandle Add(ItemHandle parent, ItemData data, const std::wstring& text, ExpandButton button = ExpandButton::No);
    /// Where the row, or its label alone, is in the tree.
    RECT PlaceOf(ItemHandle row, bool label) const;
    /// The middle of a row's part that a hit test reports as `flag`, on the screen.
    POINT On(ItemHandle row, UINT flag) const;
    /// The item's state as any program reads it.
    UINT NativeState(ItemHandle row) const;

    void MoveMouse(POINT where);
    /// Mouse buttons that are all in the queue before the first is handled.
    void Buttons(std::initializer_list<DWORD> flags);
    void Click(POINT where);
    void Key(WORD key);

    Win32Platform platform;
    TreeDiary diary;
    HWND form = nullptr;
    std::unique_ptr<TreeWindow> tree;
};

}  // namespace sylvex::test
