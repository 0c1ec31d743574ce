// A telephone call through a modem.
#pragma once

#include "clients/dialling.h"
#include "ui/form_base.h"

namespace ui
{

class HelpLine;

} // namespace ui

class QComboBox;
class QPushButton;

/// Opened with `numeros`, it calls the first number at once if the port is known; closing the form
/// hangs up.
class frmTel : public ui::FormBase
{
    Q_OBJECT
public:
    /// Opens no port yet.
    explicit frmTel(Sesion &s, QWidget *parent = nullptr);
    ~frmTel() override;

    /// Fills the boxes and calls at once if the port is known.
    /// @param parameters `numeros`, a list of telephones
    void opened(const QVariantMap &parameters) override;
    /// Hangs up and closes the form.
    void reject() override;

private:
    void build();
    void call();
    void hangUp();
    void listPorts();
    void failed(const QString &reason);

    clients::Dialler m_dialler;
    QComboBox *cmbNumero = nullptr;
    QComboBox *cmbPuerto = nullptr;
    QPushButton *cmdLlamar = nullptr;
    QPushButton *cmdTerminar = nullptr;
    ui::HelpLine *lblEstado = nullptr;
};
