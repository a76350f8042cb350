#include "platform/win32/images.h"

#include "platform/win32/handles.h"

namespace sylvex {

ImageListHandle Win32Images::Create()
{
    constexpr int kFirst = 16;
    constexpr int kGrow = 32;
    return NumberOf(ImageList_Create(GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON),
                                     ILC_COLOR32 | ILC_MASK, kFirst, kGrow));
}

void Win32Images::Destroy(ImageListHandle list) noexcept
{
    ImageList_Destroy(HandleOf<HIMAGELIST>(list));
}

int Win32Images::Add(ImageListHandle list, IconHandle icon)
{
    if (icon == 0) return -1;
    return ImageList_ReplaceIcon(HandleOf<HIMAGELIST>(list), -1, HandleOf<HICON>(icon));
}

int Win32Images::Count(ImageListHandle list)
{
    return ImageList_GetImageCount(HandleOf<HIMAGELIST>(list));
}

}  // namespace sylvex
