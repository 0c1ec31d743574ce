#include "board/board_notices.h"

#include "board/failures.h"
#include "columns/configuracion.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "texts/board.h"
#include "texts/startup.h"

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

const QString ToDo = u"tareanorealizada"_s, Done = u"tarearealizada"_s;

bool hasMoreThan(int moreThan, Base &base, std::string_view rows)
{
    return base.read("select count(*) from " + std::string(rows)).toInt() > moreThan;
}

Target settingsPage(const QString &page)
{
    return {u"frmConfiguracion"_s, {{u"pagina"_s, page}}, {}};
}

} // namespace

QList<BoardNotice> board::warnings(Sesion &s)
{
    QList<BoardNotice> all;
    if (s.dataFolder == store::demoFolder(s))
        all << BoardNotice{s(text::DemoNotice), u"pregunta"_s, {}};
    const QDate last = s.configuracion[setting::FechaUltimoInicio].toDate();
    if (last.isValid() && last != s.reloj.hoy)
        all << BoardNotice{s(text::PassDidNotRun).arg(store::dayText(last)), u"pregunta"_s, {}};
    if (const auto [count, day] = countFailures(s); count > 0) {
        const QString message = count == 1
                                    ? s(text::OneFailureNoted).arg(store::dayText(day))
                                    : s(text::FailuresNoted).arg(count).arg(store::dayText(day));
        all << BoardNotice{message, u"pregunta"_s, {u"frmErrores"_s, {}, {}}};
    }
    return all;
}

bool board::isNewClinic(Sesion &s) { return !hasMoreThan(0, *s.clientes, "clientes"); }

QList<BoardNotice> board::firstSteps(Sesion &s)
{
    const bool hasClients = !isNewClinic(s);
    const bool hasMail = !s.configuracion[setting::usuariomail].toText().isEmpty();
    QList<BoardNotice> steps{
        {s(text::StepClinicData), {}, settingsPage(u"clinica"_s), !s.clinic.dir.isEmpty()},
        {s(text::StepUsers),
         {},
         settingsPage(u"usuarios"_s),
         hasMoreThan(1, *s.morvane, "Usuarios")},
        {s(text::StepClients), {}, {u"frmPropietarios"_s, {}, {}}, hasClients},
        {s(text::StepImport), {}, {u"frmImportar"_s, {}, {}}, hasClients},
        {s(text::StepMail), {}, settingsPage(u"clinica"_s), hasMail},
    };
    if (std::ranges::all_of(steps, &BoardNotice::done))
        return {};
    for (BoardNotice &step : steps) {
        step.picture = step.done ? Done : ToDo;
        if (step.done)
            step.message += u" · "_s + s(text::StepDone);
    }
    return steps;
}
