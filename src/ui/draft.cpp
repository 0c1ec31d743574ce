#include "ui/draft.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

using namespace Qt::StringLiterals;

Borrador::Borrador(const Sesion &s, const QString &formulario)
{
    // Without a program folder nothing is kept: an unnamed file is never written.
    if (s.carpetaDePrograma.isEmpty())
        return;
    const QByteArray folder =
        QCryptographicHash::hash(s.carpetaDeDatos.toUtf8(), QCryptographicHash::Sha1);
    m_archivo =
        s.carpetaDePrograma
        + u"borrador-%1-%2.json"_s.arg(formulario, QString::fromLatin1(folder.toHex().left(16)));
}

void Borrador::Guardar(const QVariantMap &campos) const
{
    if (m_archivo.isEmpty())
        return;
    QSaveFile file(m_archivo);
    if (!file.open(QIODevice::WriteOnly)
        || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return;
    file.write(QJsonDocument(QJsonObject::fromVariantMap(campos)).toJson());
    if (file.flush()) // the commit does not look at what is still to be written
        file.commit();
}

QVariantMap Borrador::Leer() const
{
    QFile file(m_archivo);
    if (m_archivo.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object().toVariantMap();
}

void Borrador::Borrar() const
{
    if (!m_archivo.isEmpty())
        QFile::remove(m_archivo);
}
