#include "filelist/list_binding.h"

#include <limits>

#include "platform/runtime_error.h"
#include "platform/text.h"

namespace sylvex {

namespace {

constexpr unsigned kSetImageList = 4099;
constexpr std::uint32_t kShareImageLists = 64;
constexpr int kDocuments = 5;
constexpr const wchar_t* kSortColumns[] = {L"cmp2", L"cre2", L"acc2", L"siz2", L"mod2", L"tim2"};

}  // namespace

ListBinding::ListBinding(Instance& instance, FolderTree& tree) : m_instance(instance), m_tree(tree) {}

void ListBinding::Bind(const std::shared_ptr<ListView>& New_ReqListView)
{
    m_instance.m_ReqListView = New_ReqListView;
    m_instance.m_MyDocs = m_tree.FolderLocation(kDocuments);
    if (!AssignSysIL()) m_instance.platform.boxes.Show(0, L"Error in AssignSysIl", {}, kBoxOk);
    FileSystem& files = m_instance.platform.files;
    m_instance.WinDir = files.WindowsDirectory();
    m_instance.SysDir = files.SystemDirectory();
    m_instance.TempDir = files.TempDirectory();
    LoadCaptions();
    LVColumnHeaders();
    const std::shared_ptr<ListView> list = m_instance.BoundList();
    list->SetVisible(true);
    list->Refresh();
}

bool ListBinding::AssignSysIL()
{
    int i = 0;
    return Trapped(m_instance, L"AssignSysIL", kNone, VARIABLES(i), [&](int& line) {
        line = 1;
        if (!m_instance.m_ReqListView) return false;
        line = 2;
        Windows& windows = m_instance.platform.windows;
        const WindowHandle window = m_instance.BoundList()->hWnd();
        const std::uint32_t style = windows.Style(window);
        // Written again, it would have the whole list painted.
        if ((style & kShareImageLists) == 0) windows.SetStyle(window, style | kShareImageLists);
        constexpr int kSmall = 1;
        for (i = 0; i <= kSmall; ++i) {
            line = 3;
            const ImageListHandle images = m_instance.platform.shell.SystemImageList(i == kSmall);
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
    Instance& texts = m_instance;
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
    Trapped(m_instance, L"LVColumnHeaders", kNone, kNone, [&](int& line) {
        line = 1;
        const std::shared_ptr<ListView> list = m_instance.BoundList();
        list->ClearItems();
        list->ClearColumns();
        line = 2;
        const Instance& texts = m_instance;
        list->AddColumn({L"nam", texts.sName, 3600});
        list->AddColumn({L"ext", texts.sExtension, 500});
        list->AddColumn({L"siz", texts.sSize, 1100, Alignment::Right});
        list->AddColumn({L"typ", texts.sType, 1400});
        list->AddColumn({L"mod", texts.sModified, 1000});
        list->AddColumn({L"tim", texts.sTime, 1100});
        list->AddColumn({L"cre", texts.sCreated, 1700});
        line = 3;
        list->AddColumn({L"acc", texts.sAccessed, CheckFAT() ? 1200.0 : 1700.0});
        line = 4;
        list->AddColumn({L"atr", texts.sAttribute, 1000});
        list->AddColumn({L"dos", texts.sMsDos, 1600});
        for (const wchar_t* const key : kSortColumns)
            list->AddColumn({key, {}, 0});
    });
}

bool ListBinding::CheckFAT()
{
    std::wstring Root;
    return Trapped(m_instance, L"CheckFAT", kNone, VARIABLES(Root), [&](int& line) {
        line = 1;
        Root = m_instance.SourcePath.substr(0, 3);
        line = 2;
        return IsFatVolume(Root);
    });
}

bool ListBinding::IsFatVolume(const std::wstring& root)
{
    // A volume that cannot be asked counts as FAT.
    const std::optional<std::wstring> name = m_instance.platform.files.FileSystemName(root);
    return !name || EqualText(m_instance.platform.regional, name->substr(0, 3), L"FAT");
}

short ListBinding::LVIdx(const std::wstring& sKey)
{
    return Trapped(m_instance, L"LVIdx", VARIABLES(sKey), kNone, [&](int& line) {
        line = 1;
        const int index = m_instance.BoundList()->SubItemIndex(sKey);
        if (index < 0 || index > std::numeric_limits<short>::max()) throw IndexOutOfBounds();
        return static_cast<short>(index);
    });
}

void ListBinding::HideSortColumns()
{
    const std::shared_ptr<ListView> list = m_instance.BoundList();
    for (const wchar_t* const key : kSortColumns)
        list->SetColumnWidth(key, 0);
}

void ListBinding::LoadCleanup(short SortCol)
{
    Trapped(m_instance, L"LoadCleanup", VARIABLES(SortCol), kNone, [&](int& line) {
        line = 1;
        m_instance.BoundList()->SortBy(SortCol);
        line = 2;
        AssignSysIL();
        line = 3;
        m_instance.platform.system.ResetPointer();
    });
}

}  // namespace sylvex
