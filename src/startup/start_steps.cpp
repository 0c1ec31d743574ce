#include "startup/start_steps.h"

#include "board/board_lines.h"
#include "startup/first_run.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"

#include <QDir>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    UltimoInicioFue = 3408,
    FechaAnterior = 3409,
    BienvenidaEnPizarra = 5056,
    ClicParaAbrir = 9204,
};

constexpr int noteDrawing = 106;
constexpr int helpPageCode = 38;

QDate today(const Sesion &s) { return s.reloj.ahora().date(); }

void makeFolders(const Sesion &s)
{
    for (const QString &folder : {u"mascotas"_s, u"mascotas/cli"_s, u"mascotas/ray"_s,
                                  u"mascotas/eco"_s, u"mascotas/fot"_s}) {
        const QString path = RutaBajo(s.carpetaDeDatos, folder);
        if (!QDir().mkpath(path))
            throw ErrorDeAlmacen(ErrorNum::RutaODisco, path);
    }
}

} // namespace

bool EsPrimeraVez(Sesion &s) { return s.configuracion["PrimeraVez"].toBool(); }

void EmpezarPrimeraVez(Sesion &s)
{
    s.configuracion.Edit();
    s.configuracion.Put("FechaUltimoInicio", today(s));
    s.configuracion.Put("FechaUltimoInicioMes", today(s));
    s.configuracion.Update();
}

void TerminarPrimeraVez(Sesion &s)
{
    Lote batch(s);
    s.configuracion.Edit();
    s.configuracion.Put("PrimeraVez", false);
    s.configuracion.Put("FechaPrimerInicio", today(s));
    s.configuracion.Update();
    makeFolders(s);
    SembrarPrimeraVez(s);
    AgregarPizarra(s, s(BienvenidaEnPizarra) + u' ' + PaginaDeAyuda(s) + s(ClicParaAbrir),
                   noteDrawing, helpPageCode, 0);
    batch.Confirmar();
}

bool ComprobarInicio(Sesion &s, const QLocale &sistema)
{
    LeerClinica(s);
    s.reloj.hoy = today(s);

    const QDate last = s.configuracion["FechaUltimoInicio"].toDate();
    if (last.isValid() && s.reloj.hoy < last) {
        const QString day = QLocale().toString(last, QLocale::ShortFormat);
        if (!s.dialogos.Pregunta(s(UltimoInicioFue) + day + u' ' + s(FechaAnterior)))
            return false;
        s.morvane->Execute("update configuracion set FechaUltimoInicio = ?", s.reloj.hoy);
        s.configuracion.Requery();
    }

    const QString point = sistema.decimalPoint();
    if (point == u"." || point == u",")
        s.separadorDecimal = point.front();
    return true;
}
