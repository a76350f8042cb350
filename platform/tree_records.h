#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/types.h"

namespace sylvex {

/// The records that travel by address in the raw messages of tree and list windows, laid out as the platform's own of
/// this pointer size. Not to be included beside the platform's headers, which give the same names to macros.
struct TVITEM {
    static constexpr const wchar_t* kRecordName = L"{TVITEM}";
    std::uint32_t mask = 0;
    ItemHandle hItem = 0;
    std::uint32_t state = 0;
    std::uint32_t stateMask = 0;
    std::uintptr_t pszText = 0;
    std::int32_t cchTextMax = 0;
    std::int32_t iImage = 0;
    std::int32_t iSelectedImage = 0;
    std::int32_t cChildren = 0;
    std::intptr_t lParam = 0;
};

struct TVHITTESTINFO {
    static constexpr const wchar_t* kRecordName = L"{TVHITTESTINFO}";
    Point pt;
    std::uint32_t flags = 0;
    ItemHandle hItem = 0;
};

struct LVITEM {
    std::uint32_t mask = 0;
    std::int32_t iItem = 0;
    std::int32_t iSubItem = 0;
    std::uint32_t state = 0;
    std::uint32_t stateMask = 0;
    std::uintptr_t pszText = 0;
    std::int32_t cchTextMax = 0;
    std::int32_t iImage = 0;
    std::intptr_t lParam = 0;
    std::int32_t iIndent = 0;
    std::int32_t iGroupId = 0;
    std::uint32_t cColumns = 0;
    std::uintptr_t puColumns = 0;
    std::uintptr_t piColFmt = 0;
    std::int32_t iGroup = 0;
};

constexpr bool kWidePointers = sizeof(void*) == 8;
static_assert(sizeof(TVITEM) == (kWidePointers ? 56 : 40) && offsetof(TVITEM, hItem) == sizeof(void*));
static_assert(sizeof(TVHITTESTINFO) == (kWidePointers ? 24 : 16) && sizeof(Rect) == 16);
static_assert(sizeof(LVITEM) == (kWidePointers ? 88 : 60) && offsetof(LVITEM, iImage) == (kWidePointers ? 36 : 28));

/// Bits of TVITEM::mask.
constexpr std::uint32_t TVIF_IMAGE = 2;
constexpr std::uint32_t TVIF_PARAM = 4;
constexpr std::uint32_t TVIF_STATE = 8;
constexpr std::uint32_t TVIF_HANDLE = 0x10;
constexpr std::uint32_t TVIF_SELECTEDIMAGE = 0x20;
constexpr std::uint32_t TVIF_CHILDREN = 0x40;

/// Bits of TVITEM::state; bits 12 to 15 number the state picture, 1 the empty and 2 the ticked box.
constexpr std::uint32_t TVIS_SELECTED = 2;
constexpr std::uint32_t TVIS_DROPHILITED = 8;
constexpr std::uint32_t TVIS_BOLD = 0x10;
constexpr std::uint32_t TVIS_EXPANDED = 0x20;
constexpr std::uint32_t TVIS_STATEIMAGEMASK = 0xF000;

/// TVITEM::iImage: the owner is asked for the picture.
constexpr std::int32_t I_IMAGECALLBACK = -1;

/// Bit of LVITEM::mask.
constexpr std::uint32_t LVIF_IMAGE = 2;

}  // namespace sylvex
