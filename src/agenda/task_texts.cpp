#include "agenda/task_texts.h"

#include "agenda/tasks.h"
#include "store/lookups.h"

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Alojamiento = 21,
    TareaDeUsuario = 1109,
    Oferta = 1110,
    ProductoPlanificado = 1111,
    Deuda = 1112,
    Prepaga = 1113,
    Cumpleanos = 1114,
    Cita = 1115,
    Discontinuado = 1116,
    CumpleanosDestacado = 1117,
    PorEmail = 1118,
    PorCarta = 1119,
    PorEmailOCarta = 1120,
    NuevosClientes = 1125,
    Frecuentes = 1126,
    Reabastecer = 9981,
    PedidoPorInternet = 9982,
};

using Palabras = std::initializer_list<QStringView>;

bool Tiene(const QString &texto, Palabras palabras)
{
    for (const QStringView p : palabras)
        if (texto.contains(p, Qt::CaseInsensitive))
            return true;
    return false;
}

constexpr Palabras EnCasa = {u"home", u"domicilio", u"casa"};

// What the first word found means, in the order of the search.
enum class Clase {
    Otra,
    Alimento,
    Traslado,
    Cirugia,
    Consulta,
    ConsultaEnCasa,
    Peluqueria,
    Ecografia,
    Radiografia,
    Vacuna,
    VacunaEnCasa,
    Racion,
    Usuario,
};

// The words for vaccines differ between the day's list and the sheet.
Clase ClaseDe(const Sesion &s, const QString &t, Palabras vacunas)
{
    if (Tiene(t, {u"food delivery", u"entrega de alimento", u"alimento"}))
        return Clase::Alimento;
    if (Tiene(t, {u"retiro", u"entrega", u"ir buscar", u"patient withdrawal"}))
        return Clase::Traslado;
    if (Tiene(t, {u"cirugia", u"cirugía", u"cirurgia", u"surgery"}))
        return Clase::Cirugia;
    if (Tiene(t, {u"check", u"consulta"}))
        return Tiene(t, EnCasa) ? Clase::ConsultaEnCasa : Clase::Consulta;
    if (Tiene(t, {u"peluquería", u"peluqueria", u"hair", u"cabeleireiro", u"cabeleireira"}))
        return Clase::Peluqueria;
    if (Tiene(t, {u"ecografía", u"ecografia", u"ultrasound", u"ultra-som"}))
        return Clase::Ecografia;
    if (Tiene(t, {u"radiografía", u"radiografia", u"x-ray", u"raios x"}))
        return Clase::Radiografia;
    if (Tiene(t, vacunas))
        return Tiene(t, EnCasa) ? Clase::VacunaEnCasa : Clase::Vacuna;
    if (t.contains(s(Alojamiento), Qt::CaseInsensitive))
        return Clase::Racion;
    // "usuário" is how Portuguese writes it; the other two alone would miss its users' tasks.
    if (Tiene(t, {u"user", u"usuario", u"usuário"}))
        return Clase::Usuario;
    return Clase::Otra;
}

} // namespace

QString ConceptoDeTarea(Sesion &s, int tip, qint64 artaux)
{
    if (tip == TipoTarea::Racion)
        return s(Alojamiento);
    if (tip == TipoTarea::TareaDeUsuario)
        return s(TareaDeUsuario);
    if (tip < 0)
        return MotivoDeTarea(s, tip);
    const QString nombre = LeerCampo(s, "finanzas", "articulos", tip, "nom");
    if (!nombre.isEmpty() || artaux <= 0)
        return nombre;
    return s.finanzas
        ->Leer("SELECT FLCategorias.Nom FROM Articulos LEFT JOIN FLCategorias ON Articulos.IDCat "
               "= FLCategorias.IDCat WHERE Articulos.Ida = ?",
               artaux)
        .toText();
}

QString MotivoDeTarea(const Sesion &s, int tip)
{
    switch (tip) {
    case TipoTarea::FaltaAlimento:
        return s(Oferta);
    case TipoTarea::RecordatorioDosis:
        return s(ProductoPlanificado);
    case TipoTarea::RecordatorioDeuda:
        return s(Deuda);
    case TipoTarea::RegularizarMorosidad:
    case TipoTarea::MorosoPrepaga:
        return s(Prepaga);
    case TipoTarea::Reabastecer:
        return s(Reabastecer);
    case TipoTarea::Cumpleanos:
        return s(Cumpleanos);
    case TipoTarea::Cita:
        return s(Cita);
    case TipoTarea::RecordatorioTurno:
        return s(PedidoPorInternet);
    case TipoTarea::DosisDiscontinuada:
        return s(Discontinuado);
    case TipoTarea::CumpleanosDestacado:
        return s(CumpleanosDestacado);
    case TipoTarea::NuevoCliente:
        return s(NuevosClientes);
    case TipoTarea::Frecuente:
        return s(Frecuentes);
    default:
        return {};
    }
}

QString MedioEnPalabras(const Sesion &s, int medio)
{
    return medio >= 1 && medio <= 3 ? s(PorEmail + medio - 1) : QString();
}

QString IconoDeAgenda(const Sesion &s, const QString &concepto)
{
    switch (ClaseDe(
        s, concepto,
        {u"vacuna", u"vacinas", u"vaccination", u"vaccines", u"anticoncepti", u"antiparasi"})) {
    case Clase::Alimento:
        return u"AmbAli"_s;
    case Clase::Traslado:
        return u"buscarperro"_s;
    case Clase::Cirugia:
        return u"TurnoCir"_s;
    case Clase::Consulta:
        return u"TurnoCon"_s;
    case Clase::ConsultaEnCasa:
        return u"AmbCon"_s;
    case Clase::Peluqueria:
        return u"TurnoPel"_s;
    case Clase::Ecografia:
        return u"TurnoEco"_s;
    case Clase::Radiografia:
        return u"TurnoRay"_s;
    case Clase::Vacuna:
        return u"TurnoVac"_s;
    case Clase::VacunaEnCasa:
        return u"AmbVac"_s;
    case Clase::Racion:
        return u"alimentarhos"_s;
    case Clase::Usuario:
        return u"tareausuarios"_s;
    case Clase::Otra:
        break;
    }
    return {};
}

QString IconoDeHoja(const Sesion &s, const QString &concepto)
{
    switch (ClaseDe(s, concepto,
                    {u"vacuna", u"vacinas", u"vaccination", u"vacunacion", u"vacunación"})) {
    case Clase::Alimento:
        return u"AgendaCom"_s;
    case Clase::Traslado:
        return u"AgendaBus"_s;
    case Clase::Cirugia:
        return u"AgendaCir"_s;
    case Clase::Consulta:
    case Clase::ConsultaEnCasa:
        return u"AgendaCon"_s;
    case Clase::Peluqueria:
        return u"AgendaPel"_s;
    case Clase::Ecografia:
        return u"AgendaEco"_s;
    case Clase::Radiografia:
        return u"AgendaRay"_s;
    case Clase::Vacuna:
    case Clase::VacunaEnCasa:
        return u"AgendaVac"_s;
    case Clase::Racion:
        return u"alimentarhos"_s;
    case Clase::Usuario:
    case Clase::Otra:
        break;
    }
    return {};
}

Sujeto SujetoDeTarea(int tip)
{
    switch (tip) {
    case TipoTarea::FaltaAlimento:
    case TipoTarea::RecordatorioDosis:
    case TipoTarea::Cumpleanos:
    case TipoTarea::DosisDiscontinuada:
    case TipoTarea::CumpleanosDestacado:
        return Sujeto::Paciente;
    case TipoTarea::RecordatorioDeuda:
    case TipoTarea::RegularizarMorosidad:
    case TipoTarea::Cita:
    case TipoTarea::RecordatorioTurno:
    case TipoTarea::MorosoPrepaga:
    case TipoTarea::NuevoCliente:
    case TipoTarea::Frecuente:
        return Sujeto::Cliente;
    case TipoTarea::Reabastecer:
        return Sujeto::Proveedor;
    case TipoTarea::TareaDeUsuario:
        return Sujeto::Usuario;
    default:
        return tip > 0 ? Sujeto::Paciente : Sujeto::Nadie;
    }
}
