// Colours, spaces and letters of all windows.
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

/// The one scale of distances, in device-independent pixels.
namespace Espacio
{
inline constexpr int XS = 4;
inline constexpr int S = 8;
inline constexpr int M = 12;
inline constexpr int L = 16;
inline constexpr int XL = 24;
inline constexpr int XXL = 40;
} // namespace Espacio

/// The colours that forms and pictures are made of.
struct Paleta {
    QColor fondo;             // of windows
    QColor superficie;        // of lists, boxes and cards
    QColor superficieAlterna; // every second row
    QColor borde;
    QColor texto;
    QColor textoSuave;
    QColor acento;      // what can be acted on, and what is selected
    QColor acentoSuave; // a hint of the accent behind something
    QColor sobreAcento; // text on the accent
    QColor marco;       // the rail of the board and the head of the splash
    QColor sobreMarco;
    QColor error;
    QColor logro;  // what went well
    QColor alerta; // behind a row that must be seen
    QColor aviso;  // behind a row that wants a look
    bool oscura = false;
};

/// The palette of a setting `PrincipalColor`: 1 is the program's own colour, anything above is a
/// colour with red in the lowest byte. Too light or too dark a colour is brought to where text on
/// it can be read.
Paleta CalcularPaleta(int principalColor, bool oscura);

/// The palette in use, for what paints itself.
Paleta PaletaEnUso();

/// Whether the desktop is dark; KELVARA_TEMA=claro or oscuro decides instead.
bool TemaOscuro();

/// Dresses the whole program. Called when it starts, and again when the setting is known.
void AplicarTema(QApplication &app, int principalColor);

/// Relation of lightness between two colours, 1 to 21.
double Contraste(const QColor &a, const QColor &b);
