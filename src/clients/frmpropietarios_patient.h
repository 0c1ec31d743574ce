// The data of one patient: shown, or open for typing.
#pragma once

#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "ui/bound.h"
#include "ui/form_base.h"

class CajaDeFecha;
class CajaDeNumero;
class FotoDeMascota;
class LineaDeAyuda;
class ListaConCompletado;
class QCheckBox;
class QComboBox;
class QImage;
class QPlainTextEdit;

class PanelDePaciente : public QWidget
{
    Q_OBJECT
public:
    /// @param guardia runs what can fail, for the form that the panel stands on
    PanelDePaciente(Sesion &s, Atar::Guardia guardia, LineaDeAyuda *ayuda,
                    QWidget *parent = nullptr);

    /// Reads the lists behind the boxes; needed again after one of them grew.
    void CargarListas();
    void Mostrar(const FichaDePaciente &ficha);
    /// Empty boxes, with the id that a new patient would get, or 0 for none.
    void Vaciar(int id = 0);
    /// The photograph and what is told beside the boxes; apart, because it takes several queries.
    void Informar();
    void Abrir(bool abierto);
    /// Whether a photograph is taken for the patient shown.
    void PermitirFoto(bool si);

    /// What was shown, with what the boxes say now.
    FichaDePaciente Ficha() const;
    /// The name in the species box.
    QString Especie() const;
    /// Whether the birth date is empty or a day.
    bool NacimientoValido() const;
    QVariantMap Campos() const;
    void PonerCampos(const QVariantMap &valores);
    void Enfocar(Campo campo);
    /// The boxes in the order of ENTER.
    QList<QWidget *> Cadena() const;

Q_SIGNALS:
    void tocado();

private:
    void build();
    QWidget *buildFacts();
    void wire();
    QWidget *besides(QWidget *caja, QLabel *detras);

    void completeBreed(const QString &texto);
    void chooseBreed(int id);
    void takeBreed(const Entrada &entrada);
    void changeSpecies();
    void tellAge();
    void choosePhoto();
    void takeFile(const QString &archivo);
    void takePicture(const QImage &imagen);
    void dropPhoto();
    void showPhoto();

    Sesion &m_s;
    Atar::Guardia m_guardia;
    LineaDeAyuda *m_ayuda;
    FichaDePaciente m_ficha;
    std::optional<Entrada> m_traida; // the breed that chose the species

    QLineEdit *txtidm, *txtnom, *txtcar, *txtChip;
    ListaConCompletado *cmbraza;
    QComboBox *cmbespecie, *cmbpel, *cmbsex, *cmbser;
    CajaDeFecha *Msknac;
    CajaDeNumero *txtpes;
    QCheckBox *chkped, *chkrep, *chkdec;
    QPlainTextEdit *txtobsmas, *txtinfomas;
    QLabel *lblEdad;
    FotoDeMascota *PicMascota;
};
