#include "control/sylvex.h"

namespace sylvex {

std::wstring Sylvex::Path()
{
    return Trapped(m_instance, L"Path", kNone, kNone, [&](int& line) {
        line = 1;
        return m_instance.m_Path;
    });
}

void Sylvex::LetPath(const std::wstring& New_Path)
{
    FileEntry W32FD;
    Trapped(m_instance, L"Path", VARIABLES(New_Path), VARIABLES(W32FD), [&](int& line) {
        line = 1;
        if (!m_navigation.FileExistsW32FD(New_Path, W32FD)) return;
        if (!m_container.MayChange(L"Path")) return;
        line = 2;
        m_instance.m_Path = New_Path;
        line = 3;
        m_container.PropertyChanged(L"Path");
        line = 4;
        m_navigation.SetNodeVisible();
        if (!m_instance.m_ReqListView) return;
        line = 5;
        const std::shared_ptr<ListView> hidden = m_instance.BoundList();
        hidden->SetVisible(false);
        line = 6;
        RebuildList();
        line = 7;
        hidden->SetVisible(true);
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

}  // namespace sylvex
