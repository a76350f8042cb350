#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace sylvex::host {

/// Owns a GDI font.
class Font {
public:
    explicit Font(const LOGFONTW& description) : m_font(CreateFontIndirectW(&description)) {}
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;
    ~Font() { DeleteObject(m_font); }
    HFONT Get() const { return m_font; }

private:
    HFONT m_font;
};

/// Caption of a window, or the text of a child window; empty for none.
std::wstring WindowText(HWND window);

/// A window of a class of our own. The object must outlive the window.
class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    HWND Handle() const { return m_window; }

protected:
    struct Shape {
        const wchar_t* className;
        const wchar_t* text;
        DWORD style;
        DWORD extendedStyle;
        RECT place;
        /// Number among the children of `parent`.
        int id;
    };

    /// Registers the class, whose other members the caller has filled in, and creates the window; false when it fails.
    bool CreateThis(WNDCLASSEXW windowClass, const Shape& shape, HWND parent);
    /// Answers a message; what it leaves alone goes to Default().
    virtual LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
};

/// The window that the control is activated in. Shows a text while there is no control.
class PlaceWindow : public Window {
public:
    struct Listeners {
        std::function<void()> focused;
        std::function<void()> resized;
    };

    bool Create(HWND parent, int id, HFONT font, Listeners listeners);
    void SetText(std::wstring text);

private:
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint();

    Listeners m_listeners;
    HFONT m_font = nullptr;
    std::wstring m_text;
};

/// A bar between two parts of the form that is dragged with the mouse.
class Splitter : public Window {
public:
    enum class Bar { Vertical, Horizontal };
    /// Gets the wished place of the bar's left or upper edge in the parent, in pixels.
    using Moved = std::function<void(int)>;

    bool Create(HWND parent, int id, Bar bar, Moved moved);

private:
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Drag();
    int Along(POINT point) const { return m_bar == Bar::Vertical ? point.x : point.y; }

    Bar m_bar = Bar::Vertical;
    Moved m_moved;
    /// Where in the bar the pointer took hold.
    int m_hold = 0;
};

}  // namespace sylvex::host
