#include "control/control_state.h"

namespace sylvex {

void ControlState::DumpVariables(Dump& dump) const
{
#define ADD(owner, variable) dump.Add(#variable, (owner).variable)
    ADD(list, WinDir), ADD(list, SysDir), ADD(list, TempDir), ADD(list, SourcePath);
    ADD(list, sFolder), ADD(list, sName), ADD(list, sExtension), ADD(list, sSize), ADD(list, sType);
    ADD(list, sModified), ADD(list, sTime), ADD(list, sCreated), ADD(list, sAccessed), ADD(list, sAttribute);
    ADD(list, sMsDos), ADD(list, sNone), ADD(list, IsFAT);
    dump.Add("TypeNew", Marker{L"{Cannot dump UDT arrays}"});
    ADD(drag, DragImage);
    dump.Add("Buffer", L"");  // work space of platform calls
    ADD(drag, FullPath), ADD(drag, sNodeText), ADD(tree, SylvexFilter), ADD(drag, nodX), ADD(tree, m_hwndTV);
    ADD(drag, m_himlDrag), ADD(drag, m_hitemDrag), ADD(tree, m_cxyAutoScroll), ADD(drag, m_iButton);
    ADD(drag, m_nodDrag), ADD(tree, m_szDrag), ADD(drag, m_ptBtnDown), ADD(drag, m_ptHotSpot);
    ADD(drag, m_DragDropEnable), ADD(tree, m_FileFilter);
    dump.Add("m_hWnd", m_hWnd);
    ADD(navigation, m_Path), ADD(tree, m_MyDocs), ADD(list, m_ReqListView), ADD(checks, m_RecursiveCheck);
    ADD(navigation, InSetNodeChecked), ADD(tree, InClear), ADD(list, m_BuildFileListFilter);
#undef ADD
}

}  // namespace sylvex
