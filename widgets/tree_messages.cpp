#include "widgets/tree_messages.h"

#include <algorithm>
#include <cstring>

namespace sylvex {

namespace {

constexpr unsigned kGetItemRect = 0x1104;
constexpr unsigned kGetNextItem = 0x110A;
constexpr unsigned kRoot = 0;

}  // namespace

ItemHandle TreeMessages::TreeView_GetNextItem(WindowHandle hWnd, ItemHandle hItem, unsigned Flag)
{
    return Trapped(m_module, L"TreeView_GetNextItem", VARIABLES(hWnd, hItem, Flag), kNone, [&](int& line) {
        line = 1;
        return static_cast<ItemHandle>(
            m_windows.Send(hWnd, kGetNextItem, Flag, static_cast<std::intptr_t>(hItem)));
    });
}

ItemHandle TreeMessages::TreeView_GetRoot(WindowHandle hWnd)
{
    return Trapped(m_module, L"TreeView_GetRoot", VARIABLES(hWnd), kNone, [&](int& line) {
        line = 1;
        return TreeView_GetNextItem(hWnd, 0, kRoot);
    });
}

bool TreeMessages::TreeView_GetItemRect(WindowHandle hWnd, ItemHandle hItem, Rect& prc, bool fItemRect)
{
    return Trapped(m_module, L"TreeView_GetItemRect", VARIABLES(hWnd, hItem, fItemRect), kNone, [&](int& line) {
        line = 1;
        std::memcpy(static_cast<void*>(&prc), &hItem, std::min(sizeof prc, sizeof hItem));  // the message takes the item in the rectangle
        line = 2;
        return m_windows.Send(hWnd, kGetItemRect, fItemRect ? 1 : 0, reinterpret_cast<std::intptr_t>(&prc)) != 0;
    });
}

}  // namespace sylvex
