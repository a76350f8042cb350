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
#include "tests/support/input_real.h"

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
    std::function<void(const std::string&)> onWord;
    /// The words so far, which are forgotten.
    std::string Take() { return std::exchange(log, {}); }

    bool Owns(ItemHandle, ItemData item) const noexcept override { return item != 0; }
    bool Expanding(ItemData item, bool expand) override
    {
        return Note(expand ? "opening:" : "closing:", item, expands);
    }
    void Expanded(ItemData item, bool expand) override { Note(expand ? "open:" : "closed:", item); }
    bool HasChildren(ItemData) override { return true; }
    RowMarks Marks(ItemData item) override;
    void CheckClicked(ItemData item) override;
    void Selected(ItemData item, bool byUser) override { Note(byUser ? "chosen:" : "selected:", item); }
    void Clicked(ItemData item) override { Note("click:", item); }
    void DoubleClicked() override { Note("double"); }
    void KeyDown(short& key, short) override { Note("key" + std::to_string(key)); }
    void KeyPress(short& character) override { Note("char" + std::to_string(character)); }
    void KeyUp(short& key, short) override { Note("keyup" + std::to_string(key)); }
    void MouseDown(short button, short, Point) override { Note("down" + std::to_string(button)); }
    void MouseMove(short button, short, Point) override;
    void MouseUp(short button, short, Point) override { Note("up" + std::to_string(button)); }
    bool LabelEditing(ItemData item) override { return Note("edit:", item, edits); }
    bool LabelEdited(ItemData, const std::optional<std::wstring>& text) override;
    void Destroying() override {}

private:
    void Note(const std::string& word);
    bool Note(const std::string& word, ItemData item, const bool& answer = true);
};

/// A form with a tree that fills it, in front of all others; the diary is the tree's listener.
class TreeWindowTest : public testing::Test, protected RealInput {
protected:
    void SetUp() override;
    void TearDown() override;

    HWND Tree() const override { return reinterpret_cast<HWND>(tree->Handle()); }
    ItemHandle Add(ItemHandle parent, ItemData data, const std::wstring& text, ExpandButton button = ExpandButton::No);
    /// The middle of a row's part that a hit test reports as `flag`, on the screen.
    POINT On(ItemHandle row, UINT flag) const;
    /// The item's state as any program reads it.
    UINT NativeState(ItemHandle row) const;

    Win32Platform platform;
    TreeDiary diary;
    HWND form = nullptr;
    std::unique_ptr<TreeWindow> tree;
};

}  // namespace sylvex::test
