#include "app/unattended.h"

#include "board/board_lines.h"
#include "clients/import.h"
#include "messages/outbox.h"
#include "startup/daily_automation.h"
#include "startup/demo_clinic.h"
#include "startup/new_folder.h"
#include "startup/start_steps.h"
#include "store/data_folder.h"
#include "store/opening.h"

#include <QDir>
#include <QLocale>

#include <cstdio>
#include <functional>

namespace
{

void Imprimir(std::FILE *donde, const QString &linea)
{
    std::fprintf(donde, "%s\n", linea.toUtf8().constData());
}

int Fallar(const QString &porque)
{
    Imprimir(stderr, porque);
    return 1;
}

// A board line is one line of output, whatever is in its text.
QString EnUnaLinea(QString t)
{
    for (QChar &c : t)
        if (c == u'\t' || c == u'\n' || c == u'\r')
            c = u' ';
    return t;
}

void ImprimirPizarra(Sesion &s)
{
    for (const LineaDePizarra &l : LeerPizarra(s))
        Imprimir(stdout, QStringLiteral("%1\t%2\t%3\t").arg(l.dibujo).arg(l.codigo1).arg(l.codigo2)
                             + EnUnaLinea(l.mensaje));
}

// Opens a clinic that has been run before, and works on it where nobody can be asked.
// @return the exit status
int EnClinica(const Opciones &opciones, Idioma idioma, const std::function<int(Sesion &)> &trabajo)
{
    DialogosDesatendidos dialogos;
    SinImpresion impresion;
    Sesion s(dialogos, impresion, idioma);
    try {
        FijarCarpetaDeDatos(s, opciones.datos);
        if (const auto falla = AbrirAlmacen(s))
            return Fallar(falla->texto);
        if (EsPrimeraVez(s))
            return Fallar(s(9007));
        return trabajo(s);
    } catch (const ErrorDeAlmacen &e) {
        return Fallar(TextoDeError(s, e));
    }
}

} // namespace

int CorrerDesatendido(const Opciones &opciones, Idioma idioma)
{
    return EnClinica(opciones, idioma, [](Sesion &s) {
        // The question that this asks is told on standard error; nobody is there to say Yes.
        if (!ComprobarInicio(s, QLocale::system()))
            return 1;
        IniciarTareas(s, {.enviarMensajes = EnviarMensajes, .pasoMensual = {}});
        ImprimirPizarra(s);
        return 0;
    });
}

int ImportarDatos(const Opciones &opciones, Idioma idioma)
{
    return EnClinica(opciones, idioma, [&opciones](Sesion &s) {
        const VistaDeArchivo vista = MirarArchivo(s, opciones.importar, 0);
        if (!vista.falla.isEmpty())
            return Fallar(vista.falla);
        OpcionesDeImportacion o;
        o.archivo = opciones.importar;
        o.columnas = vista.columnas;
        o.propietario = opciones.propietario;
        if (!opciones.fechas.isEmpty())
            o.orden = opciones.fechas == u"mda" ? OrdenDeFecha::MesDia : OrdenDeFecha::DiaMes;
        const QString mal = AplicarColumnas(s, opciones.columnas, vista.titulos, o.columnas);
        if (!mal.isEmpty())
            return Fallar(mal);
        Imprimir(stdout, TextoDeVista(s, vista));
        for (qsizetype i = 0; i < vista.titulos.size(); ++i)
            Imprimir(stdout, QStringLiteral("%1\t").arg(i + 1) + vista.titulos[i] + u'\t'
                                 + NombreDeDato(o.columnas[i]));
        const InformeDeImportacion informe =
            opciones.confirmar ? Importar(s, o) : ProbarImportacion(s, o);
        if (informe.falta != InformeDeImportacion::Falta::Nada)
            return Fallar(informe.falla);
        Imprimir(stdout, ResumenDeImportacion(s, informe));
        Imprimir(stdout, FinalDeImportacion(s, informe));
        for (const LineaDeInforme &l : informe.lineas)
            if (l.aviso || l.suerte == Suerte::Rechazada)
                Imprimir(stdout, QStringLiteral("%1\t").arg(l.linea) + TextoDeSuerte(s, l.suerte)
                                     + u'\t' + EnUnaLinea(l.cliente) + u'\t' + EnUnaLinea(l.mascota)
                                     + u'\t' + EnUnaLinea(l.texto));
        return informe.falla.isEmpty() ? 0 : 1;
    });
}

int CrearDatos(const Opciones &opciones, Idioma idioma)
{
    DialogosDesatendidos dialogos;
    SinImpresion impresion;
    Sesion s(dialogos, impresion, idioma);
    try {
        CrearCarpeta(opciones.crear, idioma);
    } catch (const ErrorDeAlmacen &e) {
        return Fallar(e.descripcion); // says which folder, and all there is to say
    }
    try {
        if (opciones.demo) {
            FijarCarpetaDeDatos(s, opciones.crear);
            if (const auto falla = AbrirAlmacen(s))
                return Fallar(falla->texto);
            CrearDemo(s);
        }
    } catch (const ErrorDeAlmacen &e) {
        return Fallar(TextoDeError(s, e));
    }
    Imprimir(stdout, QDir(opciones.crear).absolutePath());
    return 0;
}
