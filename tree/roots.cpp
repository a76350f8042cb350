#include <bit>
#include <optional>

#include "platform/text.h"
#include "tree/folder_tree.h"
#include "tree/tree_icons.h"
#include "widgets/tree_messages.h"

namespace sylvex {

namespace {

constexpr unsigned kDesktopString = 4162;
constexpr unsigned kMyComputerString = 9216;
constexpr int kDragWidthMetric = 68;
constexpr int kDragHeightMetric = 69;
constexpr int kDefaultScrollBand = 32;
constexpr unsigned kFixedDrive = 3;
/// What the shell tells of a drive is read by the platform, field by field.
constexpr Marker si{L"{SHFILEINFO}"};

/// Raises the flag for its lifetime. Were it to stay up, nothing could be opened or ticked any more.
class Clearing {
public:
    explicit Clearing(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Clearing() { m_flag = false; }
    Clearing(const Clearing&) = delete;
    Clearing& operator=(const Clearing&) = delete;

private:
    bool& m_flag;
};

std::wstring OrElse(const std::wstring& text, const wchar_t* word)
{
    return text.empty() ? std::wstring(word) : text;
}

/// The image key of a drive; one of a type not known here keeps `previous`.
std::wstring DrivePicture(unsigned type, int bit, const std::wstring& previous)
{
    switch (type) {
        case 0:
        case 1:
            return L"dl";
        case 2:
            return bit < 2 ? L"f35" : L"rem";
        case 3:
            return L"hd";
        case 4:
            return L"rte";
        case 5:
            return L"cd";
        case 6:
            return L"ram";
        default:
            return previous;
    }
}

}  // namespace

FolderTree::FolderTree(const Context& context, TreeState& state)
    : m_context(context), m_state(state), m_places(context.platform.regional)
{
    context.TV.GetNodes().SetPlaceholderQuestion([this](Node& node) {
        const std::wstring place = m_places.Of(node);
        if (!place.empty() && hasSubDirectory(QualifyPath(place))) return true;
        // A branch on its way is looked for at its old place and at the one that the tree shows.
        if (!place.empty() && m_relocation == nullptr) return false;
        // Asked by the name under its folder, whatever the file filter makes of the paths of folders.
        return hasSubDirectory(QualifyPath(BuildFullPath(node.Parent())) + node.Text() + L"\\");
    });
}

void FolderTree::LoadSystemIcons()
{
    ::sylvex::LoadSystemIcons(m_context.platform, m_context.ImageList1);
}

void FolderTree::Clear()
{
    std::optional<Clearing> clearing;
    std::optional<TreeView::Updating> hidden;
    Trapped(m_context.module, [&](int& line) {
        clearing.emplace(m_state.InClear);
        line = 2;
        hidden.emplace(m_context.TV);
        m_context.TV.GetNodes().Clear();
        line = 3;
        hidden->End();
        if (!m_context.TV.Visible()) m_context.TV.SetVisible(true);
    });
}

/// The variables of one load of the roots.
struct FolderTree::RootLocals {
    short FirstFixed = 0;
    std::uint32_t DrvBitMask = 0;
    short MaxPwr = 0;
    short Pwr = 0;
    unsigned DriveType = 0;
    std::wstring MyDrive;
    std::wstring MyPic;
    std::wstring MyKey;
    NodeRef nod1;
    Rect rc;
    bool pictureMissing = false;
};

void FolderTree::LoadTree6()
{
    RootLocals own;
    const auto locals = VARIABLES(own.FirstFixed, own.DrvBitMask, own.MaxPwr, own.Pwr, own.DriveType, own.MyDrive,
                                  own.MyPic, own.MyKey, own.nod1, si, own.rc);
    Trapped(m_context.module, kNone, locals, [&](int& line) {
        TreeView& TV = m_context.TV;
        TV.SetImageList(&m_context.ImageList1);
        NoteWindow();
        line = 2;
        MeasureRow(own.rc);
        line = 3;
        System& system = m_context.platform.system;
        m_state.m_szDrag = {system.Metric(kDragWidthMetric), system.Metric(kDragHeightMetric)};
        Node& desktop = AddDesktop(own, line);
        Node& myComputer = AddBelow(desktop, own, line);
        line = 8;
        AddDrives(myComputer, own, line);
        line = 10;
        Nodes& nodes = TV.GetNodes();
        if (own.FirstFixed > 0) nodes.Item(own.FirstFixed).EnsureVisible();
        nodes.Item(1).EnsureVisible();
        TV.Refresh();
        if (own.FirstFixed == 0) throw IndexOutOfBounds();
        if (own.pictureMissing) throw ElementNotFound();
    });
}

/// Twice the height of the first row is the band at the tree's edges in which a drag scrolls it.
void FolderTree::MeasureRow(Rect& rc)
{
    TreeMessages messages(m_context.module, m_context.platform.windows);
    const ItemHandle root = messages.TreeView_GetRoot(m_state.m_hwndTV);
    const bool given = messages.TreeView_GetItemRect(m_state.m_hwndTV, root, rc, true);
    m_state.m_cxyAutoScroll = given ? (rc.bottom - rc.top) * 2 : kDefaultScrollBand;
}

Node& FolderTree::AddDesktop(RootLocals& own, int& line)
{
    line = 4;
    own.MyKey = L"Desktop";
    Node& desktop = m_context.TV.GetNodes().Add(
        nullptr, Relationship::Last, own.MyKey,
        OrElse(GetResourceStringFromFile(L"Shell32.Dll", kDesktopString), L"Desktop"), std::wstring(L"dt"));
    desktop.SetKind(kKindFolder);
    own.nod1 = NodeRef(&desktop);
    return desktop;
}

/// Adds the documents folder, then the machine, which it gives.
Node& FolderTree::AddBelow(Node& desktop, RootLocals& own, int& line)
{
    Nodes& nodes = m_context.TV.GetNodes();
    line = 5;
    ReadDocumentsFolder();
    const std::wstring& documents = m_state.m_MyDocs;
    // Where a whole drive is the documents folder, its path is the drive's key.
    const bool isWholeDrive = documents.size() <= 3 && documents.find(L':') == 1;
    own.MyKey = isWholeDrive ? std::wstring() : QualifyPath(documents);
    Node& myDocuments = nodes.Add(&desktop, Relationship::Child, own.MyKey,
                                  documents.size() > 3 ? documents.substr(3) : std::wstring(), std::wstring(L"cl"));
    myDocuments.SetKind(kKindFolder);
    own.nod1 = NodeRef(&myDocuments);
    line = 6;
    if (hasSubDirectory(documents)) nodes.AddChild(myDocuments, L"", 0);
    line = 7;
    own.MyKey = L"MyComputer";
    Node& myComputer = nodes.Add(&desktop, Relationship::Child, own.MyKey,
                                 OrElse(GetResourceStringFromFile(L"Shell32.Dll", kMyComputerString), L"My Computer"),
                                 std::wstring(L"mc"));
    myComputer.SetKind(kKindFolder);
    own.nod1 = NodeRef(&myComputer);
    return myComputer;
}

void FolderTree::AddDrives(Node& myComputer, RootLocals& own, int& line)
{
    Nodes& nodes = m_context.TV.GetNodes();
    const NodeRef computer(&myComputer);
    own.DrvBitMask = m_context.platform.files.LogicalDrives();
    own.MaxPwr = static_cast<short>(std::bit_width(own.DrvBitMask) - 1);
    line = 9;
    for (own.Pwr = 0; own.Pwr <= own.MaxPwr; ++own.Pwr) {
        if ((own.DrvBitMask >> own.Pwr & 1) == 0) continue;
        own.MyKey = own.MyDrive = {static_cast<wchar_t>(L'A' + own.Pwr), L':', L'\\'};
        own.DriveType = m_context.platform.files.DriveType(own.MyDrive);
        own.MyPic = DrivePicture(own.DriveType, own.Pwr, own.MyPic);
        own.pictureMissing = own.pictureMissing || !KeyExists(m_context.ImageList1, own.MyPic);
        // The shell may let messages through, and with them a host that empties the tree.
        const std::wstring name = m_context.platform.shell.DisplayName(own.MyDrive);
        Node& drive = nodes.Add(&*computer, Relationship::Child, own.MyKey, name, own.MyPic);
        drive.SetKind(kKindFolder);
        own.nod1 = NodeRef(&drive);
        if (own.FirstFixed == 0 && own.DriveType == kFixedDrive) own.FirstFixed = static_cast<short>(nodes.Count());
        nodes.AddChild(drive, L"", 0);
    }
}

}  // namespace sylvex
