// Where the board leads: its buttons, and the codes behind the icons of its lines.
#pragma once

#include "board/board_lines.h"

#include <QUrl>
#include <QVariantMap>
#include <span>

/// What a click opens: a form with its parameters, or a page or folder outside the program.
struct Destino {
    QString formulario;
    QVariantMap parametros;
    QUrl enlace;
    bool Ninguno() const { return formulario.isEmpty() && enlace.isEmpty(); }
};

/// The two icons that a line can have.
enum class CualIcono { Primero = 1, Segundo = 2 };

/// Behind an icon of a line.
///
/// Parameters: frmlistados `rapido` (entry of its quick list), frmagenda `dia` and `modo` (1 the
/// day, 2 the tasks of the automation), frmAvisosPlanificadas `grupo` (18 to 21).
Destino DestinoDeIcono(const Sesion &s, const LineaDePizarra &linea, CualIcono icono);
/// Behind the text of a line: a page of help, or the folder that it names after its first ':'.
Destino DestinoDeTexto(const Sesion &s, const LineaDePizarra &linea);

/// Name of the picture that a click code shows, "" for none. It differs by column.
QString DibujoDeCodigo(int codigo, CualIcono icono);

/// One of the ten buttons around the board.
struct BotonDeTablero {
    QStringView nombre;
    QStringView formulario; // empty for the one that ends the program
    QStringView dibujo;
    int texto;       // number of its caption
    char16_t digito; // with ALT
    bool soloSupervisor;
};

std::span<const BotonDeTablero> BotonesDeTablero();

/// Whether the user may; a Common user is refused some.
bool PuedeUsar(const Usuario &usuario, const BotonDeTablero &boton);
