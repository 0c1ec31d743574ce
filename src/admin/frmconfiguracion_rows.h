// Rows of the pages that ask how the program should act by itself.
#pragma once

#include "admin/frmconfiguracion_pages.h"
#include "ui/bound.h"

/// One question with its options, as strings of the table.
struct PreguntaDePagina {
    QString nombre; // of the control
    QString titulo;
    QList<std::pair<int, int>> opciones; // number stored, string
    int ayuda;                           // what the choice does, told in the help line
};

/// Puts a question beside its options. Nothing is tied to the settings yet.
GrupoDeOpciones *FilaDeOpciones(const ContextoDePagina &c, QFormLayout *seccion,
                                const PreguntaDePagina &pregunta);
/// A box for a whole number of few digits, tied to a column of the settings row.
QLineEdit *FilaDeEntero(const ContextoDePagina &c, QFormLayout *seccion, std::string_view columna,
                        int titulo, int digitos, int ayuda);
/// A check mark without a caption beside it. It stands below the boxes.
QCheckBox *FilaDeCasilla(const ContextoDePagina &c, QFormLayout *seccion, const QString &nombre,
                         int titulo, int ayuda);

/// Tells a hint in the help line whenever the focus comes to a control or into it.
void AvisarAlEntrar(const ContextoDePagina &c, QWidget *control, int ayuda);
/// Runs a task each time a page is shown: other pages may have changed what it shows.
void AlMostrar(QWidget *pagina, const std::function<void()> &tarea);
