#include "instance/instance.h"

namespace sylvex {

Instance::Instance(Platform& services, TreeViewEvents& events, WindowHandle parent)
    : platform(services), ImageList1(services.images), TV(services, events, parent)
{
}

std::shared_ptr<ListView> Instance::BoundList() const
{
    if (!m_ReqListView) throw ObjectNotSet();
    return m_ReqListView;
}

void Instance::DumpVariables(Dump& dump) const
{
#define ADD(variable) dump.Add(#variable, variable)
    ADD(WinDir), ADD(SysDir), ADD(TempDir), ADD(SourcePath);
    ADD(sFolder), ADD(sName), ADD(sExtension), ADD(sSize), ADD(sType), ADD(sModified), ADD(sTime), ADD(sCreated);
    ADD(sAccessed), ADD(sAttribute), ADD(sMsDos), ADD(sNone);
    ADD(IsFAT);
    dump.Add("TypeNew", Marker{L"{Cannot dump UDT arrays}"});
    ADD(DragImage), ADD(Buffer), ADD(FullPath), ADD(sNodeText), ADD(SylvexFilter), ADD(nodX);
    ADD(m_hwndTV), ADD(m_himlDrag), ADD(m_hitemDrag), ADD(m_cxyAutoScroll), ADD(m_iButton), ADD(m_nodDrag);
    ADD(m_szDrag), ADD(m_ptBtnDown), ADD(m_ptHotSpot), ADD(m_DragDropEnable), ADD(m_FileFilter), ADD(m_hWnd);
    ADD(m_Path), ADD(m_MyDocs);
    ADD(m_ReqListView), ADD(m_RecursiveCheck), ADD(InSetNodeChecked), ADD(InClear), ADD(m_BuildFileListFilter);
#undef ADD
}

}  // namespace sylvex
