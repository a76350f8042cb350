#include "component/border/units.h"

#include <cmath>

#include "component/border/ole_extent.h"

namespace sylvex {

namespace {

constexpr float kTwipsPerInch = 1440;
constexpr int kHimetricPerInch = 2540;

// Offsets from the control's corner, so a container that turns its axes does not turn these.
constexpr DWORD kToContainer = XFORMCOORDS_SIZE | XFORMCOORDS_HIMETRICTOCONTAINER;
constexpr DWORD kToHimetric = XFORMCOORDS_SIZE | XFORMCOORDS_CONTAINERTOHIMETRIC;

int Rounded(float value)
{
    return static_cast<int>(std::lround(value));
}

}  // namespace

ContainerPoint ToContainer(IOleControlSite* site, Point pixels)
{
    const Size resolution = ScreenResolution();
    // A container that does not convert leaves these as they are, whatever it answers.
    POINTF place{static_cast<float>(pixels.x) * kTwipsPerInch / static_cast<float>(resolution.cx),
                 static_cast<float>(pixels.y) * kTwipsPerInch / static_cast<float>(resolution.cy)};
    POINTF told = place;
    POINTL asked{MulDiv(pixels.x, kHimetricPerInch, resolution.cx), MulDiv(pixels.y, kHimetricPerInch, resolution.cy)};
    if (site && SUCCEEDED(site->TransformCoords(&asked, &told, kToContainer))) place = told;
    return {place.x, place.y};
}

Point ToPixels(IOleControlSite* site, ContainerPoint place)
{
    const Size resolution = ScreenResolution();
    constexpr LONG kUntold = 0x7FFFFFFF;
    POINTL told{kUntold, kUntold};
    POINTF asked{place.x, place.y};
    if (site && SUCCEEDED(site->TransformCoords(&told, &asked, kToHimetric)) && told.x != kUntold) {
        const Size pixels = PixelsOf(SIZEL{told.x, told.y}, resolution);
        return {pixels.cx, pixels.cy};
    }
    return {Rounded(place.x * static_cast<float>(resolution.cx) / kTwipsPerInch),
            Rounded(place.y * static_cast<float>(resolution.cy) / kTwipsPerInch)};
}

}  // namespace sylvex
