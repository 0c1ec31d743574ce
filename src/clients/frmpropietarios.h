// Clients and patients: the registry, and the selection that the whole session works on.
#pragma once

#include "clients/frmpropietarios_shortcuts.h"
#include "ui/draft.h"
#include "ui/form_base.h"

#include <QElapsedTimer>

class Grilla;
class LineaDeAyuda;
class ModeloDeGrilla;
class PanelDeCliente;
class PanelDePaciente;
class QGridLayout;

class frmPropietarios : public FormBase
{
    Q_OBJECT
public:
    frmPropietarios(Sesion &s, Formularios &formularios, AbrirEnlace abrir = {},
                    QWidget *parent = nullptr);

    void opened(const QVariantMap &parametros) override;
    void reject() override;

protected:
    void activated() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A panel shows, takes a new entry or changes the one that it shows.
    enum class Modo { Ver, Nuevo, Modificar };
    /// The buttons below a panel; two of them hold its mode in their captions.
    struct Botonera {
        QPushButton *agregar, *nuevo, *modificar, *eliminar;
        int textoNuevo, textoModificar;
    };

    // frmpropietarios_layout.cpp
    void build();
    void buildClients(QGridLayout *lugar);
    void buildPatients(QGridLayout *lugar);
    QLayout *buildSearch(int texto, QLineEdit *caja, QPushButton *avanzada);
    QLayout *buildButtons(const Botonera &botones);
    QPushButton *button(const QString &nombre, int texto, const QString &dibujo = {});
    void orderKeys();

    void wire();

    // Rows and the selection
    void reload();
    void refresh();
    void synchronize();
    void tellLost(bool cliente);
    bool stale();
    void noteVersions();
    bool goToClient(int idc, int idm = 0);
    void showClient(int idc, int idm = 0);
    void showPatients(int idc, int idm);
    void showPatient(int idm);
    void clientRowChanged(int fila);
    void patientRowChanged(int fila);
    void informSoon();
    void inform();
    int rowOfClient(int idc) const;
    int rowOfPatient(int idm) const;
    int clientAt(int fila) const;
    int patientAt(int fila) const;
    void putClientRow(int idc);
    void dropClientRow(int idc);

    // Searching
    void searchClient(const QString &texto);
    void searchPatient(const QString &texto);
    void searchAllPatients();
    bool searchKey(QLineEdit *caja, QKeyEvent *tecla);
    void openMenu();

    // Modes
    bool entering() const { return m_modoCliente != Modo::Ver || m_modoMascota != Modo::Ver; }
    void arrange();
    void arrange(const Botonera &botones, Modo modo, bool hayFila);
    void startClient(Modo modo);
    void startPatient(Modo modo);
    void started();
    void leaveMode();
    bool cancelMode();
    void leaveFor(Seleccion deseada);
    void settleMail(const QString &direcciones);
    void toggleClient(Modo modo);
    void togglePatient(Modo modo);
    void saveClient();
    void savePatient();
    void deleteClient();
    void deletePatient();

    void touched();
    QVariantMap typed() const;
    void keepDraft();
    void offerDraft();

    Formularios &m_formularios;
    AbrirEnlace m_abrir;
    Borrador m_borrador;
    ModeloDeGrilla *m_clientes = nullptr;
    ModeloDeGrilla *m_mascotas = nullptr;
    PanelDeCliente *m_cliente = nullptr;
    PanelDePaciente *m_mascota = nullptr;
    BarraDeAccesos *m_barra = nullptr;
    QTimer *m_reposo = nullptr; // the cursor has come to rest
    QTimer *m_pausa = nullptr;  // nobody has typed for a while
    QElapsedTimer m_ultimoPaso;
    QVariantMap m_alEmpezar; // what stood in the boxes when the mode began
    Seleccion m_mostrado;
    Modo m_modoCliente = Modo::Ver, m_modoMascota = Modo::Ver;
    qint64 m_version = 0, m_versionDeMascotas = 0; // of the tables when they were read
    bool m_cargado = false;
    bool m_ocupado = false; // rows change by this form's own doing
    Botonera m_deCliente{}, m_dePaciente{};

    Grilla *GClientes = nullptr, *GMascotas = nullptr;
    QLineEdit *Txtapellidob = nullptr, *txtmascotab = nullptr;
    QPushButton *cmdBuscarCliente = nullptr, *cmdBuscarPaciente = nullptr;
    QPushButton *cmdNuevo = nullptr, *cmdagregar = nullptr, *cmdmodificar = nullptr,
                *cmdEliminar = nullptr;
    QPushButton *cmdnuevomas = nullptr, *cmdagregarmas = nullptr, *cmdmodificarmas = nullptr,
                *cmdeliminarmas = nullptr;
    QPushButton *cmdvolver = nullptr;
    LineaDeAyuda *Ayu = nullptr;
};
