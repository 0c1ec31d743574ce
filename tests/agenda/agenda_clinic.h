// A clinic with one client, two patients and a few services, for the tests of the agenda.
#pragma once

#include "agenda/tasks.h"
#include "support/clinic.h"

using namespace agenda;

class ClinicWithAgenda : public Clinic
{
protected:
    explicit ClinicWithAgenda(store::Language language = store::Language::English)
        : Clinic(language)
    {
        using namespace Qt::StringLiterals;
        s.clientes->Execute("insert into clientes (idc, ayn, tel2, telc2) values (1, 'Moss, Ada', "
                            "'555-0101', '099-1')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (1, 1, 'Toby')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (2, 1, 'Mia')");
        service(control, u"A check"_s, 45, 1);
        service(visit, u"A check at home"_s, 30, 2);
        service(surgery, u"A surgery"_s, 90, 3);
        s.IdGlobal = {1, 1};
    }

    void service(int ida, const QString &nom, int time, const store::Value &type)
    {
        s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (?, 2, ?)", ida, nom);
        s.finanzas->Execute("insert into Servicios (ida, tiempo, tipo) values (?, ?, ?)", ida, time,
                            type);
    }

    int task(int tip, int ida, QDate dia, QTime hor, const QString &des = {}, QTime ala = {},
             int medio = 0, qint64 artaux = 0)
    {
        Task t;
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

    QString tasks(std::string_view columns = "id, dia, hor, est")
    {
        return allRows(*s.morvane,
                       "select " + std::string(columns) + " from TareasAgenda order by id");
    }

    static constexpr int control = 201, visit = 202, surgery = 203;
};
