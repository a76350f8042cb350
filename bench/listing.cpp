#include "bench/bench.h"

#include <shellapi.h>

namespace sylvex::bench {

namespace {

/// Reads the folder's records and fills a bare list of sixteen columns with ready texts, each row with the same picture
/// of the system's.
double FloorList(const std::wstring& folder)
{
    return Median([&] {
        Frame frame;
        const HWND list = NewList(frame);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 80;
        for (int i = 0; i < 16; ++i)
            ListView_InsertColumn(list, i, &column);
        SHFILEINFOW picture{};
        const DWORD_PTR pictures = SHGetFileInfoW(L"x", FILE_ATTRIBUTE_NORMAL, &picture, sizeof picture,
                                                  SHGFI_SYSICONINDEX | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES);
        SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, static_cast<LPARAM>(pictures));
        const double start = Now();
        SendMessageW(list, WM_SETREDRAW, FALSE, 0);
        WIN32_FIND_DATAW entry;
        const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
        int row = 0;
        do {
            if (entry.cFileName[0] == L'.') continue;
            std::wstring text = folder + L"\\" + entry.cFileName;
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_IMAGE;
            item.iItem = row;
            item.iImage = picture.iIcon;
            item.pszText = text.data();
            ListView_InsertItem(list, &item);
            // As long as the columns' texts are on average.
            wchar_t cell[] = L"01/01/2026A";
            for (int i = 1; i < 16; ++i) {
                if (i == 10) continue;
                ListView_SetItemText(list, row, i, cell);
            }
            ++row;
        } while (FindNextFileW(search, &entry) != 0);
        FindClose(search);
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        UpdateWindow(list);
        return Now() - start;
    });
}

double OursList(const std::wstring& folder)
{
    return Median([&] {
        Subject subject;
        const HWND list = subject.BindList();
        Node& node = subject.NodeOf(folder);
        node.SetExpanded(true);
        for (Node* child = node.Child(); child != nullptr; child = child->Next())
            child->WriteMarks(true, false);
        const double start = Now();
        subject.Control().BuildFileList(&node, false);
        UpdateWindow(list);
        return Now() - start;
    });
}

}  // namespace

void ListRows()
{
    double perRow[2] = {};
    int at = 0;
    for (const int files : {1000, 10000, 100000}) {
        const std::wstring folder = FlatFolder(files);
        const Row row{"list " + std::to_string(files) + " ticked files, 16 columns", OursList(folder),
                      FloorList(folder), 1.5};
        Print(row);
        if (files > 1000) perRow[at++] = row.ours / files;
    }
    Print({"cost of one row at 100000 against at 10000", perRow[1] * 1000, perRow[0] * 1000, 1.2, "us"});
}

}  // namespace sylvex::bench
