#include "control/sylvex.h"

namespace sylvex {

namespace {

/// The new value of a property as a parameter of its report: New_ and the property's name.
template <class Value>
struct NewValue {
    Property property;
    const Value& value;
    void DumpTo(Dump& dump) const
    {
        std::string parameter = "New_";
        for (const wchar_t* at = NameOf(property); *at != L'\0'; ++at)
            parameter += static_cast<char>(*at);
        dump.Add(parameter, value);
    }
};

}  // namespace

/// Reads a property under the trap, as the procedure of the property's name.
template <class Read>
auto Sylvex::Get(const wchar_t* name, Read&& read)
{
    return Trapped(m_state, name, read);
}

/// Writes a property likewise, asking the host before and telling it after.
template <class Value, class Write>
void Sylvex::Let(Property property, const Value& value, Write&& write)
{
    Trapped(m_state, NameOf(property), NewValue<Value>{property, value}, [&](int& line) {
        if (!m_container.MayChange(property)) return;
        write();
        line = 2;
        m_container.PropertyChanged(property);
    });
}

std::wstring Sylvex::Path()
{
    return Trapped(m_state, [&] { return m_state.navigation.m_Path; });
}

void Sylvex::LetPath(const std::wstring& New_Path)
{
    FileEntry W32FD;
    Trapped(m_state, L"Path", VARIABLES(New_Path), VARIABLES(W32FD), [&](int& line) {
        if (!m_navigation.FileExistsW32FD(New_Path, W32FD)) return;
        if (!m_container.MayChange(Property::Path)) return;
        line = 2;
        m_state.navigation.m_Path = New_Path;
        line = 3;
        m_container.PropertyChanged(Property::Path);
        line = 4;
        m_navigation.SetNodeVisible();
        if (!m_list.IsBound()) return;
        line = 5;
        m_list.Rebuild(line);
    });
}

void Sylvex::SetReqListView(const std::shared_ptr<ListView>& New_ReqListView)
{
    Trapped(m_state, L"ReqListView", VARIABLES(New_ReqListView), [&](int& line) {
        if (!m_container.MayChange(Property::ReqListView)) return;
        m_list.Binding().Bind(New_ReqListView);
        line = 2;
        m_container.PropertyChanged(Property::ReqListView);
    });
}

WindowHandle Sylvex::hWnd()
{
    return Get(L"hWnd", [&] { return m_TV.hWnd(); });
}

void Sylvex::LethWnd(long New_hWnd)
{
    if (m_container.UserMode()) throw ReadOnlyAtRunTime();  // outside the trap: it reaches the host unreported
    Let(Property::hWnd, New_hWnd, [&] { m_state.m_hWnd = New_hWnd; });
}

int Sylvex::Setting(TreeSetting setting)
{
    return Get(NameOf(PropertyOf(setting)), [&] { return m_TV.Setting(setting); });
}

void Sylvex::LetSetting(TreeSetting setting, int value)
{
    Let(PropertyOf(setting), value, [&] { m_TV.SetSetting(setting, value); });
}

ObjectRef Sylvex::Font()
{
    return Get(L"Font", [&] { return m_TV.Font(); });
}

void Sylvex::SetFont(const ObjectRef& New_Font)
{
    Let(Property::Font, New_Font, [&] { m_TV.SetFont(New_Font); });
}

ObjectRef Sylvex::MouseIcon()
{
    return Get(L"MouseIcon", [&] { return m_TV.MouseIcon(); });
}

void Sylvex::SetMouseIcon(const ObjectRef& New_MouseIcon)
{
    Let(Property::MouseIcon, New_MouseIcon, [&] { m_TV.SetMouseIcon(New_MouseIcon); });
}

std::wstring Sylvex::PathSeparator()
{
    return Get(L"PathSeparator", [&] { return m_TV.GetNodes().PathSeparator(); });
}

void Sylvex::LetPathSeparator(const std::wstring& New_PathSeparator)
{
    Let(Property::PathSeparator, New_PathSeparator, [&] { m_TV.GetNodes().SetPathSeparator(New_PathSeparator); });
}

std::wstring Sylvex::FileFilter()
{
    return Get(L"FileFilter", [&] { return m_state.tree.m_FileFilter; });
}

void Sylvex::LetFileFilter(const std::wstring& New_FileFilter)
{
    Let(Property::FileFilter, New_FileFilter, [&] { m_state.tree.m_FileFilter = New_FileFilter; });
}

bool Sylvex::DragDropEnable()
{
    return Get(L"DragDropEnable", [&] { return m_state.drag.m_DragDropEnable; });
}

void Sylvex::LetDragDropEnable(bool New_DragDropEnable)
{
    Let(Property::DragDropEnable, New_DragDropEnable, [&] {
        m_state.drag.m_DragDropEnable = New_DragDropEnable;
        if (!New_DragDropEnable) m_drag.Cancel();
    });
}

bool Sylvex::RecursiveCheck()
{
    return Get(L"RecursiveCheck", [&] { return m_state.checks.m_RecursiveCheck; });
}

void Sylvex::LetRecursiveCheck(bool New_RecursiveCheck)
{
    Let(Property::RecursiveCheck, New_RecursiveCheck, [&] { m_state.checks.m_RecursiveCheck = New_RecursiveCheck; });
}

Node* Sylvex::SelectedItem()
{
    return Get(L"SelectedItem", [&] { return m_TV.SelectedItem(); });
}

void Sylvex::LetSelectedItem(const GivenNode& New_SelectedItem)
{
    Trapped(m_state, L"SelectedItem", VARIABLES(New_SelectedItem),
            [&] { m_TV.SetSelectedItem(New_SelectedItem.Get()); });
}

void Sylvex::LetImageList(ImageListHandle New_ImageList)
{
    Let(Property::ImageList, New_ImageList, [&] { m_TV.SetImageListHandle(New_ImageList); });
}

std::wstring Sylvex::BuildFileListFilter()
{
    return Get(L"BuildFileListFilter", [&] { return m_list.BuildFileListFilter(); });
}

void Sylvex::LetBuildFileListFilter(const std::wstring& New_BuildFileListFilter)
{
    Let(Property::BuildFileListFilter, New_BuildFileListFilter,
        [&] { m_list.LetBuildFileListFilter(New_BuildFileListFilter); });
}

}  // namespace sylvex
