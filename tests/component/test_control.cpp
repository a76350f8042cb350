#include "tests/component/test_control.h"

#include <sstream>

#include "tests/component/component_file.h"

namespace sylvex::test {

namespace {

std::string Narrow(const BSTR text)
{
    const std::wstring wide(text ? text : L"", SysStringLen(text));
    return std::string(wide.begin(), wide.end());
}

std::string KindOf(IPictureDisp* picture)
{
    const ComPtr<IPicture> described = ComPtr<IPictureDisp>(picture).As<IPicture>();
    if (!described) return "none";
    short kind = PICTYPE_NONE;
    described->get_Type(&kind);
    return "picture " + std::to_string(kind);
}

template <class Type>
std::string Read(const ComPtr<::_Sylvex>& control, HRESULT (STDMETHODCALLTYPE ::_Sylvex::*get)(Type*))
{
    Type value{};
    if (FAILED((*control.*get)(&value))) return "failed";
    return std::to_string(static_cast<long>(value));
}

std::string ReadFont(const ComPtr<::_Sylvex>& control)
{
    ComPtr<IFontDisp> font;
    return SUCCEEDED(control->get_Font(font.Put())) ? TextOf(font.Get()) : "failed";
}

std::string ReadPicture(const ComPtr<::_Sylvex>& control, HRESULT (STDMETHODCALLTYPE ::_Sylvex::*get)(IPictureDisp**))
{
    ComPtr<IPictureDisp> picture;
    return SUCCEEDED((*control.*get)(picture.Put())) ? KindOf(picture.Get()) : "failed";
}

std::string ReadText(const ComPtr<::_Sylvex>& control, HRESULT (STDMETHODCALLTYPE ::_Sylvex::*get)(BSTR*))
{
    BSTR value = nullptr;
    if (FAILED((*control.*get)(&value))) return "failed";
    const std::string text = Narrow(value);
    SysFreeString(value);
    return text;
}

template <class Function>
Function Export(const char* name)
{
    static const HMODULE module = LoadLibraryW(ComponentPath().c_str());
    return module ? reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

}  // namespace

ComPtr<::_Sylvex> NewControl()
{
    static const HRESULT initialised = OleInitialize(nullptr);
    const auto getClassObject = Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    ComPtr<::_Sylvex> control;
    ComPtr<IClassFactory> factory;
    if (SUCCEEDED(initialised) && getClassObject &&
        SUCCEEDED(getClassObject(__uuidof(::Sylvex), IID_IClassFactory, reinterpret_cast<void**>(factory.Put())))) {
        factory->CreateInstance(nullptr, __uuidof(::_Sylvex), reinterpret_cast<void**>(control.Put()));
    }
    return control;
}

bool IsComponentIdle()
{
    const auto canUnloadNow = Export<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow");
    return canUnloadNow && canUnloadNow() == S_OK;
}

std::string TextOf(IFontDisp* font)
{
    const ComPtr<IFont> described = ComPtr<IFontDisp>(font).As<IFont>();
    if (!described) return "none";
    BSTR name = nullptr;
    CY size{};
    BOOL bold = FALSE;
    described->get_Name(&name);
    described->get_Size(&size);
    described->get_Bold(&bold);
    const std::string text = Narrow(name);
    SysFreeString(name);
    return text + " " + std::to_string(size.int64 / 1000) + (bold ? " bold" : "");
}

HWND TreeOf(const ComPtr<::_Sylvex>& control)
{
    LONG window = 0;
    control->get_hWnd(&window);
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
}

std::string PropertiesOf(const ComPtr<::_Sylvex>& control)
{
    std::ostringstream lines;
    lines << "Appearance=" << Read(control, &::_Sylvex::get_Appearance) << '\n'
          << "BorderStyle=" << Read(control, &::_Sylvex::get_BorderStyle) << '\n'
          << "Checkboxes=" << Read(control, &::_Sylvex::get_Checkboxes) << '\n'
          << "Enabled=" << Read(control, &::_Sylvex::get_Enabled) << '\n'
          << "Font=" << ReadFont(control) << '\n'
          << "FullRowSelect=" << Read(control, &::_Sylvex::get_FullRowSelect) << '\n'
          << "HideSelection=" << Read(control, &::_Sylvex::get_HideSelection) << '\n'
          << "HotTracking=" << Read(control, &::_Sylvex::get_HotTracking) << '\n'
          << "LabelEdit=" << Read(control, &::_Sylvex::get_LabelEdit) << '\n'
          << "LineStyle=" << Read(control, &::_Sylvex::get_LineStyle) << '\n'
          << "MouseIcon=" << ReadPicture(control, &::_Sylvex::get_MouseIcon) << '\n'
          << "MousePointer=" << Read(control, &::_Sylvex::get_MousePointer) << '\n'
          << "PathSeparator=" << ReadText(control, &::_Sylvex::get_PathSeparator) << '\n'
          << "FileFilter=" << ReadText(control, &::_Sylvex::get_FileFilter) << '\n'
          << "Picture=" << ReadPicture(control, &::_Sylvex::get_Picture) << '\n'
          << "DragDropEnable=" << Read(control, &::_Sylvex::get_DragDropEnable) << '\n'
          << "BackColor=" << Read(control, &::_Sylvex::get_BackColor) << '\n'
          << "RecursiveCheck=" << Read(control, &::_Sylvex::get_RecursiveCheck) << '\n'
          << "BuildFileListFilter=" << ReadText(control, &::_Sylvex::get_BuildFileListFilter) << '\n';
    return lines.str();
}

ComPtr<IFontDisp> NewFont(const wchar_t* name, int size, bool bold)
{
    FONTDESC wanted{};
    wanted.cbSizeofstruct = sizeof wanted;
    wanted.lpstrName = const_cast<LPOLESTR>(name);
    wanted.cySize.int64 = size * 10000LL;
    wanted.sWeight = bold ? FW_BOLD : FW_NORMAL;
    ComPtr<IFontDisp> font;
    OleCreateFontIndirect(&wanted, IID_IFontDisp, reinterpret_cast<void**>(font.Put()));
    return font;
}

ComPtr<IPictureDisp> NewPicture()
{
    PICTDESC wanted{};
    wanted.cbSizeofstruct = sizeof wanted;
    wanted.picType = PICTYPE_ICON;
    wanted.icon.hicon = CopyIcon(LoadIconW(nullptr, IDI_WARNING));
    ComPtr<IPictureDisp> picture;
    OleCreatePictureIndirect(&wanted, IID_IPictureDisp, TRUE, reinterpret_cast<void**>(picture.Put()));
    return picture;
}

void DrainMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace sylvex::test
