// The raw messages that a simulated tree window understands.

#include <algorithm>
#include <cstring>

#include "tests/simulated/simulated_tree.h"

namespace sylvex {

namespace {

enum Message : unsigned {
    WM_SETREDRAW = 11,
    WM_HSCROLL = 0x114,
    WM_VSCROLL = 0x115,
    TVM_EXPAND = 0x1102,
    TVM_GETITEMRECT = 0x1104,
    TVM_GETIMAGELIST = 0x1108,
    TVM_GETNEXTITEM = 0x110A,
    TVM_SELECTITEM = 0x110B,
    TVM_GETITEMA = 0x110C,
    TVM_SETITEMA = 0x110D,
    TVM_HITTEST = 0x1111,
    TVM_CREATEDRAGIMAGE = 0x1112
};

constexpr std::uintptr_t kStateImages = 2;
constexpr std::uintptr_t kDropHighlight = 8;
constexpr std::uintptr_t kCaret = 9;
constexpr ImageListHandle kCheckPictures = 0x5A03;

template <class Record>
Record& RecordAt(std::intptr_t address)
{
    return *reinterpret_cast<Record*>(address);  // NOLINT(performance-no-int-to-ptr): messages carry addresses
}

std::intptr_t HandleOf(const TreeRow* row)
{
    return row == nullptr ? 0 : static_cast<std::intptr_t>(row->handle);
}

}  // namespace

std::intptr_t SimulatedTree::OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
{
    const auto item = static_cast<ItemHandle>(lParam);
    switch (message) {
        case WM_SETREDRAW:
            return 0;
        case WM_HSCROLL:
        case WM_VSCROLL:
            Scroll(message == WM_VSCROLL ? 1 : 0, wParam);
            return 0;
        case TVM_EXPAND:
            return ExpandByMessage(wParam, item);
        case TVM_GETITEMRECT:
            return ItemRect(wParam != 0, &RecordAt<char>(lParam));
        case TVM_GETIMAGELIST:
            if (wParam != kStateImages) return static_cast<std::intptr_t>(m_images);
            return Setting(TreeSetting::Checkboxes) != 0 ? static_cast<std::intptr_t>(kCheckPictures) : 0;
        case TVM_GETNEXTITEM:
            return NextItem(wParam, Find(item));
        case TVM_SELECTITEM:
            return SelectByMessage(wParam, item);
        case TVM_GETITEMA:
            return GetItem(RecordAt<TVITEM>(lParam));
        case TVM_SETITEMA:
            return SetItem(RecordAt<TVITEM>(lParam));
        case TVM_HITTEST: {
            auto& record = RecordAt<TVHITTESTINFO>(lParam);
            const TreeHit hit = HitAt(record.pt);
            record.flags = hit.flags;
            record.hItem = hit.item;
            return static_cast<std::intptr_t>(hit.item);
        }
        case TVM_CREATEDRAGIMAGE:
            return CreateDragImage(item);
        default:
            return 0;
    }
}

std::intptr_t SimulatedTree::NextItem(std::uintptr_t flag, const TreeRow* row)
{
    if (flag == 0) return HandleOf(m_top.firstChild);
    if (flag == 5) return static_cast<std::intptr_t>(RowAt(m_firstLine));
    if (flag == kDropHighlight) return static_cast<std::intptr_t>(m_dropTarget);
    if (flag == kCaret) return static_cast<std::intptr_t>(m_selected);
    if (row == nullptr) return flag == 4 ? HandleOf(m_top.firstChild) : 0;
    switch (flag) {
        case 1:
            return HandleOf(row->next);
        case 2:
            return HandleOf(row->previous);
        case 3:
            return HandleOf(row->parent);
        case 4:
            return HandleOf(row->firstChild);
        case 6:
            return HandleOf(NextShown(*row));
        default:
            return 0;
    }
}

std::uint32_t SimulatedTree::StateOf(const TreeRow& row)
{
    const RowMarks marks = m_listener.Marks(row.data);
    std::uint32_t state = marks.bold ? TVIS_BOLD : 0;
    if (row.handle == m_selected) state |= TVIS_SELECTED;
    if (row.handle == m_dropTarget) state |= TVIS_DROPHILITED;
    if (row.expanded) state |= TVIS_EXPANDED;
    if (Setting(TreeSetting::Checkboxes) != 0) state |= marks.checked ? 0x2000 : 0x1000;
    return state;
}

bool SimulatedTree::GetItem(TVITEM& record)
{
    TreeRow* const row = FindRow(record.hItem);
    if (row == nullptr) return false;
    const auto wants = [&record](std::uint32_t bit) { return (record.mask & bit) != 0; };
    if (wants(TVIF_STATE)) {
        const std::uint32_t state = StateOf(*row);
        record.state = record.stateMask == 0 ? state : state & record.stateMask;
    }
    if (wants(TVIF_IMAGE)) record.iImage = ImageOf(*row);
    if (wants(TVIF_SELECTEDIMAGE)) record.iSelectedImage = row->selectedImage;
    if (wants(TVIF_CHILDREN)) record.cChildren = ShowsButton(*row) ? 1 : 0;
    if (wants(TVIF_PARAM)) record.lParam = static_cast<std::intptr_t>(row->data);
    return true;
}

bool SimulatedTree::SetItem(const TVITEM& record)
{
    TreeRow* const row = FindRow(record.hItem);
    if (row == nullptr) return false;
    if ((record.mask & TVIF_IMAGE) != 0) {
        row->fixedImage.reset();
        if (record.iImage != I_IMAGECALLBACK) row->fixedImage = record.iImage;
    }
    const bool setsBox = (record.mask & TVIF_STATE) != 0 && (record.stateMask & TVIS_STATEIMAGEMASK) != 0;
    const bool differs = setsBox && ((StateOf(*row) ^ record.state) & TVIS_STATEIMAGEMASK) != 0;
    if (differs && Setting(TreeSetting::Checkboxes) != 0) m_listener.CheckClicked(row->data);
    return true;
}

bool SimulatedTree::ItemRect(bool label, void* address)
{
    // The rectangle's first bytes carry the item, whatever the rectangle's alignment.
    ItemHandle item = 0;
    std::memcpy(&item, address, sizeof item);
    const TreeRow* const row = Find(item);
    if (row == nullptr || !IsShown(*row)) return false;
    const int top = (LineOf(*row) - m_firstLine) * kRowHeight;
    const Rect line{0, top, m_place.right - m_place.left, top + kRowHeight};
    const Rect place = label ? RectOf(item, RowPart::Label) : line;
    std::memcpy(address, &place, sizeof place);
    return true;
}

std::intptr_t SimulatedTree::SelectByMessage(std::uintptr_t code, ItemHandle item)
{
    const TreeRow* const row = Find(item);
    if (item != 0 && row == nullptr) return 0;
    if (code == kDropHighlight) m_dropTarget = item;
    if (code == kCaret) SelectRow(item, false);
    if (code == 5 && row != nullptr && IsShown(*row)) m_firstLine = LineOf(*row);
    return 1;
}

std::intptr_t SimulatedTree::ExpandByMessage(std::uintptr_t flag, ItemHandle item)
{
    const TreeRow* const row = Find(item);
    const std::uintptr_t action = flag & 3;
    if (row == nullptr || action == 0) return 0;
    return OpenOrClose(item, action == 3 ? !row->expanded : action == 2);
}

std::intptr_t SimulatedTree::CreateDragImage(ItemHandle item)
{
    if (m_images == 0 || Find(item) == nullptr) return 0;
    // The icon with the label behind it.
    const Rect label = RectOf(item, RowPart::Label);
    const Size size{kIconWidth + label.right - label.left, kRowHeight};
    return static_cast<std::intptr_t>(m_windows.ImageLists().CreateWith("drag image of " + PictureOf(item), size));
}

void SimulatedTree::Scroll(int bar, std::uintptr_t command)
{
    const ScrollBar state = BarOf(bar);
    int& position = bar == 0 ? m_scrolledRight : m_firstLine;
    const int step = bar == 0 ? kScrollWidth : 1;
    const int last = std::max(state.most + 1 - static_cast<int>(state.page), 0);
    if (command == 0) position = std::max(position - step, 0);
    if (command == 1) position = std::min(position + step, std::max(last, position));
}

}  // namespace sylvex
