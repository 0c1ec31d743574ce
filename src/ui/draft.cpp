#include "ui/draft.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

using namespace ui;
using namespace Qt::StringLiterals;

Draft::Draft(const Sesion &s, const QString &form)
{
    // Without a program folder there is no file to write to.
    if (s.programFolder.isEmpty())
        return;
    const QByteArray folder =
        QCryptographicHash::hash(s.dataFolder.toUtf8(), QCryptographicHash::Sha1);
    m_file = s.programFolder
             + u"borrador-%1-%2.json"_s.arg(form, QString::fromLatin1(folder.toHex().left(16)));
}

void Draft::save(const QVariantMap &fields) const
{
    if (m_file.isEmpty())
        return;
    QSaveFile file(m_file);
    if (!file.open(QIODevice::WriteOnly)
        || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return;
    file.write(QJsonDocument(QJsonObject::fromVariantMap(fields)).toJson());
    if (file.flush()) // commit() does not check whether the buffered data can be written
        file.commit();
}

QVariantMap Draft::read() const
{
    QFile file(m_file);
    if (m_file.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object().toVariantMap();
}

void Draft::clear() const
{
    if (!m_file.isEmpty())
        QFile::remove(m_file);
}
