// What program this is, and with what it works.
#pragma once

#include "ui/form_base.h"

class Formularios;

class frmAcerca : public FormBase
{
    Q_OBJECT
public:
    explicit frmAcerca(Sesion &s, QWidget *parent = nullptr);

private:
    void build();
};

/// Makes the forms of the board known by name.
void RegistrarFormulariosDeTablero(Sesion &s, Formularios &formularios);
