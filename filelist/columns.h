#pragma once

#include <cstddef>
#include <string>

#include "filelist/list_state.h"
#include "platform/listwindow.h"

namespace sylvex {

/// The columns of the list, in their order. Those from cmp2 on are hidden; a list is sorted by them.
enum class Column { nam, ext, siz, typ, mod, tim, cre, acc, atr, dos, cmp2, cre2, acc2, siz2, mod2, tim2 };

struct ColumnFacts {
    const wchar_t* key;
    std::wstring FileListState::*caption = nullptr;  ///< null: none
    double width = 0;                                ///< in twips
    Alignment alignment = Alignment::Left;
    bool IsHidden() const { return width == 0; }
};

/// By Column.
inline constexpr ColumnFacts kColumns[] = {{L"nam", &FileListState::sName, 3600},
                                           {L"ext", &FileListState::sExtension, 500},
                                           {L"siz", &FileListState::sSize, 1100, Alignment::Right},
                                           {L"typ", &FileListState::sType, 1400},
                                           {L"mod", &FileListState::sModified, 1000},
                                           {L"tim", &FileListState::sTime, 1100},
                                           {L"cre", &FileListState::sCreated, 1700},
                                           {L"acc", &FileListState::sAccessed, 1700},
                                           {L"atr", &FileListState::sAttribute, 1000},
                                           {L"dos", &FileListState::sMsDos, 1600},
                                           {L"cmp2"},
                                           {L"cre2"},
                                           {L"acc2"},
                                           {L"siz2"},
                                           {L"mod2"},
                                           {L"tim2"}};
/// Of the column acc, where volumes keep no more than the day of an access.
constexpr double kAccessedWidthOnFat = 1200;

constexpr std::size_t kColumnCount = sizeof kColumns / sizeof *kColumns;
static_assert(kColumnCount == static_cast<std::size_t>(Column::tim2) + 1);

}  // namespace sylvex
