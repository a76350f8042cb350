#include "tree/tree_icons.h"

namespace sylvex {

namespace {

struct FixedIcon {
    const wchar_t* key;
    int number;  // the icon's place in Shell32.dll, from 0
};

constexpr FixedIcon kFixedIcons[] = {
    {L"dt", 34}, {L"hd", 8},  {L"ram", 12}, {L"cl", 3},  {L"mc", 15}, {L"cd", 11},
    {L"f35", 6}, {L"op", 4},  {L"rte", 9},  {L"cp", 21}, {L"new", 0},
};

}  // namespace

void LoadSystemIcons(const Module& module, Shell& shell, ImageList& iml)
{
    std::wstring sKey;
    Trapped(module, L"LoadSystemIcons", kNone, VARIABLES(sKey), [&](int& line) {
        for (const FixedIcon& icon : kFixedIcons) {
            line = 1;
            sKey = icon.key;
            line = 2;
            LoadImageList(module, iml, shell.ExtractIcon(L"Shell32.dll", icon.number), sKey);
        }
    });
}

void LoadImageList(const Module& module, ImageList& iml, OwnedIcon hIcon, const std::wstring& sKey)
{
    Trapped(module, L"LoadImageList", VARIABLES(sKey), kNone, [&](int& line) {
        line = 1;
        iml.Add(sKey, IconToPicture(module, std::move(hIcon)));
    });
}

Picture IconToPicture(const Module& module, OwnedIcon hIcon)
{
    return Trapped(module, L"IconToPicture", kNone, kNone, [&](int& line) {
        line = 1;
        return Picture{std::move(hIcon)};
    });
}

bool KeyExists(const ImageList& iml, const std::wstring& Key)
{
    return iml.Contains(Key);
}

}  // namespace sylvex
