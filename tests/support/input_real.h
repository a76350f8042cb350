#pragma once

#include <windows.h>

#include <commctrl.h>

#include <initializer_list>
#include <string>

namespace sylvex {

/// A main window in front of all others, for tests to put windows in. There is one for the whole program: without a
/// window manager a main window takes seconds to go.
HWND Stage();

/// A person's hands at a real tree: mouse and keyboard through the system's own input queue, and a loop that serves
/// what comes of it. Points are on the screen.
class RealInput {
public:
    virtual ~RealInput();
    virtual HWND Tree() const = 0;

    /// Serves what waits, for at least so long.
    void Wait(unsigned milliseconds = 0);
    void MoveTo(POINT point);
    /// All of them are in the queue before the first is handled.
    void Buttons(std::initializer_list<DWORD> flags);
    void Button(DWORD flag) { Buttons({flag}); }
    void Click(POINT point);
    void Key(WORD key);
    void Type(const std::wstring& text);
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        return SendMessageW(Tree(), message, wParam, lParam);
    }
    /// Where a row, or its label alone, is in the tree.
    RECT PlaceOf(HTREEITEM row, bool label) const;
    std::wstring RowText(HTREEITEM row) const;
    /// The field of an open label, and what it holds.
    HWND Edit() const;
    std::wstring EditText() const;
    /// What a drag has left behind, such as "capture picture"; empty when it is clean.
    std::string LeftOver() const;
    /// A hand that works this fast would double-click all the time.
    static void NeverDoubleClick() { SetDoubleClickTime(1); }

protected:
    /// Does with a message what a program's loop does.
    virtual void Serve(MSG& message);

private:
    const UINT m_doubleClick = GetDoubleClickTime();
};

}  // namespace sylvex
