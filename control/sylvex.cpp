#include "control/sylvex.h"

#include <algorithm>
#include <unordered_set>

#include "diagnostics/message_box.h"
#include "platform/text.h"

namespace sylvex {

namespace {

void DumpGlobals(Dump& dump)
{
    dump.Add("InTreeSetParent", InTreeSetParent());
    dump.Add("m_Sylvex", m_Sylvex());
    DeclaresModule::DumpAll(dump);
    dump.Add("g_hBoldFont", 0);
}

}  // namespace

Sylvex::Sylvex(Platform& platform, Container& container, SylvexEvents& events, WindowHandle parent)
    : m_container(container),
      m_events(events),
      m_instance(platform, *this, parent),
      m_tree(m_instance),
      m_checks(m_instance),
      m_list(m_instance, m_tree),
      m_boxes(std::make_unique<MManipulateMsgBox>(platform)),
      m_navigation(m_instance, m_tree, *m_boxes),
      m_checkByPath(m_instance, m_tree, *this, *m_boxes),
      m_drag(m_instance, *this),
      m_disk(m_instance),
      m_drop(m_instance, m_tree, m_checks, m_drag, m_disk, *this),
      m_rename(m_instance, m_tree, m_disk, *this)
{
    SetGlobalDump(&DumpGlobals);
    UserControl_Initialize();
}

Sylvex::~Sylvex()
{
    UserControl_Terminate();
}

void Sylvex::UserControl_Terminate() noexcept
{
    sylvex::m_Sylvex() = nullptr;
    try {
        Trapped(m_instance, L"Usercontrol_Terminate", kNone, kNone, [&](int& line) {
            line = 1;
            m_drag.Cancel();
            line = 2;
            m_instance.m_ReqListView.reset();
        });
    } catch (...) {  // has been reported, and nobody is there to hear it
    }
}

void Sylvex::UserControl_Initialize()
{
    Trapped(m_instance, L"Usercontrol_Initialize", kNone, kNone, [&](int& line) {
        line = 1;
        m_tree.LoadSystemIcons();
        line = 2;
        m_instance.TV.SetImageList(&m_instance.ImageList1);
        line = 3;
        m_instance.TV.GetNodes().Add(nullptr, Relationship::Last, L"Sylvex", L"Sylvex + [ *.zip ]",
                                     std::wstring(L"cl"));
        line = 4;
        m_instance.TV.Refresh();
        line = 5;
        sylvex::m_Sylvex() = &m_instance;
    });
}

void Sylvex::UserControl_InitProperties()
{
    Trapped(m_instance, L"UserControl_InitProperties", kNone, kNone, [&](int& line) {
        line = 1;
        m_instance.m_Path.clear();
        line = 2;
        m_instance.m_hWnd = 0;
        line = 3;
        m_instance.m_FileFilter.clear();
        line = 4;
        m_instance.m_DragDropEnable = false;
        line = 5;
        m_instance.m_RecursiveCheck = true;
    });
}

void Sylvex::UserControl_Resize(Size size)
{
    Trapped(m_instance, L"UserControl_Resize", kNone, kNone, [&](int& line) {
        line = 1;
        m_instance.TV.Move({0, 0, size.cx, size.cy});
    });
}

void Sylvex::Enumerate()
{
    Trapped(m_instance, L"Enumerate", kNone, kNone, [&](int& line) {
        m_drag.Cancel();
        line = 1;
        m_tree.Clear();
        line = 2;
        m_instance.SylvexFilter = SplitText(m_instance.m_FileFilter, L';');
        line = 3;
        try {
            m_tree.LoadTree6();
        } catch (...) {
            // A drive without a picture is told of at the end of loading; the boxes are the same all the same.
            m_instance.TV.InstallCheckPictures();
            throw;
        }
        line = 4;
        m_instance.TV.InstallCheckPictures();
    });
}

void Sylvex::Clear()
{
    m_drag.Cancel();
    m_tree.Clear();
}

namespace {

/// Reports a node that was refused as a failure of the procedure that it was given to.
template <class Parameters, class Locals>
Node* Resolved(const GivenNode& node, const Module& module, const wchar_t* procedure, const Parameters& parameters,
               const Locals& locals)
{
    if (!node.IsRefused()) return node.Get();
    return Trapped(module, procedure, parameters, locals, [&](int& line) {
        line = 1;
        return node.Get();
    });
}

}  // namespace

std::wstring Sylvex::BuildFullPath(const GivenNode& nod)
{
    const std::wstring sFullPath;
    return m_tree.BuildFullPath(Resolved(nod, m_instance, L"BuildFullPath", VARIABLES(nod), VARIABLES(sFullPath)));
}

/// Hides the bound list, empties it and fills it anew from the first node, and shows it again.
void Sylvex::RebuildList()
{
    m_instance.BoundList()->ClearItems();
    m_list.Binding().LVColumnHeaders();
    m_list.BuildFileList(&m_instance.TV.GetNodes().Item(1), false);
}

/// The same where nothing forbids it; nothing without a bound list.
void Sylvex::RebuildBoundList()
{
    if (!m_instance.m_ReqListView || m_instance.InSetNodeChecked || InTreeSetParent()) return;
    // The host may bind another list meanwhile: this one is shown again all the same.
    const std::shared_ptr<ListView> hidden = m_instance.BoundList();
    hidden->SetVisible(false);
    RebuildList();
    hidden->SetVisible(true);
}

void Sylvex::Refresh()
{
    Trapped(m_instance, L"Refresh", kNone, kNone, [&](int& line) {
        if (m_instance.m_ReqListView) {
            line = 1;
            const std::shared_ptr<ListView> hidden = m_instance.BoundList();
            hidden->SetVisible(false);
            line = 2;
            RebuildList();
            line = 3;
            hidden->SetVisible(true);
        }
        line = 4;
        m_instance.TV.Refresh();
    });
}

bool Sylvex::CheckNodeSelective(const GivenNode& node)
{
    return Trapped(m_instance, L"CheckNodeSelective", Variables("Node", node), kNone, [&](int& line) {
        line = 1;
        Node* const given = node.Get();
        if (given == nullptr) throw ObjectNotSet();
        TV_NodeCheck(*given);
        return false;
    });
}

void Sylvex::FreezeCtl(bool bFreeze)
{
    constexpr unsigned kSetRedraw = 11;
    Trapped(m_instance, L"FreezeCtl", VARIABLES(bFreeze), kNone, [&](int& line) {
        const NamedModule modTools(L"modTools", m_instance.platform);
        if (bFreeze) {
            line = 1;
            Trapped(modTools, L"FreezeCtl", Variables("Ctl", m_instance), kNone, [&](int& inner) {
                inner = 1;
                m_instance.platform.windows.Send(m_instance.TV.hWnd(), kSetRedraw, 0, 0);
            });
            return;
        }
        line = 2;
        try {  // a thaw goes on whatever fails
            m_instance.platform.windows.Send(m_instance.TV.hWnd(), kSetRedraw, 1, 0);
            Refresh();
        } catch (...) {
        }
    });
}

void Sylvex::BuildFileList(const GivenNode& pNode, bool RecursiveCall)
{
    const std::wstring sPath;
    const auto parameters = VARIABLES(pNode, RecursiveCall);
    m_list.BuildFileList(Resolved(pNode, m_instance, L"BuildFileList", parameters, VARIABLES(sPath)), RecursiveCall);
}

bool Sylvex::AssignSysIL()
{
    return m_list.Binding().AssignSysIL();
}

Currency Sylvex::CVC(const std::wstring& ValToConvert)
{
    return sylvex::CVC(m_instance, m_instance.platform.regional, ValToConvert);
}

std::wstring Sylvex::ReturnFileName(const std::wstring& Arq)
{
    return m_list.ReturnFileName(Arq);
}

void Sylvex::SetReqListView(const std::shared_ptr<ListView>& New_ReqListView)
{
    Trapped(m_instance, L"ReqListView", VARIABLES(New_ReqListView), kNone, [&](int& line) {
        if (!m_container.MayChange(L"ReqListView")) return;
        line = 1;
        m_list.Binding().Bind(New_ReqListView);
        line = 2;
        m_container.PropertyChanged(L"ReqListView");
    });
}

// ---- events of the tree

void Sylvex::TV_Expand(Node& Node)
{
    bool blnChecked = false;
    std::wstring SearchString;
    const NodeRef node(&Node);
    const auto locals = VARIABLES(blnChecked, SearchString);
    Trapped(m_instance, L"TV_Expand", Variables("Node", node), locals, [&](int& line) {
        line = 1;
        if (m_instance.InClear) return;
        line = 2;
        m_events.Expand(Node);
        line = 3;
        if (m_drop.Arriving(*node)) return;
        blnChecked = node->Checked();
        line = 4;
        m_tree.LoadChildren(*node);
        if (m_instance.InSetNodeChecked || !m_instance.m_ReqListView) return;
        line = 5;
        // What is written over at once need not be read from the list.
        if (node->Bold() || !m_instance.m_RecursiveCheck) MarkListed(node, SearchString);
        line = 6;
        if (!node->Bold()) m_checks.TreeSelectiveCheck(*node, m_instance.m_RecursiveCheck);
    });
}

/// Ticks those children of the node that the bound list shows: a row's text is their path, and for a folder that path,
/// the separator and one of the patterns.
void Sylvex::MarkListed(const NodeRef& node, std::wstring& SearchString)
{
    const auto list = m_instance.BoundList();
    if (list->RowCount() == 0) return;
    Regional& regional = m_instance.platform.regional;
    std::unordered_set<std::wstring> texts;
    for (const std::wstring& text : list->Texts())
        texts.insert(LowerText(regional, text));
    const std::wstring above = node->FullPath() + node->Collection().PathSeparator();
    for (Node* child = node->Child(); child != nullptr; child = child->Next()) {
        SearchString = LowerText(regional, m_tree.PathOf(above + child->Text(), child->Text()));
        // A file of a type that the filter does not list has a path that ends like a folder's; its row does not.
        const std::wstring unqualified = SearchString.substr(0, SearchString.find_last_not_of(L'\\') + 1);
        const auto isRow = [&](const std::wstring& pattern) {
            return texts.contains(unqualified + L'\\' + LowerText(regional, pattern));
        };
        const auto& patterns = m_instance.m_BuildFileListFilter;
        if (texts.contains(SearchString) || texts.contains(unqualified) ||
            std::any_of(patterns.begin(), patterns.end(), isRow))
            child->WriteMarks(true, child->Bold());
    }
    node->Collection().MarksWritten();
}

void Sylvex::TV_NodeCheck(Node& Node)
{
    const NodeRef node(&Node);
    Trapped(m_instance, L"TV_NodeCheck", Variables("Node", node), kNone, [&](int& line) {
        line = 1;
        if (m_instance.InClear) return;
        line = 2;
        m_checks.TreeSelectiveCheck(Node, m_instance.m_RecursiveCheck);
        line = 3;
        const std::shared_ptr<ListView> hidden = m_instance.BoundList();
        hidden->SetVisible(false);
        line = 4;
        if (!m_instance.InSetNodeChecked && !InTreeSetParent()) RebuildList();
        line = 5;
        hidden->SetVisible(true);
        line = 6;
        m_events.NodeCheck(*node);
    });
}

void Sylvex::TV_Collapse(Node& Node)
{
    Trapped(m_instance, L"TV_Collapse", VARIABLES(Node), kNone, [&](int& line) {
        line = 1;
        m_events.Collapse(Node);
    });
}

void Sylvex::TV_NodeClick(Node& Node)
{
    Trapped(m_instance, L"TV_NodeClick", VARIABLES(Node), kNone, [&](int& line) {
        line = 1;
        m_events.NodeClick(Node);
    });
}

void Sylvex::TV_DblClick()
{
    Trapped(m_instance, L"TV_DblClick", kNone, kNone, [&](int& line) {
        line = 1;
        m_events.DblClick();
    });
}

void Sylvex::TV_KeyDown(short& KeyCode, short Shift)
{
    Trapped(m_instance, L"TV_KeyDown", VARIABLES(KeyCode, Shift), kNone, [&](int& line) {
        line = 1;
        m_events.KeyDown(KeyCode, Shift);
    });
}

}  // namespace sylvex
