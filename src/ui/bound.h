// Controls tied to a column of the settings row: what the user changes is written at once.
#pragma once

#include "store/session.h"
#include "ui/form_base.h"

#include <QGroupBox>

class QButtonGroup;
class QCheckBox;

/// Options of which one is chosen; the column keeps its number. A value that is none of the
/// options shows none chosen.
class GrupoDeOpciones : public QGroupBox
{
    Q_OBJECT
public:
    /// @param opciones number stored and caption
    GrupoDeOpciones(const QString &titulo, const QList<std::pair<int, QString>> &opciones,
                    QWidget *parent = nullptr);
    int Valor() const; // 0 when none is chosen
    void PonerValor(int valor);

Q_SIGNALS:
    /// The user chose; not when PonerValor does.
    void elegida(int valor);

private:
    QButtonGroup *m_grupo;
};

/// Shows the column's value, and writes each change of the user to the settings row. The control
/// belongs to a form whose guard tells of what fails; then the stored value is shown again, as it
/// is for a text that is no such value. Boxes write when they are left or ENTER is pressed, if
/// their text changed.
/// @throws ErrorDeAlmacen when the column cannot be read
namespace Atar
{
using Guardia = std::function<bool(const std::function<void()> &)>;

void Opciones(Sesion &s, const Guardia &guardia, GrupoDeOpciones *grupo, std::string_view columna);
void Casilla(Sesion &s, const Guardia &guardia, QCheckBox *casilla, std::string_view columna);
void Texto(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna);
void Entero(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna);
void Numero(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna);
void Hora(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna);

/// Runs a task when a control is left, and when its form goes off the screen: what was typed there
/// counts as well.
void AlDejar(QWidget *control, const std::function<void()> &tarea);
} // namespace Atar
