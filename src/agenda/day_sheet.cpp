#include "agenda/day_sheet.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "printing/sheet.h"
#include "store/lookups.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { AgendaDelDia = 1101, VariasTareas = 1107 };

const QTime PrimeraCasilla(6, 0);
constexpr int MinutosDeCasilla = 15;
constexpr int MayorNumeroDeCasillas = 65;
constexpr int LetrasDelNombre = 12;
constexpr int FilasDeColumna[] = {22, 22, 21};

// What the task is about, as short as the sheet needs it.
QString Asunto(Sesion &s, int tip, int ida, const QString &des)
{
    if (SujetoDeTarea(tip) == Sujeto::Paciente)
        return LeerCampo(s, "clientes", "mascotas", ida, "nom");
    return tip == TipoTarea::TareaDeUsuario && !des.isEmpty() ? des : ConceptoDeTarea(s, tip, 0);
}

class DocumentoDelDia : public Documento
{
public:
    DocumentoDelDia(QString titulo, QString dia, QString hora, std::vector<Casilla> casillas)
        : m_titulo(std::move(titulo)),
          m_dia(std::move(dia)),
          m_hora(std::move(hora)),
          m_casillas(std::move(casillas))
    {
    }

    QString Titulo() const override { return m_titulo + u" "_s + m_dia; }

    int Componer(QPaintDevice &, QSizeF area) override
    {
        m_area = area;
        // Rows of the detail, three columns wide; those that do not fit go on to further pages.
        m_lineas.clear();
        for (const Casilla &c : m_casillas)
            if (c.detalle.size() > 1)
                m_lineas.insert(m_lineas.end(), c.detalle.begin(), c.detalle.end());
        const int porColumna = FilasDelDetalle(DondeEmpiezaElDetalle());
        const int enLaPrimera = 3 * porColumna;
        const int quedan = qMax(0, int(m_lineas.size()) - enLaPrimera);
        const int porPagina = 3 * FilasDelDetalle(CabezaDeOtras);
        return m_casillas.empty() ? 0 : 1 + (quedan + porPagina - 1) / porPagina;
    }

    void Dibujar(QPainter &pintor, int pagina) override
    {
        Hoja hoja(pintor);
        if (pagina > 0) {
            const int antes = 3 * FilasDelDetalle(DondeEmpiezaElDetalle())
                              + (pagina - 1) * 3 * FilasDelDetalle(CabezaDeOtras);
            hoja.Linea({0, 0, m_area.width(), 6}, Titulo(), 11, Qt::AlignLeft, true);
            DibujarDetalle(hoja, CabezaDeOtras, antes);
            return;
        }
        hoja.Linea({0, 0, m_area.width(), 9}, m_titulo, 18, Qt::AlignLeft, true);
        hoja.Linea({0, 9, m_area.width(), 6}, m_dia, 11, Qt::AlignLeft);
        hoja.Linea({0, 9, m_area.width(), 6}, m_hora, 11, Qt::AlignRight);
        DibujarCasillas(hoja);
        DibujarDetalle(hoja, DondeEmpiezaElDetalle(), 0);
    }

private:
    static constexpr double Cabeza = 18;
    static constexpr double CabezaDeOtras = 9; // of the pages behind the first
    static constexpr double AltoDeFila = 7.4;
    static constexpr double AltoDeDetalle = 4.6;
    static constexpr double Calle = 4;

    double AnchoDeColumna() const { return (m_area.width() - 2 * Calle) / 3; }
    double DondeEmpiezaElDetalle() const { return Cabeza + FilasDeColumna[0] * AltoDeFila + 5; }
    int FilasDelDetalle(double desde) const
    {
        return qMax(1, int((m_area.height() - desde) / AltoDeDetalle));
    }

    void DibujarCasillas(Hoja &hoja) const
    {
        const double ancho = AnchoDeColumna();
        size_t i = 0;
        for (int columna = 0; columna < 3; ++columna)
            for (int fila = 0; fila < FilasDeColumna[columna] && i < m_casillas.size();
                 ++fila, ++i) {
                const Casilla &c = m_casillas[i];
                const QRectF caja(columna * (ancho + Calle), Cabeza + fila * AltoDeFila, ancho,
                                  AltoDeFila);
                if (c.hora.minute() == 0)
                    hoja.Relleno(caja, QColor(0xf0, 0xf0, 0xf0));
                hoja.Marco(caja, 0.1);
                hoja.Linea(caja.adjusted(1.5, 0, 0, 0), c.hora.toString(u"HH:mm"), 10,
                           Qt::AlignLeft | Qt::AlignVCenter, c.hora.minute() == 0);
                if (!c.icono.isEmpty())
                    hoja.Dibujo({caja.left() + 13.5, caja.top() + 1.2, 5, 5}, c.icono);
                hoja.Linea(caja.adjusted(20, 0, -1, 0), c.texto, 10,
                           Qt::AlignLeft | Qt::AlignVCenter, c.detalle.size() > 1);
            }
    }

    void DibujarDetalle(Hoja &hoja, double arriba, int primera) const
    {
        const double ancho = AnchoDeColumna();
        const int filas = FilasDelDetalle(arriba);
        for (int i = 0; i < 3 * filas && primera + i < int(m_lineas.size()); ++i) {
            const auto &[hora, nombre] = m_lineas[size_t(primera + i)];
            const QRectF caja(i / filas * (ancho + Calle), arriba + i % filas * AltoDeDetalle,
                              ancho, AltoDeDetalle);
            hoja.Linea(caja, hora.toString(u"HH:mm") + u"  "_s + nombre, 9,
                       Qt::AlignLeft | Qt::AlignVCenter);
        }
    }

    QString m_titulo, m_dia, m_hora;
    std::vector<Casilla> m_casillas;
    std::vector<std::pair<QTime, QString>> m_lineas;
    QSizeF m_area;
};

} // namespace

std::vector<Casilla> CasillasDelDia(Sesion &s, bool completo, QDate dia, QTime desde)
{
    QTime hora = PrimeraCasilla;
    if (!completo && desde.isValid())
        hora = QTime(desde.hour(), desde.minute() / MinutosDeCasilla * MinutosDeCasilla);
    std::vector<Casilla> casillas;
    const QTime ultima =
        PrimeraCasilla.addSecs((MayorNumeroDeCasillas - 1) * MinutosDeCasilla * 60);
    for (; hora <= ultima && casillas.size() < size_t(MayorNumeroDeCasillas);
         hora = hora.addSecs(MinutosDeCasilla * 60)) {
        Casilla c;
        c.hora = hora;
        Recordset r = s.morvane->OpenSnapshot(
            "select * from TareasAgenda where dia = ? and hor between ? and ? order by hor", dia,
            hora, hora.addSecs((MinutosDeCasilla - 1) * 60));
        QString concepto;
        for (; !r.EOF_(); r.MoveNext()) {
            const int tip = r["tip"].toInt();
            concepto = ConceptoDeTarea(s, tip, r["artaux"].toLong());
            c.detalle.push_back(
                {r["hor"].toTime(), Asunto(s, tip, r["ida"].toInt(), r["des"].toText())});
        }
        if (c.detalle.size() == 1) {
            c.icono = IconoDeHoja(s, concepto);
            c.texto = c.detalle.front().second.left(LetrasDelNombre);
        } else if (c.detalle.size() > 1) {
            c.texto = s(VariasTareas);
        }
        casillas.push_back(std::move(c));
    }
    return casillas;
}

std::unique_ptr<Documento> HojaDelDia(Sesion &s, bool completo, QDate dia, QTime desde)
{
    const QLocale local;
    return std::make_unique<DocumentoDelDia>(
        s(AgendaDelDia), local.toString(dia, QLocale::LongFormat),
        completo ? QString() : HoraLarga(s.reloj.Hora()), CasillasDelDia(s, completo, dia, desde));
}

namespace
{

void Sacar(Sesion &s, void (Impresion::*como)(Sesion &, Documento &), bool completo, QDate dia,
           QTime desde)
{
    try {
        // The sheet ends at 22:15; an update from later on has nothing to show.
        if (CasillasDelDia(s, completo, dia, desde).empty())
            return;
        const auto hoja = HojaDelDia(s, completo, dia, desde);
        (s.impresion.*como)(s, *hoja);
    } catch (const ErrorDeAlmacen &e) {
        s.dialogos.Mensaje(e.descripcion);
    }
}

} // namespace

void ImprimirAgendaDia(Sesion &s, bool completo, QDate dia, QTime desde)
{
    Sacar(s, &Impresion::Imprimir, completo, dia, desde);
}

void MostrarAgendaDia(Sesion &s, bool completo, QDate dia, QTime desde)
{
    Sacar(s, &Impresion::Mostrar, completo, dia, desde);
}
