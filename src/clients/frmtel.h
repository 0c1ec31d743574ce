// A telephone call through a modem.
#pragma once

#include "clients/dialling.h"
#include "ui/form_base.h"

class LineaDeAyuda;
class QComboBox;
class QPushButton;

/// Opened with `numeros`, it calls the first as soon as it knows the port; closing hangs up.
class frmTel : public FormBase
{
    Q_OBJECT
public:
    explicit frmTel(Sesion &s, QWidget *parent = nullptr);
    ~frmTel() override;

    void opened(const QVariantMap &parametros) override;
    void reject() override;

private:
    void build();
    void call();
    void hangUp();
    void listPorts();
    void failed(const QString &motivo);

    Marcador m_marcador;
    QComboBox *cmbNumero = nullptr;
    QComboBox *cmbPuerto = nullptr;
    QPushButton *cmdLlamar = nullptr;
    QPushButton *cmdTerminar = nullptr;
    LineaDeAyuda *lblEstado = nullptr;
};
