// The rows of the registry's two grids.
#pragma once

#include "store/session.h"

/// Why a client stands out: it owes or is in arrears with prepaid medicine (red); letters or mails
/// do not reach it, or its prepaid state is 5 (yellow).
enum class SenaDeCliente { Ninguna, Alerta, Aviso };

struct FilaDeCliente {
    int idc = 0;
    QString ayn;
    QString tel2;
    SenaDeCliente sena = SenaDeCliente::Ninguna;
};

/// All clients by name.
std::vector<FilaDeCliente> FilasDeClientes(Sesion &s);
/// One of them, nullopt when it is gone.
std::optional<FilaDeCliente> FilaDelCliente(Sesion &s, int idc);

struct FilaDePaciente {
    int idm = 0;
    QString nom;
    QString especie;
    QString raza;
    bool dec = false;
};

/// The patients of a client by name.
std::vector<FilaDePaciente> FilasDePacientes(Sesion &s, int idc);

/// Which column the text of the client search box is looked for in.
enum class BusquedaDeCliente { Nada, Nombre, Id, Telefono };
/// Text without digits alone: the name; a number of fewer than five characters: the id; else the
/// telephone.
BusquedaDeCliente TipoDeBusqueda(const QString &texto);

/// Patients of any client whose name begins with the text, with their owners, by owner. A typed
/// `*` stands for anything.
struct PacienteHallado {
    int idm = 0;
    int idc = 0;
    QString mascota;
    QString propietario;
};
std::vector<PacienteHallado> BuscarPacientes(Sesion &s, const QString &texto);
