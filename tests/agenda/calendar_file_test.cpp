#include "agenda/calendar_file.h"
#include "agenda_clinic.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

class Calendario : public ClinicaConAgenda
{
protected:
    /// The lines as a reader has them: folded ones joined again.
    static QStringList lineas(QByteArray texto)
    {
        return QString::fromUtf8(texto.replace("\r\n ", "")).split(u"\r\n"_s);
    }
};

} // namespace

TEST_F(Calendario, TellsWhatAndWhenWithoutATimeZone)
{
    s.clinica.dir = u"Rambla 1; Montevideo"_s;
    tarea(control, 1, hoy, {23, 30}, u"limps, left\\right"_s, {23, 0});
    tarea(TipoTarea::TareaDeUsuario, 1, hoy, {}, u"call; the lab"_s);
    auto dia = TareasDelDia(s, hoy);
    const QStringList l = lineas(ComoCalendario(s, dia));
    for (const QString &linea :
         {u"BEGIN:VCALENDAR"_s, u"VERSION:2.0"_s, u"DTSTART:20260311T233000"_s,
          u"DTEND:20260312T001500"_s, // 45 minutes, past midnight
          u"SUMMARY:A check - Toby"_s, u"TRIGGER:-PT30M"_s, u"DTSTART;VALUE=DATE:20260311"_s,
          u"SUMMARY:User task - call\\; the lab"_s, u"END:VCALENDAR"_s})
        EXPECT_EQ(l.count(linea), 1) << linea.toStdString();
    EXPECT_TRUE(l.contains(u"DESCRIPTION:"_s + HoraLarga({23, 30}).replace(u","_s, u"\\,"_s)
                           + u"\\nlimps\\, left\\\\right\\nToby\\nClient: Moss\\, Ada\\n"_s
                           + u"Phones: 555-0101 / 099-1"_s));
    EXPECT_EQ(l.count(u"LOCATION:Rambla 1\\; Montevideo"_s), 2);
    EXPECT_EQ(l.filter(u"VALARM"_s).size(), 2) << "only what has an alarm";

    // A task that moves stays the same one for whoever imports it again.
    const QString uid = l.filter(u"UID:1-"_s).value(0);
    ASSERT_FALSE(uid.isEmpty());
    MoverTareas(s, {{1, hoy.addDays(3), {8, 0}}});
    EXPECT_TRUE(lineas(ComoCalendario(s, TareasDelDia(s, hoy.addDays(3)))).contains(uid));
}

TEST_F(Calendario, FoldsLongLinesBetweenLetters)
{
    tarea(control, 1, hoy, {9, 0}, QString(200, u'ñ'));
    const QByteArray texto = ComoCalendario(s, TareasDelDia(s, hoy));
    for (const QByteArray &linea : texto.split('\n')) {
        EXPECT_LE(linea.size(), 76) << "75 and the return";
        EXPECT_FALSE(QString::fromUtf8(linea).contains(QChar::ReplacementCharacter));
    }
    EXPECT_EQ(lineas(texto).filter(QString(200, u'ñ')).size(), 1);
}

TEST_F(Calendario, IsWrittenWholeOrNotAtAll)
{
    tarea(control, 1, hoy, {9, 0});
    const QString archivo = carpeta.path() + u"/day.ics"_s;
    GuardarCalendario(s, TareasDelDia(s, hoy), archivo);
    QFile f(archivo);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll().count("BEGIN:VEVENT"), 1);
    EXPECT_THROW(GuardarCalendario(s, {}, carpeta.path() + u"/none/day.ics"_s), ErrorDeAlmacen);
}
