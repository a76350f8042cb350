#include "control/sylvex.h"

#include "diagnostics/message_box.h"
#include "diagnostics/named_module.h"
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
    : m_platform(platform),
      m_container(container),
      m_events(events),
      m_state(platform),
      m_pictures(platform.images),
      m_TV(platform, *this, parent),
      m_context{m_state, platform, m_TV, m_pictures},
      m_tree(m_context, m_state.tree),
      m_checks(m_context, m_state.checks),
      m_list(m_context, m_tree, m_checks, m_state.list),
      m_boxes(std::make_unique<MManipulateMsgBox>(platform)),
      m_navigation(m_context, m_tree, m_list, *m_boxes, m_state.navigation),
      m_checkByPath(m_context, m_tree, m_list, *this, *m_boxes, m_state.navigation),
      m_drag(m_context, m_tree, m_state.drag, *this),
      m_disk(m_context),
      m_drop(m_context, m_tree, m_state.drag, m_checks, m_drag, m_disk, *this),
      m_rename(m_context, m_tree, m_state.drag, m_disk, *this)
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
    sylvex::m_Sylvex() = Marker{L"{Nothing}"};
    try {
        Trapped(m_state, L"Usercontrol_Terminate", [&](int& line) {
            m_drag.Cancel();
            line = 2;
            m_state.list.m_ReqListView.reset();
        });
    } catch (...) {  // has been reported, and nobody is there to hear it
    }
}

void Sylvex::UserControl_Initialize()
{
    Trapped(m_state, L"Usercontrol_Initialize", [&](int& line) {
        m_tree.LoadSystemIcons();
        line = 2;
        m_TV.SetImageList(&m_pictures);
        line = 3;
        m_TV.GetNodes().Add(nullptr, Relationship::Last, L"Sylvex", L"Sylvex + [ *.zip ]", std::wstring(L"cl"));
        line = 4;
        m_TV.Refresh();
        line = 5;
        sylvex::m_Sylvex() = Marker{ControlState::kReportName};
    });
}

void Sylvex::UserControl_InitProperties()
{
    Trapped(m_state, [&](int& line) {
        m_state.navigation.m_Path.clear();
        line = 2;
        m_state.m_hWnd = 0;
        line = 3;
        m_state.tree.m_FileFilter.clear();
        line = 4;
        m_state.drag.m_DragDropEnable = false;
        line = 5;
        m_state.checks.m_RecursiveCheck = true;
    });
}

void Sylvex::UserControl_Resize(Size size)
{
    Trapped(m_state, [&] { m_TV.Move({0, 0, size.cx, size.cy}); });
}

void Sylvex::Enumerate()
{
    Trapped(m_state, [&](int& line) {
        m_drag.Cancel();
        m_tree.Clear();
        line = 2;
        m_state.tree.SylvexFilter = SplitText(m_state.tree.m_FileFilter, L';');
        line = 3;
        m_state.drag.sNodeText.clear();
        try {
            m_tree.LoadTree6();
        } catch (...) {
            // A drive without a picture is told of at the end of loading; the boxes are the same all the same.
            m_TV.InstallCheckPictures();
            throw;
        }
        line = 4;
        m_TV.InstallCheckPictures();
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
    return Trapped(module, procedure, parameters, locals, [&] { return node.Get(); });
}

}  // namespace

std::wstring Sylvex::BuildFullPath(const GivenNode& nod)
{
    const std::wstring sFullPath;
    return m_tree.BuildFullPath(Resolved(nod, m_state, L"BuildFullPath", VARIABLES(nod), VARIABLES(sFullPath)));
}

/// Rebuilds the bound list where nothing forbids it; nothing without one.
void Sylvex::RebuildBoundList()
{
    int line = 0;
    if (m_list.IsBound() && !m_state.navigation.InSetNodeChecked && !InTreeSetParent()) m_list.Rebuild(line);
}

void Sylvex::Refresh()
{
    Trapped(m_state, [&](int& line) {
        if (m_list.IsBound()) m_list.Rebuild(line);
        line = 4;
        m_TV.Refresh();
    });
}

void Sylvex::AttachWindow(WindowHandle parent)
{
    m_TV.AttachWindow(parent);
    m_tree.NoteWindow();
}

void Sylvex::DetachWindow()
{
    m_TV.DetachWindow();
    m_tree.NoteWindow();
}

bool Sylvex::CheckNodeSelective(const GivenNode& node)
{
    return Trapped(m_state, Variables("Node", node), [&] {
        Node* const given = node.Get();
        if (given == nullptr) throw ObjectNotSet();
        TV_NodeCheck(*given);
        return false;
    });
}

void Sylvex::SetNodeVisible()
{
    m_navigation.SetNodeVisible();
}

void Sylvex::SetNode()
{
    m_navigation.SetNode();
}

void Sylvex::SetNodeChecked(bool bState, bool bBuildList)
{
    m_checkByPath.SetNodeChecked(bState, bBuildList);
}

void Sylvex::FreezeCtl(bool bFreeze)
{
    constexpr unsigned kSetRedraw = 11;
    Trapped(m_state, VARIABLES(bFreeze), [&](int& line) {
        const NamedModule modTools(L"modTools", m_platform);
        if (bFreeze) {
            Trapped(modTools, L"FreezeCtl", Variables("Ctl", m_state),
                    [&] { m_platform.windows.Send(m_TV.hWnd(), kSetRedraw, 0, 0); });
            return;
        }
        line = 2;
        try {  // a thaw goes on whatever fails
            m_platform.windows.Send(m_TV.hWnd(), kSetRedraw, 1, 0);
            Refresh();
        } catch (...) {
        }
    });
}

void Sylvex::BuildFileList(const GivenNode& pNode, bool RecursiveCall)
{
    const std::wstring sPath;
    const auto parameters = VARIABLES(pNode, RecursiveCall);
    m_list.BuildFileList(Resolved(pNode, m_state, L"BuildFileList", parameters, VARIABLES(sPath)), RecursiveCall);
}

bool Sylvex::AssignSysIL()
{
    return m_list.Binding().AssignSysIL();
}

Currency Sylvex::CVC(const std::wstring& ValToConvert)
{
    return sylvex::CVC(m_state, m_platform.regional, ValToConvert);
}

std::wstring Sylvex::ReturnFileName(const std::wstring& Arq)
{
    return m_list.ReturnFileName(Arq);
}

}  // namespace sylvex
