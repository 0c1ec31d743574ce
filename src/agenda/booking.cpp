#include "agenda/booking.h"

#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "store/lookups.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { ResumenDeAgenda = 1309, ActualizarResumen = 1310, TareaDeUsuario = 1109 };

constexpr int CategoriaDeServicios = 2;
constexpr int CercaniaEnMinutos = 15;
const QTime UltimaHoraImpresa(22, 15); // the sheet's last slot begins at 22:00

void OfrecerImpresion(Sesion &s, const Turno &turno, bool diaVacio)
{
    if (turno.dia != s.reloj.hoy || turno.hora >= UltimaHoraImpresa)
        return;
    if (diaVacio) {
        if (s.dialogos.Pregunta(s(ResumenDeAgenda)))
            ImprimirAgendaDia(s, true, s.reloj.hoy, {});
    } else if (s.dialogos.Pregunta(s(ActualizarResumen))) {
        ImprimirAgendaDia(s, false, s.reloj.hoy, turno.hora);
    }
}

} // namespace

std::vector<ConceptoDeTurno> ConceptosDeTurno(Sesion &s)
{
    std::vector<ConceptoDeTurno> conceptos;
    Recordset r = s.finanzas->OpenSnapshot(
        "select Ida, nom from articulos where idcat = ? order by nom", CategoriaDeServicios);
    for (; !r.EOF_(); r.MoveNext())
        conceptos.push_back({r["Ida"].toInt(), r["nom"].toText()});
    conceptos.push_back({TipoTarea::TareaDeUsuario, s(TareaDeUsuario)});
    return conceptos;
}

bool LlevaRecordatorio(Sesion &s, const Turno &turno)
{
    if (turno.concepto == TipoTarea::TareaDeUsuario || turno.idm <= 0)
        return false; // there is nobody to remind
    if (turno.recordar)
        return true;
    if (s.configuracion["AutRecordatorioCitasOlvida"].toInt() != 1)
        return false;
    const int tipo =
        s.finanzas->Leer("SELECT Tipo FROM Servicios WHERE Ida = ?", turno.concepto).toInt();
    if (tipo != 1 && tipo != 3)
        return false;
    const int idc = LeerCampo(s, "clientes", "mascotas", turno.idm, "idc").toInt();
    Recordset &clientes = s.listas.clientes;
    clientes.FindFirst("idc = ?", idc);
    return !clientes.NoMatch() && clientes["Perfil4"].toBool();
}

int Agendar(Sesion &s, const Turno &turno)
{
    const bool deUsuario = turno.concepto == TipoTarea::TareaDeUsuario;
    const bool diaVacio =
        s.morvane->Leer("select top 1 id from TareasAgenda where dia = ? and (tip > 0)", turno.dia)
            .EsNulo();
    Tarea tarea;
    tarea.tip = deUsuario ? TipoTarea::TareaDeUsuario : qAbs(turno.concepto);
    tarea.ida = deUsuario ? s.usuario.idu : turno.idm;
    tarea.dia = turno.dia;
    tarea.hor = turno.hora;
    tarea.ala = turno.alarma;
    tarea.medio = LlevaRecordatorio(s, turno) ? 1 : 0;
    tarea.fcreacion = s.reloj.hoy;
    tarea.des = QuitarApostrofes(turno.descripcion);

    Lote lote(s);
    const int id = AgregarTarea(s, tarea);
    if (!deUsuario)
        s.clientes->Execute("update mascotas set tarea = -1 where idm = ?", turno.idm);
    lote.Confirmar();
    if (!deUsuario)
        OfrecerImpresion(s, turno, diaVacio);
    return id;
}

int FilaCercana(const std::vector<TareaDelDia> &turnos, QTime hora)
{
    const auto fila = [&](int cercania) {
        for (size_t i = 0; i < turnos.size(); ++i)
            if (turnos[i].hor.isValid() && qAbs(turnos[i].hor.secsTo(hora)) <= cercania * 60)
                return int(i);
        return -1;
    };
    const int exacta = fila(0);
    return exacta >= 0 ? exacta : fila(CercaniaEnMinutos);
}

int FilaDeArriba(int fila) { return fila >= 2 ? fila - 1 : fila; }

QTime HoraEscrita(const QString &texto)
{
    static const QRegularExpression forma(
        u"^\\s*(\\d{1,2})(?:\\s*[:.,hH]?\\s*(\\d{2})(?:\\s*[:.]\\s*\\d{2})?)?\\s*[hH]?\\s*"
        u"(?:([aApP])\\.?\\s*[mM]\\.?)?\\s*$"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch m = forma.match(texto);
    if (!m.hasMatch())
        return {};
    int hora = m.captured(1).toInt();
    if (const QString mitad = m.captured(3).toLower(); !mitad.isEmpty()) {
        if (hora < 1 || hora > 12)
            return {};
        hora = hora % 12 + (mitad == u"p" ? 12 : 0);
    }
    return {hora, m.captured(2).toInt()};
}
