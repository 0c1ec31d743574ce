#include "startup/start_steps.h"

#include "board/board_lines.h"
#include "columns/configuracion.h"
#include "startup/first_run.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "texts/texts.h"

#include <QDir>
#include <QLocale>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

QDate today(const Sesion &s) { return s.reloj.now().date(); }

void makeFolders(const Sesion &s)
{
    for (const QString &folder : {u"mascotas"_s, u"mascotas/cli"_s, u"mascotas/ray"_s,
                                  u"mascotas/eco"_s, u"mascotas/fot"_s}) {
        const QString path = store::pathUnder(s.dataFolder, folder);
        if (!QDir().mkpath(path))
            throw store::StoreError(store::ErrorNumber::PathOrDisk, path);
    }
}

} // namespace

bool startup::isFirstRun(Sesion &s) { return s.configuracion[setting::PrimeraVez].toBool(); }

void startup::beginFirstRun(Sesion &s)
{
    s.configuracion.Edit();
    s.configuracion.Put(setting::FechaUltimoInicio, today(s));
    s.configuracion.Put(setting::FechaUltimoInicioMes, today(s));
    s.configuracion.Update();
}

void startup::finishFirstRun(Sesion &s)
{
    Lote batch(s);
    s.configuracion.Edit();
    s.configuracion.Put(setting::PrimeraVez, false);
    s.configuracion.Put(setting::FechaPrimerInicio, today(s));
    s.configuracion.Update();
    makeFolders(s);
    seedFirstRun(s);
    AgregarPizarra(s, s(text::WelcomeLine) + u' ' + store::helpPage(s) + s(text::ClickToAccess),
                   board::picture::News, board::click::HelpPage);
    batch.commit();
}

bool startup::checkStart(Sesion &s, const QLocale &system)
{
    store::readClinic(s);
    s.reloj.hoy = today(s);

    const QDate last = s.configuracion[setting::FechaUltimoInicio].toDate();
    if (last.isValid() && s.reloj.hoy < last) {
        const QString day = QLocale().toString(last, QLocale::ShortFormat);
        if (!s.dialogos.Pregunta(s(text::LastStartWas) + day + u' ' + s(text::DateIsEarlier)))
            return false;
        s.morvane->Execute("update configuracion set FechaUltimoInicio = ?", s.reloj.hoy);
        s.configuracion.Requery();
    }

    const QString point = system.decimalPoint();
    if (point == u"." || point == u",")
        s.separatorDecimal = point.front();
    return true;
}
