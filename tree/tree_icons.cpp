#include "tree/tree_icons.h"

#include "diagnostics/named_module.h"

namespace sylvex {

namespace {

struct FixedIcon {
    const wchar_t* key;
    int number;  // the icon's place in Shell32.dll, from 0
};

constexpr FixedIcon kFixedIcons[] = {
    {L"dt", 34}, {L"hd", 8}, {L"ram", 12}, {L"cl", 3},  {L"mc", 15}, {L"cd", 11},
    {L"f35", 6}, {L"op", 4}, {L"rte", 9},  {L"cp", 21}, {L"new", 0},
};

constexpr const wchar_t* kModule = L"modTreeIcons";
/// Where the procedures of the module used to draw an icon.
constexpr Marker srcPic{L"{Nothing}"};

}  // namespace

void LoadSystemIcons(Platform& platform, ImageList& iml)
{
    std::wstring sKey;
    Trapped(NamedModule(kModule, platform), VARIABLES(iml), VARIABLES(sKey), [&](int& line) {
        for (const FixedIcon& icon : kFixedIcons) {
            line = 1;
            sKey = icon.key;
            line = 2;
            LoadImageList(platform, iml, platform.shell.IconInFile(L"Shell32.dll", icon.number), sKey);
        }
    });
}

void LoadImageList(Platform& platform, ImageList& iml, OwnedIcon icon, const std::wstring& sKey)
{
    const IconHandle hIcon = icon.Get();
    const auto parameters = VARIABLES(srcPic, iml, hIcon, sKey);
    Trapped(NamedModule(kModule, platform), parameters, [&](int& line) {
        const Picture picture = IconToPicture(platform, std::move(icon));
        line = 2;
        iml.Add(sKey, picture);
    });
}

Picture IconToPicture(Platform& platform, OwnedIcon icon)
{
    const IconHandle hIcon = icon.Get();
    return Trapped(NamedModule(kModule, platform), VARIABLES(hIcon), [&] { return Picture{std::move(icon)}; });
}

bool KeyExists(const ImageList& iml, const std::wstring& Key)
{
    return iml.Contains(Key);
}

}  // namespace sylvex
