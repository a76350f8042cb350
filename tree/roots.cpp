#include <bit>

#include "platform/text.h"
#include "tree/folder_tree.h"
#include "tree/tree_icons.h"
#include "widgets/tree_messages.h"

namespace sylvex {

namespace {

constexpr int kDocumentsFolder = 5;
constexpr unsigned kDesktopString = 4162;
constexpr unsigned kMyComputerString = 9216;
constexpr int kDragWidthMetric = 68;
constexpr int kDragHeightMetric = 69;
constexpr int kDefaultScrollBand = 32;
constexpr unsigned kFixedDrive = 3;

std::wstring OrElse(const std::wstring& text, const wchar_t* word)
{
    return text.empty() ? std::wstring(word) : text;
}

/// The image key of a drive; one of a type not known here keeps `previous`.
std::wstring DrivePicture(unsigned type, int bit, const std::wstring& previous)
{
    switch (type) {
        case 0:
        case 1: return L"dl";
        case 2: return bit < 2 ? L"f35" : L"rem";
        case 3: return L"hd";
        case 4: return L"rte";
        case 5: return L"cd";
        case 6: return L"ram";
        default: return previous;
    }
}

}  // namespace

FolderTree::FolderTree(Instance& instance) : m_instance(instance)
{
    instance.TV.GetNodes().SetPlaceholderQuestion([this](Node& node) {
        // Asked by the name under its folder, whatever the file filter makes of a folder's own path.
        const std::wstring path = BuildFullPath(node.Parent()) + node.Text() + L"\\";
        if (hasSubDirectory(path)) return true;
        const bool onItsWay = !m_movingTo.empty() && path.starts_with(m_movingTo);
        return onItsWay && hasSubDirectory(m_movingFrom + path.substr(m_movingTo.size()));
    });
}

void FolderTree::LoadSystemIcons()
{
    ::sylvex::LoadSystemIcons(m_instance, m_instance.platform.shell, m_instance.ImageList1);
}

void FolderTree::Clear()
{
    Trapped(m_instance, L"Clear", kNone, kNone, [&](int& line) {
        line = 1;
        m_instance.InClear = true;
        line = 2;
        m_instance.TV.BeginUpdate();
        m_instance.TV.GetNodes().Clear();
        line = 3;
        m_instance.TV.EndUpdate();
        m_instance.InClear = false;
    });
}

void FolderTree::LoadTree6()
{
    short FirstFixed = 0;
    Rect rc;
    Trapped(m_instance, L"LoadTree6", kNone, VARIABLES(FirstFixed, rc), [&](int& line) {
        TreeView& TV = m_instance.TV;
        Nodes& nodes = TV.GetNodes();
        line = 1;
        TV.SetImageList(&m_instance.ImageList1);
        m_instance.m_hwndTV = TV.hWnd();
        m_instance.sNodeText.clear();
        line = 2;
        TreeMessages messages(m_instance, m_instance.platform.windows);
        const ItemHandle root = messages.TreeView_GetRoot(m_instance.m_hwndTV);
        const bool given = messages.TreeView_GetItemRect(m_instance.m_hwndTV, root, rc, true);
        m_instance.m_cxyAutoScroll = given ? (rc.bottom - rc.top) * 2 : kDefaultScrollBand;
        line = 3;
        m_instance.m_szDrag = {m_instance.platform.system.Metric(kDragWidthMetric),
                               m_instance.platform.system.Metric(kDragHeightMetric)};
        line = 4;
        Node& desktop = nodes.Add(nullptr, Relationship::Last, L"Desktop",
                                  OrElse(GetResourceStringFromFile(L"Shell32.Dll", kDesktopString), L"Desktop"),
                                  std::wstring(L"dt"));
        line = 5;
        m_instance.m_MyDocs = FolderLocation(kDocumentsFolder);
        const std::wstring& documents = m_instance.m_MyDocs;
        Node& myDocuments = nodes.Add(&desktop, Relationship::Child, QualifyPath(documents),
                                      documents.size() > 3 ? documents.substr(3) : std::wstring(), std::wstring(L"cl"));
        line = 6;
        if (hasSubDirectory(documents)) nodes.AddChild(myDocuments, L"", 0);
        line = 7;
        Node& myComputer = nodes.Add(&desktop, Relationship::Child, L"MyComputer",
                                     OrElse(GetResourceStringFromFile(L"Shell32.Dll", kMyComputerString), L"My Computer"),
                                     std::wstring(L"mc"));
        line = 8;
        bool pictureMissing = false;
        AddDrives(nodes, myComputer, FirstFixed, pictureMissing);
        line = 10;
        if (FirstFixed > 0) nodes.Item(FirstFixed).EnsureVisible();
        nodes.Item(1).EnsureVisible();
        TV.Refresh();
        if (FirstFixed == 0) throw IndexOutOfBounds();
        if (pictureMissing) throw ElementNotFound();
    });
}

void FolderTree::AddDrives(Nodes& nodes, Node& myComputer, short& FirstFixed, bool& pictureMissing)
{
    const std::uint32_t DrvBitMask = m_instance.platform.files.LogicalDrives();
    const int MaxPwr = static_cast<int>(std::bit_width(DrvBitMask)) - 1;
    std::wstring MyPic;
    for (int Pwr = 0; Pwr <= MaxPwr; ++Pwr) {
        if ((DrvBitMask >> Pwr & 1) == 0) continue;
        const std::wstring MyDrive{static_cast<wchar_t>(L'A' + Pwr), L':', L'\\'};
        const unsigned DriveType = m_instance.platform.files.DriveType(MyDrive);
        MyPic = DrivePicture(DriveType, Pwr, MyPic);
        pictureMissing = pictureMissing || !KeyExists(m_instance.ImageList1, MyPic);
        Node& drive = nodes.Add(&myComputer, Relationship::Child, MyDrive,
                                m_instance.platform.shell.DisplayName(MyDrive), MyPic);
        if (FirstFixed == 0 && DriveType == kFixedDrive) FirstFixed = static_cast<short>(nodes.Count());
        nodes.AddChild(drive, L"", 0);
    }
}

}  // namespace sylvex
