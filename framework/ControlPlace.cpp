#include "framework/ControlPlace.h"

PixelScale ScreenScale() {
    constexpr LONG usual = 96;
    const HDC screen = GetDC(nullptr);
    if (screen == nullptr)
        return {usual, usual};
    const LONG x = GetDeviceCaps(screen, LOGPIXELSX);
    const LONG y = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return {x > 0 ? x : usual, y > 0 ? y : usual};
}

LONG PixelsToHimetric(LONG pixels, LONG pixelsPerInch) {
    return MulDiv(pixels, HimetricPerInch, pixelsPerInch);
}

LONG HimetricToPixels(LONG length, LONG pixelsPerInch) {
    return MulDiv(length, pixelsPerInch, HimetricPerInch);
}
