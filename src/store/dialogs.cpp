#include "store/dialogs.h"

#include <cstdio>

using namespace store;

namespace
{
void write(const QString &text) { std::fprintf(stderr, "%s\n", text.toUtf8().constData()); }
} // namespace

std::optional<QString> Dialogos::askPassword(const QString &title, const QString &text)
{
    return PedirTexto(title, text);
}

void UnattendedDialogs::Mensaje(const QString &text) { write(text); }

bool UnattendedDialogs::Pregunta(const QString &text)
{
    write(text + QStringLiteral(" -> 7"));
    return false;
}

bool UnattendedDialogs::confirm(const QString &text) { return Pregunta(text); }

std::optional<QString> UnattendedDialogs::PedirTexto(const QString &, const QString &text,
                                                     const QString &)
{
    write(text);
    return std::nullopt;
}

std::optional<QList<Option>> UnattendedDialogs::Seleccionar(const QString &title,
                                                            const QStringList &,
                                                            const QList<Option> &, bool)
{
    write(title);
    return std::nullopt;
}

std::optional<QString> UnattendedDialogs::ElegirArchivo(const QString &title, const QString &)
{
    write(title);
    return std::nullopt;
}

std::optional<QString> UnattendedDialogs::saveFile(const QString &title, const QString &,
                                                   const QString &)
{
    write(title);
    return std::nullopt;
}
