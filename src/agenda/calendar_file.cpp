#include "agenda/calendar_file.h"

#include "store/lookups.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int MinutosSinDuracion = 30; // of a service that has no length of its own

QByteArray Escapado(QString texto)
{
    texto.replace(u'\\', u"\\\\"_s).replace(u';', u"\\;"_s).replace(u',', u"\\,"_s);
    texto.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\n', u"\\n"_s);
    return texto.toUtf8();
}

// A line ends after 75 bytes; what follows stands behind a blank. No letter is cut in two.
void PonerLinea(QByteArray &salida, QByteArray linea)
{
    constexpr qsizetype Ancho = 73;
    while (linea.size() > Ancho) {
        qsizetype corte = Ancho;
        while (corte > 0 && (uchar(linea[corte]) & 0xc0) == 0x80)
            --corte;
        salida += linea.first(corte) + "\r\n";
        linea = ' ' + linea.sliced(corte);
    }
    salida += linea + "\r\n";
}

QByteArray Momento(QDate dia, QTime hora)
{
    return (dia.toString(u"yyyyMMdd") + u'T' + hora.toString(u"HHmmss")).toLatin1();
}

} // namespace

QByteArray ComoCalendario(Sesion &s, const std::vector<TareaDelDia> &tareas)
{
    QByteArray salida;
    PonerLinea(salida, "BEGIN:VCALENDAR");
    PonerLinea(salida, "VERSION:2.0");
    PonerLinea(salida,
               "PRODID:-//Kelvara//Agenda//" + CodigoDeIdioma(s.textos.idioma()).toLatin1());
    const QByteArray ahora =
        Momento(s.reloj.ahora().toUTC().date(), s.reloj.ahora().toUTC().time());
    for (const TareaDelDia &t : tareas) {
        PonerLinea(salida, "BEGIN:VEVENT");
        PonerLinea(salida, "UID:" + QByteArray::number(t.id) + '-'
                               + t.dia.toString(u"yyyyMMdd").toLatin1() + "@kelvara");
        PonerLinea(salida, "DTSTAMP:" + ahora + 'Z');
        if (t.hor.isValid()) {
            const Valor tiempo =
                s.finanzas->Leer("SELECT tiempo FROM Servicios WHERE Ida = ?", t.tip);
            const int minutos = tiempo.toInt() > 0 ? tiempo.toInt() : MinutosSinDuracion;
            const QDateTime fin = QDateTime(t.dia, t.hor).addSecs(minutos * 60);
            PonerLinea(salida, "DTSTART:" + Momento(t.dia, t.hor));
            PonerLinea(salida, "DTEND:" + Momento(fin.date(), fin.time()));
        } else {
            PonerLinea(salida, "DTSTART;VALUE=DATE:" + t.dia.toString(u"yyyyMMdd").toLatin1());
        }
        const QString titulo =
            t.paciente.isEmpty() ? t.concepto : t.concepto + u" - "_s + t.paciente;
        PonerLinea(salida, "SUMMARY:" + Escapado(titulo));
        PonerLinea(salida, "DESCRIPTION:" + Escapado(t.detalle));
        PonerLinea(salida, "LOCATION:" + Escapado(s.clinica.dir));
        PonerLinea(salida, "END:VEVENT");
    }
    PonerLinea(salida, "END:VCALENDAR");
    return salida;
}
