// A list that can be typed in and completes what is typed.
#pragma once

#include "store/dialogs.h"
#include "ui/calm_list.h"

/// The list itself does not know what completes a text: it tells each typed text, and whoever
/// knows gives back the best entry, whose untyped part stays selected so that the next key
/// replaces it. A key that moves or erases tells nothing and leaves the text as it is.
class ListaConCompletado : public ListaCalma
{
    Q_OBJECT
public:
    explicit ListaConCompletado(QWidget *parent = nullptr);

    /// Fills the list; `valor` of an option is its id. The text stays.
    void Cargar(const QList<Opcion> &opciones);
    /// Shows the entry with that id, or empties the box when there is none.
    void SeleccionarItem(int id);
    /// Id of the entry whose name is the text shown, letter case aside; 0 when it is a new one.
    int Id() const;
    /// Completes what was typed with this name, in the capitals of the list.
    void Proponer(int id, const QString &nombre);

Q_SIGNALS:
    void tecleado(const QString &texto);
    void vaciado();
    /// Walked to or picked by the user: UP, DOWN or the mouse.
    void elegido(int id);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool m_borra = false; // the key at work erases
};
