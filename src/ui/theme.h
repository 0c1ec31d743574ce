// Colours, spacing and fonts of all windows.
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace ui
{

/// The spacing scale, in device-independent pixels.
namespace space
{
inline constexpr int XS = 4;
inline constexpr int S = 8;
inline constexpr int M = 12;
inline constexpr int L = 16;
inline constexpr int XL = 24;
inline constexpr int XXL = 40;
} // namespace space

/// The colours of forms and pictures.
struct Palette {
    QColor background;       // of windows
    QColor surface;          // of lists, boxes and cards
    QColor alternateSurface; // every second row
    QColor border;
    QColor text;
    QColor softText;
    QColor accent;     // what can be clicked, and what is selected
    QColor softAccent; // a faint accent used as background
    QColor onAccent;   // text on the accent
    QColor frame;      // the board's rail and the head of the splash screen
    QColor onFrame;
    QColor error;
    QColor success; // what went well
    QColor alert;   // background of a row that must be seen
    QColor notice;  // background of a row worth a look
    bool dark = false;
};

/// Derives the palette from a setting `PrincipalColor`: 1 is the program's own colour, anything
/// above is a colour with red in the lowest byte. A colour too light or too dark for readable text
/// is adjusted.
Palette computePalette(int principalColor, bool dark);

/// The palette in use, for widgets that paint themselves.
Palette paletteInUse();

/// Whether to use the dark theme: as the desktop does, unless KELVARA_TEMA is "claro" or "oscuro".
bool darkTheme();

/// Styles the whole program. Called at the start, and again once the colour setting has been read.
void applyTheme(QApplication &app, int principalColor);

/// Contrast ratio of two colours, 1 to 21.
double contrastOf(const QColor &a, const QColor &b);

} // namespace ui
