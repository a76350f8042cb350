#pragma once

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <string>

#include "tests/component/automation.h"
#include "tests/component/test_container.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {

/// Reads and closes the message boxes that open on this thread while it lives.
class BoxReader {
public:
    BoxReader();
    BoxReader(const BoxReader&) = delete;
    BoxReader& operator=(const BoxReader&) = delete;
    ~BoxReader();
    /// The texts since the last call, each in brackets.
    std::wstring Take();

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam);
    static std::wstring s_texts;
    HHOOK m_hook;
};

/// What lies below a folder: names relative to it with the files' bytes, and folders with "\". A file that cannot be
/// read has "?".
std::map<std::wstring, std::string> ContentsOf(const std::wstring& folder);
/// Makes a file, and the folders above it; paths may be longer than the shell takes.
void WriteBytes(const std::wstring& path, const std::string& bytes);
/// Removes a folder with all in it.
void RemoveBranch(const std::wstring& folder);

/// The real component in a container, its tree opened at a scratch folder with a, a\inner and b, and a person's hand:
/// mouse and keyboard through the system's own queue, and a loop that serves them as a container does.
class HandAtComponent : public testing::Test {
protected:
    HandAtComponent();
    ~HandAtComponent() override;

    /// Loads the tree again, opened at the scratch folder.
    void Load();
    Value Nodes() const { return control.Get(L"TreeView").Get(L"Nodes"); }
    static Value Child(const Value& parent, const std::wstring& text);
    /// The scratch folder's node, or one below it.
    Value At(std::initializer_list<const wchar_t*> names) const;
    bool Has(const std::wstring& name) const;
    HWND Tree() const { return embedded.Tree(); }
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const;
    HWND Edit() const;
    std::wstring EditText() const;
    /// The row with this text, among those that the tree shows.
    HTREEITEM Row(const std::wstring& text) const;
    /// The label of a row on the screen.
    RECT LabelOf(const std::wstring& text) const;
    /// A place on the label of the row with this text, on the screen.
    POINT On(const std::wstring& text) const;

    /// Serves what waits, for at least so long.
    void Wait(unsigned milliseconds);
    /// Serves messages until something is so; false when it is not within ten seconds.
    bool Until(const std::function<bool()>& isSo);
    void MoveTo(POINT point);
    void Buttons(std::initializer_list<DWORD> flags);
    void Button(DWORD flag) { Buttons({flag}); }
    void Click(POINT point);
    /// Presses on a row, and moves past the threshold and onto another one.
    void DragTo(const std::wstring& from, const std::wstring& to);
    void Key(WORD key);
    void Type(const std::wstring& text);
    /// What a drag has left behind, such as "capture picture"; empty when it is clean.
    std::string LeftOver() const;
    /// How many ticks of the component's timers come within the longest of their intervals and a bit.
    int Ticks();

    const std::wstring base = L"C:\\SylvexHand" + std::to_wstring(GetCurrentProcessId());
    TestContainer container;
    Embedded embedded{container};
    Value control{static_cast<IDispatch*>(embedded.control.Get())};
    TestReporter reports;
    BoxReader boxes;

private:
    void Serve(MSG& message);
    const UINT m_doubleClick = GetDoubleClickTime();
    int m_ticks = 0;
};

}  // namespace sylvex::test
