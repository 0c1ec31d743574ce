#include "agenda/calendar_file.h"

#include "agenda/tasks.h"
#include "store/lookups.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace
{

QByteArray Escapado(QString texto)
{
    texto.replace(u'\\', u"\\\\"_s).replace(u';', u"\\;"_s).replace(u',', u"\\,"_s);
    texto.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\n', u"\\n"_s);
    texto.removeIf([](QChar c) { return c < u' '; });
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

/// A reminder as far from the hour as the alarm is.
void PonerAlarma(QByteArray &salida, const TareaDelDia &t, const QByteArray &titulo)
{
    if (!t.ala.isValid() || !t.hor.isValid())
        return;
    const int minutos = t.hor.secsTo(t.ala) / 60;
    PonerLinea(salida, "BEGIN:VALARM");
    PonerLinea(salida, "ACTION:DISPLAY");
    PonerLinea(salida, "DESCRIPTION:" + titulo);
    PonerLinea(salida, QByteArray(minutos < 0 ? "TRIGGER:-PT" : "TRIGGER:PT")
                           + QByteArray::number(qAbs(minutos)) + 'M');
    PonerLinea(salida, "END:VALARM");
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
                               + t.creada.toString(u"yyyyMMdd").toLatin1() + "@kelvara");
        PonerLinea(salida, "DTSTAMP:" + ahora + 'Z');
        if (t.hor.isValid()) {
            // Counted without a time zone: a day has no hour that is missing or comes twice.
            const QDateTime fin = QDateTime(t.dia, t.hor, Qt::UTC).addSecs(t.minutos * 60);
            PonerLinea(salida, "DTSTART:" + Momento(t.dia, t.hor));
            PonerLinea(salida, "DTEND:" + Momento(fin.date(), fin.time()));
        } else {
            PonerLinea(salida, "DTSTART;VALUE=DATE:" + t.dia.toString(u"yyyyMMdd").toLatin1());
        }
        // A user's note says more than "User task" does.
        const QString asunto = t.tip == TipoTarea::TareaDeUsuario ? t.des : t.paciente;
        const QByteArray titulo =
            Escapado(asunto.isEmpty() ? t.concepto : t.concepto + u" - "_s + asunto);
        PonerLinea(salida, "SUMMARY:" + titulo);
        PonerLinea(salida, "DESCRIPTION:" + Escapado(t.detalle));
        if (!s.clinica.dir.isEmpty())
            PonerLinea(salida, "LOCATION:" + Escapado(s.clinica.dir));
        PonerAlarma(salida, t, titulo);
        PonerLinea(salida, "END:VEVENT");
    }
    PonerLinea(salida, "END:VCALENDAR");
    return salida;
}

void GuardarCalendario(Sesion &s, const std::vector<TareaDelDia> &tareas, const QString &archivo)
{
    QSaveFile destino(archivo);
    const QByteArray texto = ComoCalendario(s, tareas);
    if (!destino.open(QIODevice::WriteOnly) || destino.write(texto) != texto.size()
        || !destino.flush() || !destino.commit())
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, destino.errorString());
}
