// Colours, spaces and letters of all windows.
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace ui
{

/// The one scale of distances, in device-independent pixels.
namespace space
{
inline constexpr int XS = 4;
inline constexpr int S = 8;
inline constexpr int M = 12;
inline constexpr int L = 16;
inline constexpr int XL = 24;
inline constexpr int XXL = 40;
} // namespace space

/// The colours that forms and pictures are made of.
struct Palette {
    QColor background;       // of windows
    QColor surface;          // of lists, boxes and cards
    QColor alternateSurface; // every second row
    QColor border;
    QColor text;
    QColor softText;
    QColor accent;     // what can be acted on, and what is selected
    QColor softAccent; // a hint of the accent behind something
    QColor onAccent;   // text on the accent
    QColor frame;      // the rail of the board and the head of the splash
    QColor onFrame;
    QColor error;
    QColor success; // what went well
    QColor alert;   // behind a row that must be seen
    QColor notice;  // behind a row that wants a look
    bool dark = false;
};

/// The palette of a setting `PrincipalColor`: 1 is the program's own colour, anything above is a
/// colour with red in the lowest byte. Too light or too dark a colour is brought to where text on
/// it can be read.
Palette computePalette(int principalColor, bool dark);

/// The palette in use, for what paints itself.
Palette paletteInUse();

/// Whether the desktop is dark; KELVARA_TEMA=claro or oscuro decides instead.
bool darkTheme();

/// Dresses the whole program. Called when it starts, and again when the setting is known.
void applyTheme(QApplication &app, int principalColor);

/// Relation of lightness between two colours, 1 to 21.
double contrastOf(const QColor &a, const QColor &b);

} // namespace ui
