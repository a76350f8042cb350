#include "component/container/accelerators.h"

namespace sylvex {

namespace {

// The platform's KEYMOD values, which some SDK headers leave out.
constexpr DWORD kShift = 1;
constexpr DWORD kControl = 2;
constexpr DWORD kAlt = 4;

bool IsDown(int key)
{
    return GetKeyState(key) < 0;
}

bool MovesInTree(WPARAM key)
{
    switch (key) {
        case VK_UP:
        case VK_DOWN:
        case VK_LEFT:
        case VK_RIGHT:
        case VK_HOME:
        case VK_END:
        case VK_PRIOR:
        case VK_NEXT:
            return true;
        default:
            return false;
    }
}

bool IsCommandOfTree(WPARAM key)
{
    return key == VK_RETURN || key == VK_ESCAPE || key == VK_F2;
}

bool IsFunctionKey(WPARAM key)
{
    return key >= VK_F1 && key <= VK_F24;
}

bool MakesText(WPARAM key)
{
    return MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_CHAR) != 0;
}

// Control and alt together are the alternate-graphics key of many keyboards, which makes text.
bool IsShortcut()
{
    return IsDown(VK_CONTROL) != IsDown(VK_MENU);
}

bool IsKeyOfTree(WPARAM key)
{
    if (MovesInTree(key)) return !IsDown(VK_MENU);
    return !IsShortcut() && (IsCommandOfTree(key) || MakesText(key));
}

bool IsKeyOfEdit(WPARAM key)
{
    return !IsFunctionKey(key) && (IsDown(VK_CONTROL) || !IsDown(VK_MENU));
}

}  // namespace

bool BelongsToTree(const MSG& message, bool editing)
{
    // Beyond it the number means different letters to narrow and wide loops, and only the container knows its own.
    constexpr WPARAM lastSharedCharacter = 0x7F;
    if (message.wParam == VK_TAB) return false;
    if (message.message == WM_CHAR) return message.wParam <= lastSharedCharacter;
    if (message.message != WM_KEYDOWN) return false;
    return editing ? IsKeyOfEdit(message.wParam) : IsKeyOfTree(message.wParam);
}

DWORD PressedModifiers()
{
    return (IsDown(VK_SHIFT) ? kShift : 0u) | (IsDown(VK_CONTROL) ? kControl : 0u) | (IsDown(VK_MENU) ? kAlt : 0u);
}

}  // namespace sylvex
