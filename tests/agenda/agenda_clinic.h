// A clinic with a client, two patients and a few services for the tests of the agenda.
#pragma once

#include "agenda/tasks.h"
#include "support/clinic.h"

class ClinicaConAgenda : public Clinica
{
protected:
    explicit ClinicaConAgenda(Idioma idioma = Idioma::Ingles) : Clinica(idioma)
    {
        using namespace Qt::StringLiterals;
        s.clientes->Execute("insert into clientes (idc, ayn, tel2, telc2) values (1, 'Moss, Ada', "
                            "'555-0101', '099-1')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (1, 1, 'Toby')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (2, 1, 'Mia')");
        servicio(control, u"A check"_s, 45, 1);
        servicio(visita, u"A check at home"_s, 30, 2);
        servicio(cirugia, u"A surgery"_s, 90, 3);
        s.IdGlobal = {1, 1};
    }

    void servicio(int ida, const QString &nom, int tiempo, const Valor &tipo)
    {
        s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (?, 2, ?)", ida, nom);
        s.finanzas->Execute("insert into Servicios (ida, tiempo, tipo) values (?, ?, ?)", ida,
                            tiempo, tipo);
    }

    int tarea(int tip, int ida, QDate dia, QTime hor, const QString &des = {}, QTime ala = {},
              int medio = 0, qint64 artaux = 0)
    {
        Tarea t;
        t.tip = tip;
        t.ida = ida;
        t.dia = dia;
        t.hor = hor;
        t.ala = ala;
        t.medio = medio;
        t.fcreacion = hoy;
        t.artaux = artaux;
        t.des = des;
        return AgregarTarea(s, t);
    }

    QString tareas(std::string_view columnas = "id, dia, hor, est")
    {
        return Filas(*s.morvane,
                     "select " + std::string(columnas) + " from TareasAgenda order by id");
    }

    static constexpr int control = 201, visita = 202, cirugia = 203;
};
