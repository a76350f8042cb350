#include "filelist/list_binding.h"

#include <limits>

#include "filelist/columns.h"
#include "platform/runtime_error.h"
#include "platform/text.h"

namespace sylvex {

namespace {

constexpr unsigned kSetImageList = 4099;
constexpr std::uint32_t kShareImageLists = 64;

}  // namespace

void ListBinding::Bind(const std::shared_ptr<ListView>& New_ReqListView)
{
    m_state.m_ReqListView = New_ReqListView;
    m_tree.ReadDocumentsFolder();
    if (!AssignSysIL()) m_context.platform.boxes.Show(0, L"Error in AssignSysIl", {}, kBoxOk);
    FileSystem& files = m_context.platform.files;
    m_state.WinDir = files.WindowsDirectory();
    m_state.SysDir = files.SystemDirectory();
    m_state.TempDir = files.TempDirectory();
    LoadCaptions();
    LVColumnHeaders();
    const std::shared_ptr<ListView> list = m_state.BoundList();
    list->SetVisible(true);
    list->Refresh();
}

bool ListBinding::AssignSysIL()
{
    int i = 0;
    return Trapped(m_context.module, kNone, VARIABLES(i), [&](int& line) {
        if (!m_state.m_ReqListView) return false;
        line = 2;
        Windows& windows = m_context.platform.windows;
        const WindowHandle window = m_state.BoundList()->hWnd();
        const std::uint32_t style = windows.Style(window);
        // Written again, it would have the whole list painted.
        if ((style & kShareImageLists) == 0) windows.SetStyle(window, style | kShareImageLists);
        constexpr int kSmall = 1;
        for (i = 0; i <= kSmall; ++i) {
            line = 3;
            const ImageListHandle images = m_context.platform.shell.SystemImageList(i == kSmall);
            windows.Send(window, kSetImageList, static_cast<std::uintptr_t>(i), static_cast<std::intptr_t>(images));
        }
        return true;
    });
}

std::wstring ListBinding::Caption(const wchar_t* sModule, unsigned idString, const wchar_t* otherwise)
{
    std::wstring caption = m_tree.GetResourceStringFromFile(sModule, idString);
    return caption.empty() ? otherwise : caption;
}

void ListBinding::LoadCaptions()
{
    FileListState& texts = m_state;
    texts.sFolder = Caption(L"Shell32.Dll", 4131, L"Folder");
    texts.sName = Caption(L"Shell32.Dll", 8976, L"Name");
    texts.sExtension = L"Ext";
    texts.sSize = Caption(L"Shell32.Dll", 8978, L"Size");
    texts.sType = Caption(L"Shell32.Dll", 8979, L"Type");
    texts.sModified = Caption(L"Shell32.Dll", 8980, L"Modified");
    texts.sTime = Caption(L"Intl.Cpl", 25, L"Time");
    texts.sCreated = Caption(L"Shell32.Dll", 8996, L"Created");
    texts.sAccessed = Caption(L"Shell32.Dll", 8997, L"Accessed");
    texts.sAttribute = Caption(L"Shell32.Dll", 8987, L"Attributes");
    texts.sMsDos = L"MsDos 8.3";
    texts.sNone = Caption(L"Shell32.Dll", 9808, L"None");
}

void ListBinding::LVColumnHeaders()
{
    Trapped(m_context.module, [&](int& line) {
        const std::shared_ptr<ListView> list = m_state.BoundList();
        list->ClearItems();
        list->ClearColumns();
        line = 2;
        for (const ColumnFacts& column : kColumns) {
            const bool isAccessed = &column == &kColumns[static_cast<std::size_t>(Column::acc)];
            if (isAccessed) line = 3;
            const double width = isAccessed && CheckFAT() ? kAccessedWidthOnFat : column.width;
            list->AddColumn({column.key, column.caption ? m_state.*column.caption : L"", width, column.alignment});
            if (isAccessed) line = 4;
        }
    });
}

bool ListBinding::CheckFAT()
{
    std::wstring Root;
    return Trapped(m_context.module, kNone, VARIABLES(Root), [&](int& line) {
        Root = m_state.SourcePath.substr(0, 3);
        line = 2;
        return IsFatVolume(Root);
    });
}

bool ListBinding::IsFatVolume(const std::wstring& root)
{
    // A volume that cannot be asked counts as FAT.
    const std::optional<std::wstring> name = m_context.platform.files.FileSystemName(root);
    return !name || EqualText(m_context.platform.regional, name->substr(0, 3), L"FAT");
}

short ListBinding::LVIdx(const std::wstring& sKey)
{
    return Trapped(m_context.module, VARIABLES(sKey), [&] {
        const int index = m_state.BoundList()->SubItemIndex(sKey);
        if (index < 0 || index > std::numeric_limits<short>::max()) throw IndexOutOfBounds();
        return static_cast<short>(index);
    });
}

void ListBinding::HideSortColumns()
{
    const std::shared_ptr<ListView> list = m_state.BoundList();
    for (const ColumnFacts& column : kColumns)
        if (column.IsHidden()) list->SetColumnWidth(column.key, 0);
}

void ListBinding::LoadCleanup(short SortCol)
{
    Trapped(m_context.module, VARIABLES(SortCol), [&](int& line) {
        m_state.BoundList()->SortBy(SortCol);
        line = 2;
        AssignSysIL();
        line = 3;
        m_context.platform.system.ResetPointer();
    });
}

}  // namespace sylvex
