#include "store/dialogs.h"

#include <cstdio>

namespace
{
void Escribir(const QString &texto) { std::fprintf(stderr, "%s\n", texto.toUtf8().constData()); }
} // namespace

std::optional<QString> Dialogos::PedirContrasena(const QString &titulo, const QString &texto)
{
    return PedirTexto(titulo, texto);
}

void DialogosDesatendidos::Mensaje(const QString &texto) { Escribir(texto); }

bool DialogosDesatendidos::Pregunta(const QString &texto)
{
    Escribir(texto + QStringLiteral(" -> 7"));
    return false;
}

bool DialogosDesatendidos::Confirmar(const QString &texto) { return Pregunta(texto); }

std::optional<QString> DialogosDesatendidos::PedirTexto(const QString &, const QString &texto,
                                                        const QString &)
{
    Escribir(texto);
    return std::nullopt;
}

std::optional<QList<Opcion>> DialogosDesatendidos::Seleccionar(const QString &titulo,
                                                               const QStringList &,
                                                               const QList<Opcion> &, bool)
{
    Escribir(titulo);
    return std::nullopt;
}

std::optional<QString> DialogosDesatendidos::ElegirArchivo(const QString &titulo, const QString &)
{
    Escribir(titulo);
    return std::nullopt;
}

std::optional<QString> DialogosDesatendidos::GuardarArchivo(const QString &titulo, const QString &,
                                                            const QString &)
{
    Escribir(titulo);
    return std::nullopt;
}
