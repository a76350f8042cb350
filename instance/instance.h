#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "diagnostics/trap.h"
#include "platform/platform.h"
#include "widgets/imagelist.h"
#include "widgets/listview.h"
#include "widgets/treeview.h"

namespace sylvex {

/// What the file-type cache knows of one extension.
struct FTs {
    static constexpr const wchar_t* kRecordName = L"{FTs}";
    std::wstring Ext;
    std::wstring TypeName;
    int IconIndex = 0;
};

/// What every subsystem of one control shares: the platform, the child controls, and the control's variables in the
/// order in which reports print them. It is the module "Sylvex" of the error trap.
class Instance : public Module {
public:
    static constexpr const wchar_t* kReportName = L"{Sylvex}";

    /// Makes the tree's window below `parent`.
    Instance(Platform& platform, TreeViewEvents& events, WindowHandle parent);

    Platform& platform;
    ImageList ImageList1;
    TreeView TV;

    std::wstring WinDir, SysDir, TempDir, SourcePath;
    std::wstring sFolder, sName, sExtension, sSize, sType, sModified, sTime, sCreated, sAccessed, sAttribute, sMsDos,
        sNone;
    bool IsFAT = false;
    std::vector<FTs> TypeNew{FTs{}};
    short DragImage = 0;
    std::wstring Buffer, FullPath, sNodeText;
    std::vector<std::wstring> SylvexFilter;
    NodeRef nodX;
    WindowHandle m_hwndTV = 0;
    ImageListHandle m_himlDrag = 0;
    ItemHandle m_hitemDrag = 0;
    int m_cxyAutoScroll = 0;
    short m_iButton = 0;
    NodeRef m_nodDrag;
    Size m_szDrag;
    Point m_ptBtnDown, m_ptHotSpot;
    bool m_DragDropEnable = false;
    std::wstring m_FileFilter;
    long m_hWnd = 0;
    std::wstring m_Path;
    std::wstring m_MyDocs;
    std::shared_ptr<ListView> m_ReqListView;
    bool m_RecursiveCheck = true;
    bool InSetNodeChecked = false;
    bool InClear = false;
    std::vector<std::wstring> m_BuildFileListFilter{L"*"};

    /// The list view bound, kept in existence by the caller. Raises 91 when none is.
    std::shared_ptr<ListView> BoundList() const;

    // Module
    const wchar_t* Name() const override { return L"Sylvex"; }
    void DumpVariables(Dump& dump) const override;
    Reporter& ReportTo() const override { return platform.reporter; }
    MessageBoxes& Boxes() const override { return platform.boxes; }
};

/// A module of the component that is not the control itself: a name, a few variables, and the control's reporters.
class NamedModule : public Module {
public:
    NamedModule(const wchar_t* name, const Platform& platform) : m_name(name), m_platform(platform) {}
    const wchar_t* Name() const override { return m_name; }
    void DumpVariables(Dump&) const override {}
    Reporter& ReportTo() const override { return m_platform.reporter; }
    MessageBoxes& Boxes() const override { return m_platform.boxes; }

private:
    const wchar_t* m_name;
    const Platform& m_platform;
};

}  // namespace sylvex
