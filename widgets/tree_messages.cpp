#include "widgets/tree_messages.h"

#include <algorithm>
#include <cstring>

namespace sylvex {

namespace {

enum Message : unsigned {
    TVM_EXPAND = 0x1102,
    TVM_GETITEMRECT = 0x1104,
    TVM_GETNEXTITEM = 0x110A,
    TVM_SELECTITEM = 0x110B,
    TVM_GETITEMA = 0x110C,
    TVM_SETITEMA = 0x110D,
    TVM_HITTEST = 0x1111,
    TVM_CREATEDRAGIMAGE = 0x1112
};

enum Which : unsigned { TVGN_ROOT = 0, TVGN_PARENT = 3, TVGN_DROPHILITE = 8 };

}  // namespace

std::intptr_t TreeMessages::Send(WindowHandle hWnd, unsigned message, std::uintptr_t wParam, ItemHandle item)
{
    return m_windows.Send(hWnd, message, wParam, static_cast<std::intptr_t>(item));
}

std::intptr_t TreeMessages::SendRecord(WindowHandle hWnd, unsigned message, std::uintptr_t wParam, void* record)
{
    return m_windows.Send(hWnd, message, wParam, reinterpret_cast<std::intptr_t>(record));
}

bool TreeMessages::TreeView_Expand(WindowHandle hWnd, ItemHandle hItem, unsigned Flag)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem, Flag), [&] { return Send(hWnd, TVM_EXPAND, Flag, hItem) != 0; });
}

bool TreeMessages::TreeView_GetItemRect(WindowHandle hWnd, ItemHandle hItem, Rect& prc, bool fItemRect)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem, prc, fItemRect), [&](int& line) {
        // The message takes the item in the rectangle's first bytes.
        std::memcpy(static_cast<void*>(&prc), &hItem, std::min(sizeof prc, sizeof hItem));
        line = 2;
        return SendRecord(hWnd, TVM_GETITEMRECT, fItemRect ? 1 : 0, &prc) != 0;
    });
}

ItemHandle TreeMessages::TreeView_GetNextItem(WindowHandle hWnd, ItemHandle hItem, unsigned Flag)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem, Flag),
                   [&] { return static_cast<ItemHandle>(Send(hWnd, TVM_GETNEXTITEM, Flag, hItem)); });
}

ItemHandle TreeMessages::TreeView_GetParent(WindowHandle hWnd, ItemHandle hItem)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem), [&] { return TreeView_GetNextItem(hWnd, hItem, TVGN_PARENT); });
}

ItemHandle TreeMessages::TreeView_GetDropHilight(WindowHandle hWnd)
{
    return Trapped(m_module, VARIABLES(hWnd), [&] { return TreeView_GetNextItem(hWnd, 0, TVGN_DROPHILITE); });
}

ItemHandle TreeMessages::TreeView_GetRoot(WindowHandle hWnd)
{
    return Trapped(m_module, VARIABLES(hWnd), [&] { return TreeView_GetNextItem(hWnd, 0, TVGN_ROOT); });
}

bool TreeMessages::TreeView_Select(WindowHandle hWnd, ItemHandle hItem, unsigned code)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem, code),
                   [&] { return Send(hWnd, TVM_SELECTITEM, code, hItem) != 0; });
}

bool TreeMessages::TreeView_SelectDropTarget(WindowHandle hWnd, ItemHandle hItem)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem), [&] { return TreeView_Select(hWnd, hItem, TVGN_DROPHILITE); });
}

bool TreeMessages::TreeView_GetItem(WindowHandle hWnd, TVITEM& pItem)
{
    return Trapped(m_module, VARIABLES(hWnd, pItem), [&] { return SendRecord(hWnd, TVM_GETITEMA, 0, &pItem) != 0; });
}

bool TreeMessages::TreeView_SetItem(WindowHandle hWnd, TVITEM& pItem)
{
    return Trapped(m_module, VARIABLES(hWnd, pItem), [&] { return SendRecord(hWnd, TVM_SETITEMA, 0, &pItem) != 0; });
}

ItemHandle TreeMessages::TreeView_HitTest(WindowHandle hWnd, TVHITTESTINFO& lpht)
{
    return Trapped(m_module, VARIABLES(hWnd, lpht),
                   [&] { return static_cast<ItemHandle>(SendRecord(hWnd, TVM_HITTEST, 0, &lpht)); });
}

ImageListHandle TreeMessages::TreeView_CreateDragImage(WindowHandle hWnd, ItemHandle hItem)
{
    return Trapped(m_module, VARIABLES(hWnd, hItem),
                   [&] { return static_cast<ImageListHandle>(Send(hWnd, TVM_CREATEDRAGIMAGE, 0, hItem)); });
}

}  // namespace sylvex
