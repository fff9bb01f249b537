#pragma once

#include <windows.h>

#include <string>

// Where and how a control's window stands.
struct ControlPlace {
    HWND parent;
    std::wstring title; // empty: the control's own
    DWORD style;
    RECT rect; // in pixels of parent's client area
    UINT id;
};

// Lengths of controls are told in hundredths of a millimetre.
struct PixelScale {
    LONG perInchX;
    LONG perInchY;
};

constexpr LONG HimetricPerInch = 2540;

// The screen's scale; 96 pixels an inch where it cannot be learnt.
PixelScale ScreenScale();

// Of a length in pixels, and back. Rounded.
LONG PixelsToHimetric(LONG pixels, LONG pixelsPerInch);
LONG HimetricToPixels(LONG length, LONG pixelsPerInch);
