#include "support/clinic.h"

#include "printing/document.h"
#include "startup/new_folder.h"
#include "store/schema.h"

#include <QDir>
#include <QFile>
#include <algorithm>

namespace
{

// Making the five files derives a key for each; once is enough for a test program.
const QString &Modelo()
{
    static const QTemporaryDir carpeta;
    static const QString ruta = [] {
        const QString r = carpeta.path() + QStringLiteral("/modelo");
        CrearCarpeta(r, Idioma::Ingles);
        return r;
    }();
    return ruta;
}

void Copiar(const QString &desde, const QString &hasta)
{
    QDir(hasta).mkpath(QStringLiteral("reportes"));
    for (const QString &base : BasesDeDatos())
        ASSERT_TRUE(QFile::copy(RutaBajo(desde, ArchivoDe(base)), hasta + u'/' + ArchivoDe(base)));
}

} // namespace

DialogosDePrueba::~DialogosDePrueba()
{
    for (const Prompt &p : m_esperados)
        Falta(QStringLiteral("never asked: ") + p.parte);
}

void DialogosDePrueba::Falta(const QString &que)
{
    if (faltas)
        *faltas << que;
    else
        ADD_FAILURE() << que.toStdString();
}

void DialogosDePrueba::Espera(const QString &parte, bool respuesta)
{
    m_esperados.push_back({parte, respuesta, std::nullopt, std::nullopt});
}

void DialogosDePrueba::EsperaTexto(const QString &parte, std::optional<QString> respuesta)
{
    m_esperados.push_back({parte, true, std::move(respuesta), std::nullopt});
}

void DialogosDePrueba::EsperaSeleccion(const QString &parte, std::optional<QList<int>> filas)
{
    m_esperados.push_back({parte, true, std::nullopt, std::move(filas)});
}

DialogosDePrueba::Prompt DialogosDePrueba::Siguiente(const QString &texto)
{
    if (m_esperados.empty()) {
        Falta(QStringLiteral("not expected: ") + texto);
        return {.parte = {}, .si = false, .texto = {}, .filas = {}};
    }
    const Prompt p = m_esperados.front();
    m_esperados.pop_front();
    if (!texto.contains(p.parte))
        Falta(QStringLiteral("expected '%1', got '%2'").arg(p.parte, texto));
    return p;
}

void DialogosDePrueba::Mensaje(const QString &texto) { Siguiente(texto); }
bool DialogosDePrueba::Pregunta(const QString &texto)
{
    if (std::ranges::any_of(siempreNo, [&](const QString &p) { return texto.contains(p); }))
        return false;
    return Siguiente(texto).si;
}

bool DialogosDePrueba::Confirmar(const QString &texto) { return Siguiente(texto).si; }

std::optional<QString> DialogosDePrueba::PedirTexto(const QString &, const QString &texto,
                                                    const QString &)
{
    return Siguiente(texto).texto;
}

std::optional<QList<Opcion>> DialogosDePrueba::Seleccionar(const QString &titulo,
                                                           const QStringList &,
                                                           const QList<Opcion> &opciones, bool)
{
    const auto filas = Siguiente(titulo).filas;
    if (!filas)
        return std::nullopt;
    QList<Opcion> elegidas;
    for (int f : *filas)
        elegidas << opciones.value(f);
    return elegidas;
}

std::optional<QString> DialogosDePrueba::ElegirArchivo(const QString &titulo, const QString &)
{
    return Siguiente(titulo).texto;
}

std::optional<QString> DialogosDePrueba::GuardarArchivo(const QString &titulo, const QString &,
                                                        const QString &)
{
    return Siguiente(titulo).texto;
}

void ImpresionDePrueba::Imprimir(Sesion &, Documento &documento) { impresos << documento.Titulo(); }

Clinica::Clinica(Idioma idioma) : s(ask, impresion, idioma)
{
    s.reloj.hoy = hoy;
    s.reloj.ahora = [this] { return QDateTime(s.reloj.hoy, QTime(9, 0)); };
    s.usuario = {1, 2, QStringLiteral("Ana")};
    Copiar(Modelo(), carpeta.path());
    FijarCarpetaDeDatos(s, carpeta.path());
    if (const auto falla = AbrirAlmacen(s))
        ADD_FAILURE() << falla->texto.toStdString();
}

Clinica::~Clinica() = default;

void Clinica::Reabrir()
{
    s.listas = {};
    s.configuracion = {};
    s.auxiliar.reset();
    s.morvane.reset();
    s.clientes.reset();
    s.finanzas.reset();
    s.motor.reset();
    if (const auto falla = AbrirAlmacen(s))
        ADD_FAILURE() << falla->texto.toStdString();
}

QString Filas(Base &base, std::string_view sql)
{
    QString t;
    Recordset r = base.OpenSnapshot(sql);
    for (; !r.EOF_(); r.MoveNext()) {
        for (int c = 0; c < r.Columnas(); ++c)
            t += (c ? QStringLiteral("|") : QString()) + r[c].toText();
        t += u'\n';
    }
    return t;
}
