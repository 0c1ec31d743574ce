// What the data panels of the registry are laid out with.
#pragma once

#include "ui/form_base.h"

#include <QGridLayout>
#include <QVariantMap>

class QPlainTextEdit;
class QPushButton;

/// Boxes beside their captions, one or two to a line, all lines on one grid.
class RejillaDeCampos : public QGridLayout
{
public:
    explicit RejillaDeCampos(QWidget *dueno);

    /// One box over the whole line, @p codigo a narrow one at its end.
    void Fila(const QString &titulo, QWidget *caja, QWidget *codigo = nullptr);
    /// Two boxes of the same width.
    void Fila(const QString &titulo, QWidget *caja, const QString &titulo2, QWidget *caja2);

private:
    QLabel *caption(const QString &titulo, QWidget *caja);
};

/// What stands in the boxes, each under its name: for drafts, and to tell whether anything was
/// typed.
QVariantMap LeerCampos(const QList<QWidget *> &campos);
void PonerCampos(const QList<QWidget *> &campos, const QVariantMap &valores);

/// Long texts show how they begin.
void MostrarPrincipios(const QWidget *panel);

/// Opens boxes for typing; or closes them so that their texts can be read and copied, and TAB
/// passes them over.
void AbrirCampos(const QList<QWidget *> &campos, bool abiertos);

/// Runs a slot whenever the user or the form changes one of the boxes.
void AlCambiar(const QList<QWidget *> &campos, QObject *contexto, const std::function<void()> &que);

/// A box for long texts; ENTER begins a line, CTRL+ENTER and TAB go on.
QPlainTextEdit *CajaDeNotas(const Sesion &s, const QString &nombre, const QString &accesible);

/// A text beside the boxes that is shown and not typed.
QPlainTextEdit *CajaDeInformacion(const QString &nombre, const QString &accesible);

/// A text box with room for what its column takes.
QLineEdit *CajaDeColumna(const Sesion &s, std::string_view tabla, std::string_view columna,
                         const QString &nombre, const QString &accesible);

/// Gives a button its caption and its ALT key, which acts at once: a button's own key shows it
/// pressed first, and what is typed meanwhile goes astray.
void PonerTitulo(QPushButton *boton, const QString &titulo);

/// How boxes look in a dense form: closed ones as text on the window, buttons of a bar without
/// frame.
QString EstiloDeFicha();
