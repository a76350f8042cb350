#include <gtest/gtest.h>

#include <sstream>

#include "com/type_info.h"
#include "SylvexControl_h.h"
#include "tests/component/automation.h"
#include "tests/component/component_file.h"

namespace sylvex::test {
namespace {

ComPtr<ITypeLib> Library()
{
    ComPtr<ITypeLib> library;
    EXPECT_HRESULT_SUCCEEDED(LoadTypeLibEx(ComponentPath().c_str(), REGKIND_NONE, library.Put()));
    return library;
}

ComPtr<ITypeInfo> Find(const IID& id)
{
    ComPtr<ITypeInfo> info;
    Library()->GetTypeInfoOfGuid(id, info.Put());
    return info;
}

// The table of functions of a dual interface, in its order.
ComPtr<ITypeInfo> TableOf(const IID& id)
{
    const ComPtr<ITypeInfo> dispatch = Find(id);
    ComPtr<ITypeInfo> table;
    HREFTYPE reference = 0;
    const bool found = SUCCEEDED(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
                       SUCCEEDED(dispatch->GetRefTypeInfo(reference, table.Put()));
    return found ? table : dispatch;
}

// A pointer to an interface is the object itself; any other pointer passes by reference.
std::string TypeName(ITypeInfo& info, const TYPEDESC& type)
{
    static const std::map<VARTYPE, const char*> names{
        {VT_I2, "short"},    {VT_I4, "long"},     {VT_R4, "single"},       {VT_BOOL, "boolean"},
        {VT_BSTR, "string"}, {VT_CY, "currency"}, {VT_VARIANT, "variant"}, {VT_UNKNOWN, "unknown"},
        {VT_VOID, ""},       {VT_HRESULT, ""}};
    if (type.vt == VT_PTR) {
        const std::string target = TypeName(info, *type.lptdesc);
        return target.starts_with('*') ? target.substr(1) : "&" + target;
    }
    if (type.vt != VT_USERDEFINED) return names.at(type.vt);
    ComPtr<ITypeInfo> described;
    TYPEATTR* attributes = nullptr;
    info.GetRefTypeInfo(type.hreftype, described.Put());
    described->GetTypeAttr(&attributes);
    const bool isObject = attributes->typekind == TKIND_INTERFACE || attributes->typekind == TKIND_DISPATCH;
    described->ReleaseTypeAttr(attributes);
    return (isObject ? "*" : "") + Narrow(NameOf(*described));
}

// The arguments of a member, and its result, which in a table of functions is the last of them.
std::string Arguments(ITypeInfo& info, const FUNCDESC& function, const std::vector<std::string>& names)
{
    std::string arguments;
    std::string result = TypeName(info, function.elemdescFunc.tdesc);
    for (SHORT index = 0; index < function.cParams; ++index) {
        const ELEMDESC& parameter = function.lprgelemdescParam[index];
        const USHORT flags = parameter.paramdesc.wParamFlags;
        const std::string type = TypeName(info, parameter.tdesc);
        if (flags & PARAMFLAG_FRETVAL) {
            result = type.substr(type.find_first_not_of('&'));
            continue;
        }
        arguments += arguments.empty() ? "" : ", ";
        arguments += (flags & PARAMFLAG_FOPT) ? "optional " : "";
        // The value of a property write has no name that anybody could use.
        const std::size_t name = static_cast<std::size_t>(index) + 1;
        arguments += (function.invkind == INVOKE_FUNC && name < names.size() ? names[name] + ":" : "") + type;
        if (flags & PARAMFLAG_FHASDEFAULT)
            arguments += "=" + Narrow(Value(parameter.paramdesc.pparamdescex->varDefaultValue).Text());
    }
    return "(" + arguments + ")" + (result.empty() ? "" : " ") + result;
}

// One member as a line: kind, name, identifier, arguments, result.
std::string Describe(ITypeInfo& info, const FUNCDESC& function)
{
    static const std::map<INVOKEKIND, const char*> kinds{{INVOKE_FUNC, "method "},
                                                         {INVOKE_PROPERTYGET, "get "},
                                                         {INVOKE_PROPERTYPUT, "let "},
                                                         {INVOKE_PROPERTYPUTREF, "set "}};
    std::vector<BSTR> texts(static_cast<std::size_t>(function.cParams) + 1);
    UINT count = 0;
    info.GetNames(function.memid, texts.data(), static_cast<UINT>(texts.size()), &count);
    std::vector<std::string> names;
    for (UINT index = 0; index < count; ++index) {
        names.push_back(Narrow(ViewOf(texts[index])));
        SysFreeString(texts[index]);
    }
    std::ostringstream line;
    line << kinds.at(function.invkind) << names.at(0) << ' ' << std::hex << std::uppercase
         << static_cast<unsigned long>(function.memid) << ' ' << Arguments(info, function, names);
    return line.str();
}

std::string Members(const ComPtr<ITypeInfo>& info)
{
    std::string lines;
    FUNCDESC* function = nullptr;
    for (UINT index = 0; SUCCEEDED(info->GetFuncDesc(index, &function)); ++index) {
        // Identifiers of IUnknown's and IDispatch's own members, which some systems list for a dispinterface.
        const bool inherited = (function->memid & 0xFFFE0000) == 0x60000000;
        if (!inherited) lines += Describe(*info, *function) + "\n";
        info->ReleaseFuncDesc(function);
    }
    return lines;
}

TEST(TypeLibrary, ControlHasItsMembersInOrder)
{
    EXPECT_EQ(Members(TableOf(__uuidof(::_Sylvex))), R"(method Enumerate 6003002D ()
method SetNodeVisible 6003002E ()
let ImageList 68030018 (&variant)
method Clear 6003002F ()
method BuildFullPath 60030032 (nod:INode) string
get hWnd 68030017 () long
let hWnd 68030017 (long)
get Appearance 68030016 () AppearanceConstants
let Appearance 68030016 (AppearanceConstants)
get BorderStyle 68030015 () BorderLineStyle
let BorderStyle 68030015 (BorderLineStyle)
get Checkboxes 68030014 () boolean
let Checkboxes 68030014 (boolean)
get Enabled 68030013 () boolean
let Enabled 68030013 (boolean)
get Font 68030012 () Font
set Font 68030012 (Font)
get FullRowSelect 68030011 () boolean
let FullRowSelect 68030011 (boolean)
get HideSelection 68030010 () boolean
let HideSelection 68030010 (boolean)
get HotTracking 6803000F () boolean
let HotTracking 6803000F (boolean)
get LabelEdit 6803000E () LabelEditConstants
let LabelEdit 6803000E (LabelEditConstants)
get LineStyle 6803000D () TreeLineStyleConstants
let LineStyle 6803000D (TreeLineStyleConstants)
get MouseIcon 6803000C () Picture
set MouseIcon 6803000C (Picture)
get MousePointer 6803000B () MousePointerConstants
let MousePointer 6803000B (MousePointerConstants)
get PathSeparator 6803000A () string
let PathSeparator 6803000A (string)
get FileFilter 68030009 () string
let FileFilter 68030009 (string)
get Picture 68030008 () Picture
set Picture 68030008 (Picture)
get DragDropEnable 68030007 () boolean
let DragDropEnable 68030007 (boolean)
get BackColor 68030006 () OLE_COLOR
let BackColor 68030006 (OLE_COLOR)
get Path 68030005 () string
let Path 68030005 (string)
method Refresh 60030054 ()
get SelectedItem 68030004 () INode
let SelectedItem 68030004 (INode)
get TreeView 68030003 () variant
get RecursiveCheck 68030002 () boolean
let RecursiveCheck 68030002 (boolean)
get ReqListView 68030001 () variant
set ReqListView 68030001 (variant)
method CheckNodeSelective 60030055 (Node:&INode) boolean
method FreezeCtl 60030056 (bFreeze:&boolean) variant
method BuildFileList 60030058 (optional pNode:&INode=0, optional RecursiveCall:&boolean=0)
method SetNode 6003005A ()
method SetNodeChecked 6003005C (bState:&boolean, optional bBuildList:&boolean=0)
method AssignSysIL 6003005E () boolean
method CVC 60030065 (ValToConvert:&string) currency
method ReturnFileName 60030068 (Arq:string) string
get BuildFileListFilter 68030000 () string
let BuildFileListFilter 68030000 (string)
)");
}

TEST(TypeLibrary, EventsHaveTheirNumbersAndParameters)
{
    EXPECT_EQ(Members(Find(__uuidof(::__Sylvex))), R"(method ListItemChecked 1 (Item:&IListItem)
method NodeCheck 2 (Node:INode)
method NodeClick 3 (Node:INode)
method AfterLabelEdit 4 (Cancel:&short, NewString:&string)
method BeforeLabelEdit 5 (Cancel:&short)
method Collapse 6 (Node:INode)
method DblClick 7 ()
method Expand 8 (Node:INode)
method KeyDown 9 (KeyCode:&short, Shift:&short)
method KeyPress A (KeyAscii:&short)
method KeyUp B (KeyCode:&short, Shift:&short)
method MouseUp C (Button:&short, Shift:&short, x:&single, y:&single)
method MouseMove D (Button:&short, Shift:&short, x:&single, y:&single)
method MouseDown E (Button:&short, Shift:&short, x:&single, y:&single)
method HitTest F (x:&single, y:&single, HitResult:&short)
)");
}

TEST(TypeLibrary, IsOfThisVersionAndSystem)
{
    const ComPtr<ITypeLib> library = Library();
    TLIBATTR* attributes = nullptr;
    ASSERT_HRESULT_SUCCEEDED(library->GetLibAttr(&attributes));
    EXPECT_EQ(attributes->wMajorVerNum * 100 + attributes->wMinorVerNum, 100);
    EXPECT_TRUE(attributes->wLibFlags & LIBFLAG_FCONTROL) << "listed among controls";
    EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    library->ReleaseTLibAttr(attributes);
}

}  // namespace
}  // namespace sylvex::test
