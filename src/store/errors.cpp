#include "store/errors.h"

ErrorDeAlmacen::ErrorDeAlmacen(int n, const QString &d, const QString &s)
    : std::runtime_error(QStringLiteral("%1: %2").arg(n).arg(d).toStdString()),
      numero(n),
      descripcion(d),
      sentencia(s)
{
}

bool ErrorDeAlmacen::EsDelMedio() const
{
    switch (numero) {
    case ErrorNum::SinMemoria:
    case ErrorNum::DiscoLleno:
    case ErrorNum::SoloLectura:
    case ErrorNum::RutaODisco:
    case ErrorNum::BaseDanada:
    case ErrorNum::Bloqueada:
        return true;
    default:
        return false;
    }
}
