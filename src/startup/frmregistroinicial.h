// The form of a clinic's first run: its name and its first user.
#pragma once

#include "ui/form_base.h"

class QFormLayout;
class QLabel;
class QPushButton;

/// Accepted once the clinic and its user are stored.
class frmRegistroInicial : public ui::FormBase
{
    Q_OBJECT
public:
    /// Builds the form with empty boxes.
    explicit frmRegistroInicial(Sesion &s, QWidget *parent = nullptr);

    /// Asks first, because closing the unfinished form ends the program.
    void reject() override;

private:
    void build();
    void wire();
    QLineEdit *addBox(QFormLayout *form, const QString &name, int caption);
    void confirm();
    void showFault(int text);

    QLineEdit *txtNombreVeterinaria = nullptr;
    QLineEdit *txtDireccionVeterinaria = nullptr;
    QLineEdit *txtTelefonosVeterinaria = nullptr;
    QLineEdit *txtNombreUsuario = nullptr;
    QLineEdit *txtContraseñaUsuario = nullptr;
    QLineEdit *txtContraseñaUsuario2 = nullptr;
    QLabel *lblAviso = nullptr;
    QPushButton *cmdContinuar = nullptr;
};
