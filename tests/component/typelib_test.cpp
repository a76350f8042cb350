#include <ole2.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/component/component_file.h"

namespace sylvex::test {
namespace {

std::string Narrow(BSTR text)
{
    const std::wstring wide = text ? text : L"";
    return std::string(wide.begin(), wide.end());
}

// Everything here is freed at the end of the process: the descriptions live as long as the library.
ITypeLib* Library()
{
    static ITypeLib* const library = [] {
        ITypeLib* loaded = nullptr;
        EXPECT_HRESULT_SUCCEEDED(LoadTypeLibEx(ComponentPath().c_str(), REGKIND_NONE, &loaded));
        return loaded;
    }();
    return library;
}

std::string NameOf(ITypeInfo* info)
{
    BSTR name = nullptr;
    info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
    const std::string result = Narrow(name);
    SysFreeString(name);
    return result;
}

ITypeInfo* Find(const std::string& name)
{
    for (UINT index = 0; index < Library()->GetTypeInfoCount(); ++index) {
        ITypeInfo* info = nullptr;
        Library()->GetTypeInfo(index, &info);
        if (NameOf(info) == name) return info;
        info->Release();
    }
    return nullptr;
}

// The table of functions of a dual interface, in its order.
ITypeInfo* TableOf(const std::string& name)
{
    ITypeInfo* const dispatch = Find(name);
    ITypeInfo* table = nullptr;
    HREFTYPE reference = 0;
    if (!dispatch || FAILED(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) ||
        FAILED(dispatch->GetRefTypeInfo(reference, &table))) {
        return dispatch;
    }
    return table;
}

TYPEATTR AttributesOf(ITypeInfo* info)
{
    TYPEATTR* attributes = nullptr;
    info->GetTypeAttr(&attributes);
    const TYPEATTR result = *attributes;
    info->ReleaseTypeAttr(attributes);
    return result;
}

ITypeInfo* Described(ITypeInfo* info, const TYPEDESC& type)
{
    ITypeInfo* described = nullptr;
    EXPECT_HRESULT_SUCCEEDED(info->GetRefTypeInfo(type.hreftype, &described));
    return described;
}

bool IsObject(ITypeInfo* info, const TYPEDESC& type)
{
    if (type.vt != VT_USERDEFINED) return false;
    const TYPEKIND kind = AttributesOf(Described(info, type)).typekind;
    return kind == TKIND_INTERFACE || kind == TKIND_DISPATCH;
}

// A pointer to an interface is the object itself; any other pointer passes by reference.
std::string TypeName(ITypeInfo* info, const TYPEDESC& type)
{
    switch (type.vt) {
        case VT_PTR:
            return (IsObject(info, *type.lptdesc) ? "" : "&") + TypeName(info, *type.lptdesc);
        case VT_USERDEFINED:
            return NameOf(Described(info, type));
        case VT_I2:
            return "short";
        case VT_I4:
            return "long";
        case VT_R4:
            return "single";
        case VT_BOOL:
            return "boolean";
        case VT_BSTR:
            return "string";
        case VT_CY:
            return "currency";
        case VT_VARIANT:
            return "variant";
        case VT_UNKNOWN:
            return "unknown";
        case VT_VOID:
        case VT_HRESULT:
            return "";
        default:
            return "type " + std::to_string(type.vt);
    }
}

std::string Kind(INVOKEKIND kind)
{
    switch (kind) {
        case INVOKE_FUNC:
            return "method";
        case INVOKE_PROPERTYGET:
            return "get";
        case INVOKE_PROPERTYPUT:
            return "let";
        default:
            return "set";
    }
}

// One member as a line: kind, name, identifier, arguments, result.
// The arguments of a member, and its result, which in a table of functions is the last of them.
std::string Arguments(ITypeInfo* info, const FUNCDESC& function, const std::vector<std::string>& names)
{
    std::string arguments;
    std::string result = TypeName(info, function.elemdescFunc.tdesc);
    for (SHORT index = 0; index < function.cParams; ++index) {
        const ELEMDESC& parameter = function.lprgelemdescParam[index];
        const std::string type = TypeName(info, parameter.tdesc);
        if (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) {
            result = type.substr(type.find_first_not_of('&'));
            continue;
        }
        arguments += arguments.empty() ? "" : ", ";
        arguments += (parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) ? "optional " : "";
        // The value of a property write has no name that anybody could use.
        const std::size_t name = static_cast<std::size_t>(index) + 1;
        arguments += (function.invkind == INVOKE_FUNC && name < names.size() ? names[name] + ":" : "") + type;
        if (!(parameter.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT)) continue;
        const VARIANT& value = parameter.paramdesc.pparamdescex->varDefaultValue;
        EXPECT_TRUE(V_VT(&value) == VT_I4 || V_VT(&value) == VT_BOOL) << V_VT(&value);
        arguments += "=" + std::to_string(V_VT(&value) == VT_I4 ? V_I4(&value) : V_BOOL(&value));
    }
    return "(" + arguments + ")" + (result.empty() ? "" : " ") + result;
}

// One member as a line: kind, name, identifier, arguments, result.
std::string Describe(ITypeInfo* info, const FUNCDESC& function)
{
    std::vector<BSTR> texts(static_cast<std::size_t>(function.cParams) + 1);
    UINT count = 0;
    info->GetNames(function.memid, texts.data(), static_cast<UINT>(texts.size()), &count);
    std::vector<std::string> names;
    for (UINT index = 0; index < count; ++index) {
        names.push_back(Narrow(texts[index]));
        SysFreeString(texts[index]);
    }
    std::ostringstream line;
    line << Kind(function.invkind) << ' ' << names.at(0) << ' ' << std::hex << std::uppercase
         << static_cast<unsigned long>(function.memid) << ' ' << Arguments(info, function, names);
    return line.str();
}

std::string Members(ITypeInfo* info)
{
    std::string lines;
    FUNCDESC* function = nullptr;
    for (UINT index = 0; SUCCEEDED(info->GetFuncDesc(index, &function)); ++index) {
        // Identifiers of IUnknown's and IDispatch's own members, which some systems list for a dispinterface.
        const bool inherited = (function->memid & 0xFFFE0000) == 0x60000000;
        if (!inherited) lines += Describe(info, *function) + "\n";
        info->ReleaseFuncDesc(function);
    }
    return lines;
}

TEST(TypeLibrary, ControlHasItsMembersInOrder)
{
    ITypeInfo* const control = TableOf("_Sylvex");
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(Members(control), R"(method Enumerate 6003002D ()
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

// The properties that tell of their changes; each asks first whoever listens.
TEST(TypeLibrary, SaysWhichPropertiesAreBound)
{
    constexpr WORD bound = FUNCFLAG_FBINDABLE | FUNCFLAG_FREQUESTEDIT;
    ITypeInfo* const control = TableOf("_Sylvex");
    std::set<std::string> silent;
    FUNCDESC* function = nullptr;
    for (UINT index = 0; SUCCEEDED(control->GetFuncDesc(index, &function)); ++index) {
        const std::string line = Describe(control, *function);
        if (function->invkind != INVOKE_FUNC && (function->wFuncFlags & bound) != bound) {
            EXPECT_FALSE(function->wFuncFlags & bound) << line;
            silent.insert(line.substr(0, line.find(' ', 4)));
        }
        control->ReleaseFuncDesc(function);
    }
    EXPECT_EQ(silent, (std::set<std::string>{"get SelectedItem", "let SelectedItem", "get TreeView"}));
}

TEST(TypeLibrary, EventsHaveTheirNumbersAndParameters)
{
    ITypeInfo* const events = Find("__Sylvex");
    ASSERT_NE(events, nullptr);
    EXPECT_EQ(Members(events), R"(method ListItemChecked 1 (Item:&IListItem)
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
    BSTR help = nullptr;
    events->GetDocumentation(15, nullptr, &help, nullptr, nullptr);
    EXPECT_EQ(Narrow(help), "Occurs in a windowless user control in response to mouse activity.");
    SysFreeString(help);
}

// The members by which hosts and the control itself address the objects of a tree and of a list, late bound.
TEST(TypeLibrary, ObjectsHaveDefaultsAndEnumerators)
{
    struct Expected {
        const char* name;
        std::vector<const char*> members;
    };
    const std::vector<Expected> objects = {
        {"ITreeView",
         {"get Nodes 1 () INodes", "set SelectedItem 2 (INode)", "method HitTest 4 (x:single, y:single) INode"}},
        {"INodes",
         {"get Item 0 (variant) INode", "get _NewEnum FFFFFFFC () unknown",
          "method Add 2 (optional Relative:variant, optional Relationship:variant, optional Key:variant, "
          "optional Text:variant, optional Image:variant, optional SelectedImage:variant) INode"}},
        {"INode",
         {"get Text 0 () string", "let Text 0 (string)", "set Parent 12 (INode)",
          "method EnsureVisible 15 () boolean"}},
        {"IListView",
         {"get ListItems 1 () IListItems",
          "method FindItem B (Text:string, optional Where:variant, optional Index:variant, optional Match:variant) "
          "IListItem"}},
        {"IListItems", {"get Item 0 (variant) IListItem", "get _NewEnum FFFFFFFC () unknown"}},
        {"IListItem", {"get Text 0 () string", "get SubItems 3 (short) string", "let SubItems 3 (short, string)"}},
        {"IColumnHeaders", {"get Item 0 (variant) IColumnHeader", "get _NewEnum FFFFFFFC () unknown"}},
        {"IColumnHeader", {"get Text 0 () string", "get SubItemIndex 3 () short", "let Width 4 (single)"}},
    };
    for (const Expected& object : objects) {
        ITypeInfo* const table = TableOf(object.name);
        ASSERT_NE(table, nullptr) << object.name;
        const std::string members = "\n" + Members(table);
        for (const char* const member : object.members) {
            EXPECT_NE(members.find("\n" + std::string(member) + "\n"), std::string::npos)
                << member << " is not in " << object.name << ":" << members;
        }
    }
}

std::string Constants(ITypeInfo* info)
{
    std::string constants;
    VARDESC* variable = nullptr;
    for (UINT index = 0; SUCCEEDED(info->GetVarDesc(index, &variable)); ++index) {
        BSTR name = nullptr;
        UINT count = 0;
        info->GetNames(variable->memid, &name, 1, &count);
        constants += " " + Narrow(name) + "=" + std::to_string(V_I4(variable->lpvarValue));
        SysFreeString(name);
        info->ReleaseVarDesc(variable);
    }
    return constants;
}

// The interfaces of a class, the default ones first named.
std::string Interfaces(ITypeInfo* info)
{
    std::string interfaces;
    for (UINT index = 0; index < AttributesOf(info).cImplTypes; ++index) {
        INT flags = 0;
        HREFTYPE reference = 0;
        ITypeInfo* implemented = nullptr;
        info->GetImplTypeFlags(index, &flags);
        info->GetRefTypeOfImplType(index, &reference);
        info->GetRefTypeInfo(reference, &implemented);
        interfaces += (flags & IMPLTYPEFLAG_FSOURCE) ? " source " : " ";
        interfaces += (flags & IMPLTYPEFLAG_FDEFAULT) ? "default " : "";
        interfaces += NameOf(implemented);
    }
    return interfaces;
}

std::string DescribeType(ITypeInfo* info)
{
    const TYPEATTR attributes = AttributesOf(info);
    const auto flag = [&](WORD bit, const char* word) { return std::string(attributes.wTypeFlags & bit ? word : ""); };
    switch (attributes.typekind) {
        case TKIND_ENUM:
            return "enum " + NameOf(info) + Constants(info);
        case TKIND_COCLASS:
            return flag(TYPEFLAG_FCANCREATE, "creatable ") + flag(TYPEFLAG_FCONTROL, "control ") + "class " +
                   NameOf(info) + Interfaces(info);
        default:
            return flag(TYPEFLAG_FDUAL, "dual ") + "interface " + NameOf(info);
    }
}

TEST(TypeLibrary, HasOneCreatableClassAndItsConstants)
{
    std::set<std::string> types;
    for (UINT index = 0; index < Library()->GetTypeInfoCount(); ++index) {
        ITypeInfo* info = nullptr;
        Library()->GetTypeInfo(index, &info);
        types.insert(DescribeType(info));
        info->Release();
    }
    const std::set<std::string> expected = {
        "creatable control class Sylvex default _Sylvex source default __Sylvex",
        "class TreeView default ITreeView",
        "class Nodes default INodes",
        "class Node default INode",
        "class ListView default IListView",
        "class ListItems default IListItems",
        "class ListItem default IListItem",
        "class ColumnHeaders default IColumnHeaders",
        "class ColumnHeader default IColumnHeader",
        "dual interface _Sylvex",
        "interface __Sylvex",
        "dual interface ITreeView",
        "dual interface INodes",
        "dual interface INode",
        "dual interface IListView",
        "dual interface IListItems",
        "dual interface IListItem",
        "dual interface IColumnHeaders",
        "dual interface IColumnHeader",
        "enum BorderLineStyle ccNone=0 ccFixedSingle=1",
        "enum AppearanceConstants ccFlat=0 cc3D=1",
        "enum LabelEditConstants tvwAutomatic=0 tvwManual=1",
        "enum TreeLineStyleConstants tvwTreeLines=0 tvwRootLines=1",
        "enum TreeRelationshipConstants tvwFirst=0 tvwLast=1 tvwNext=2 tvwPrevious=3 tvwChild=4",
        "enum MousePointerConstants ccDefault=0 ccArrow=1 ccCross=2 ccIBeam=3 ccIcon=4 ccSize=5 ccSizeNESW=6 "
        "ccSizeNS=7 "
        "ccSizeNWSE=8 ccSizeEW=9 ccUpArrow=10 ccHourglass=11 ccNoDrop=12 ccArrowHourglass=13 ccArrowQuestion=14 "
        "ccSizeAll=15 ccCustom=99",
        "enum ListColumnAlignmentConstants lvwColumnLeft=0 lvwColumnRight=1 lvwColumnCenter=2",
        "enum ListSortOrderConstants lvwAscending=0 lvwDescending=1",
    };
    EXPECT_EQ(types, expected);
}

TEST(TypeLibrary, IsOfThisVersionAndSystem)
{
    TLIBATTR* attributes = nullptr;
    ASSERT_HRESULT_SUCCEEDED(Library()->GetLibAttr(&attributes));
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(attributes->wLibFlags & LIBFLAG_FCONTROL, LIBFLAG_FCONTROL) << "listed among controls";
    EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    Library()->ReleaseTLibAttr(attributes);
}

}  // namespace
}  // namespace sylvex::test
