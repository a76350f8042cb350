#pragma once

#include <windows.h>

#include <string_view>

#include "host/csv.h"
#include "SylvexControl_h.h"

namespace sylvex::host {

/// Rows of a list-view window, in the order in which they are shown; the header is the sixteen column keys, by which
/// the control's list object says where each cell is. Throws AutomationError.
Table ReadList(HWND list, _Sylvex& control);

int CountRows(HWND list);

/// Makes the row with this text in the first column, in any letter case, the only selected one; false when there is
/// none.
bool SelectRow(HWND list, const std::wstring& text);

/// Sorts by a column, from 0, through the control's list object; a second time in the opposite direction. Throws
/// AutomationError.
void SortByColumn(_Sylvex& control, int column);

/// Puts a text on the clipboard; false when another program holds it.
bool CopyText(HWND owner, std::wstring_view text);

}  // namespace sylvex::host
