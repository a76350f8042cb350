#pragma once

#include <memory>
#include <optional>
#include <string>

#include "checks/tree_select.h"
#include "control/control_state.h"
#include "control/given_node.h"
#include "control/property.h"
#include "dragdrop/drop.h"
#include "dragdrop/rename.h"
#include "filelist/file_list.h"
#include "filelist/formatting.h"
#include "navigation/check_by_path.h"
#include "navigation/navigation.h"
#include "tree/folder_tree.h"
#include "widgets/context.h"

namespace sylvex {

/// What the host hears. Parameters by reference go back to the tree as the host leaves them. Handlers may do anything,
/// letting go of the control included.
class SylvexEvents {
public:
    virtual ~SylvexEvents() = default;
    virtual void NodeCheck(Node& node) = 0;
    virtual void NodeClick(Node& node) = 0;
    virtual void Collapse(Node& node) = 0;
    virtual void DblClick() = 0;
    virtual void Expand(Node& node) = 0;
    virtual void KeyDown(short& keyCode, short& shift) = 0;
    virtual void KeyPress(short& keyAscii) = 0;
    virtual void KeyUp(short& keyCode, short& shift) = 0;
    /// Positions in pixels of the tree's client area.
    virtual void MouseUp(short button, short shift, Point where) = 0;
    virtual void MouseMove(short button, short shift, Point where) = 0;
    virtual void MouseDown(short button, short shift, Point where) = 0;
};

/// What the control asks of whatever contains it.
class Container {
public:
    virtual ~Container() = default;
    /// Keeps the control in existence while a call from its windows runs.
    virtual std::shared_ptr<void> KeepAlive() = 0;
    /// True at run time, false while the host is being designed.
    virtual bool UserMode() = 0;
    /// Tells the host that a property has changed.
    virtual void PropertyChanged(Property property) = 0;
    /// True when the host lets the property change now.
    virtual bool MayChange(Property property) = 0;
};

/// The control: a folder and file selector. Composes the subsystems; every public member runs under the error trap,
/// and what fails is reported and raised as 65535.
class Sylvex : private TreeViewEvents, private DragOwner {
public:
    /// Makes the child controls, the tree's window below `parent`, and shows one placeholder node. The arguments
    /// outlive the control. (UserControl_Initialize)
    Sylvex(Platform& platform, Container& container, SylvexEvents& events, WindowHandle parent);
    /// UserControl_Terminate
    ~Sylvex() override;

    void UserControl_InitProperties();
    /// The control's inner size in pixels.
    void UserControl_Resize(Size size);

    void Enumerate();
    void Clear();
    std::wstring BuildFullPath(const GivenNode& nod);
    void Refresh();
    /// Always false.
    bool CheckNodeSelective(const GivenNode& node);
    void FreezeCtl(bool bFreeze);
    std::wstring Path();
    /// Stores the path of an existing file or folder, selects its node when it is loaded, and rebuilds the bound list.
    /// Any other value changes nothing.
    void LetPath(const std::wstring& New_Path);
    /// Selects and shows the loaded node of the current path, if there is one.
    void SetNodeVisible();
    /// Selects and shows the node of the bound list's selected row, opening folders on the way.
    void SetNode();
    /// Gives that node the mark `bState` as a click does; `bBuildList`: the list is rebuilt.
    void SetNodeChecked(bool bState, bool bBuildList = false);
    /// `pNode` null: nothing happens.
    void BuildFileList(const GivenNode& pNode, bool RecursiveCall);
    bool AssignSysIL();
    Currency CVC(const std::wstring& ValToConvert);
    std::wstring ReturnFileName(const std::wstring& Arq);
    std::wstring BuildFileListFilter();
    void LetBuildFileListFilter(const std::wstring& New_BuildFileListFilter);
    const std::shared_ptr<ListView>& ReqListView() const { return m_state.list.m_ReqListView; }
    /// Binds a list view. Null: as an unset object.
    void SetReqListView(const std::shared_ptr<ListView>& New_ReqListView);

    WindowHandle hWnd();
    /// Raises 382 at run time; stores the value otherwise.
    void LethWnd(long New_hWnd);
    int Setting(TreeSetting setting);
    /// Raises 380 (through the trap) outside the setting's values; the old value is kept.
    void LetSetting(TreeSetting setting, int value);
    ObjectRef Font();
    void SetFont(const ObjectRef& New_Font);
    ObjectRef MouseIcon();
    void SetMouseIcon(const ObjectRef& New_MouseIcon);
    std::wstring PathSeparator();
    void LetPathSeparator(const std::wstring& New_PathSeparator);
    std::wstring FileFilter();
    void LetFileFilter(const std::wstring& New_FileFilter);
    bool DragDropEnable();
    void LetDragDropEnable(bool New_DragDropEnable);
    bool RecursiveCheck();
    void LetRecursiveCheck(bool New_RecursiveCheck);
    Node* SelectedItem();
    void LetSelectedItem(const GivenNode& New_SelectedItem);
    /// A foreign image list for the tree; 0 none.
    void LetImageList(ImageListHandle New_ImageList);

    TreeView& Tree() { return m_TV; }
    /// The tree's window has gone or goes, and is made anew below `parent`; what it shows stays.
    void DetachWindow();
    void AttachWindow(WindowHandle parent);
    FolderTree& Folders() { return m_tree; }
    const Context& Parts() const { return m_context; }
    ControlState& State() { return m_state; }

private:
    std::shared_ptr<void> KeepAlive() override { return m_container.KeepAlive(); }
    void TV_Expand(Node& Node) override;
    void TV_Collapse(Node& Node) override;
    void TV_NodeClick(Node& Node) override;
    void TV_NodeCheck(Node& Node) override;
    void TV_DblClick() override;
    void TV_KeyDown(short& KeyCode, short Shift) override;
    void TV_KeyPress(short& KeyAscii) override;
    void TV_KeyUp(short& KeyCode, short Shift) override;
    void TV_MouseDown(short Button, short Shift, Point where) override;
    void TV_MouseMove(short Button, short Shift, Point where) override;
    void TV_MouseUp(short Button, short Shift, Point where) override;
    void TV_BeforeLabelEdit(bool& Cancel) override;
    void TV_AfterLabelEdit(bool& Cancel, const std::wstring& NewString) override;

    void UserControl_Initialize();
    void UserControl_Terminate() noexcept;
    void RebuildBoundList() override;
    template <class Read>
    auto Get(const wchar_t* name, Read&& read);
    template <class Value, class Write>
    void Let(Property property, const Value& value, Write&& write);

    Platform& m_platform;
    Container& m_container;
    SylvexEvents& m_events;
    ControlState m_state;
    ImageList m_pictures;
    TreeView m_TV;
    const Context m_context;
    FolderTree m_tree;
    TreeSelect m_checks;
    FileList m_list;
    std::unique_ptr<MManipulateMsgBox> m_boxes;
    Navigation m_navigation;
    CheckByPath m_checkByPath;
    DragSession m_drag;
    DiskOperations m_disk;
    Drop m_drop;
    Rename m_rename;
};

}  // namespace sylvex
