#include "tests/component/test_control.h"

namespace sylvex::test {

ComPtr<::_Sylvex> NewControl()
{
    return ComPtr(MakeControl().Object()).As<::_Sylvex>();
}

std::string TextOf(IFontDisp* font)
{
    if (!font) return "none";
    const Value members(static_cast<IDispatch*>(font));
    const int tenths = static_cast<int>(V_CY(&members.Get(L"Size").Raw()).int64 / 1000);
    return Narrow(members.Get(L"Name").Text()) + " " + std::to_string(tenths) +
           (members.Get(L"Bold").Flag() ? " bold" : "");
}

HWND TreeOf(const ComPtr<::_Sylvex>& control)
{
    LONG window = 0;
    control->get_hWnd(&window);
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
}

std::string TextOf(const Value& value)
{
    if (V_VT(&value.Raw()) != VT_DISPATCH) return Narrow(value.Text());
    const ComPtr object(value.Object());
    if (const auto font = object.As<IFontDisp>()) return TextOf(font.Get());
    const auto picture = object.As<IPicture>();
    short kind = PICTYPE_NONE;
    if (picture) picture->get_Type(&kind);
    return picture ? "picture " + std::to_string(kind) : "none";
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
