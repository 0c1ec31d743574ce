// The data of one client: shown, or open for typing.
#pragma once

#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "ui/bound.h"
#include "ui/form_base.h"

class LineaDeAyuda;
class ListaConCompletado;
class QAction;
class QComboBox;
class QPlainTextEdit;

class PanelDeCliente : public QWidget
{
    Q_OBJECT
public:
    /// @param guardia runs what can fail, for the form that the panel stands on
    PanelDeCliente(Sesion &s, Atar::Guardia guardia, LineaDeAyuda *ayuda,
                   QWidget *parent = nullptr);

    /// Reads the lists behind the boxes; needed again after one of them grew.
    void CargarListas();
    void Mostrar(const FichaDeCliente &ficha);
    /// Empty boxes, with the id that a new client would get, or 0 for none.
    void Vaciar(int id = 0);
    /// What is told beside the boxes; apart, because it takes several queries.
    void Informar();
    void Abrir(bool abierto);

    /// What was shown, with what the boxes say now.
    FichaDeCliente Ficha() const;
    QVariantMap Campos() const;
    void PonerCampos(const QVariantMap &valores);
    void Enfocar(Campo campo);
    /// The boxes in the order of ENTER.
    QList<QWidget *> Cadena() const;
    /// A key in one of the boxes that is more than typing. @return whether it was used up
    bool Tecla(QObject *caja, const QKeyEvent &tecla);

Q_SIGNALS:
    void tocado();
    /// The user has typed these addresses and goes on.
    void correoEscrito(const QString &direcciones);
    /// The user wants to write to these addresses.
    void escribirCorreo(const QString &direcciones);

private:
    void build();
    QWidget *buildFacts();
    void wire();
    void addCopy(QLineEdit *caja, const QString &nombre);

    void completeSubregion(const QString &texto);
    void completeRegion(const QString &texto);
    void chooseSubregion(int id);
    void takeSubregion(const Entrada &entrada);
    void dropSubregion();
    void takeRegion(int id);
    void completeMail(const QString &texto);
    void walkDomains(int paso);
    bool leaveSubregion();

    Sesion &m_s;
    Atar::Guardia m_guardia;
    LineaDeAyuda *m_ayuda;
    FichaDeCliente m_ficha;
    QString m_correoTecleado;        // without what completion put behind it
    std::optional<Entrada> m_traida; // the sub-region that filled the dependent boxes
    QList<QAction *> m_copias;

    QLineEdit *txtidc, *txtayn, *txtdir, *txtcodp, *txtcodt, *txttel, *txttelc, *txtemail;
    ListaConCompletado *cmbloc, *cmbdep;
    QComboBox *cmbmark;
    QPlainTextEdit *txtobs, *txtinfoCliente;
    QLabel *txtfeci, *txtUVisita, *txtdebe;
};
