#include "store/texts.h"

#include <QDir>
#include <QFile>
#include <array>
#include <stdexcept>

namespace
{

constexpr std::array<QStringView, 3> Codigos{u"es", u"pt", u"en"};

// Reads "..." with its escapes. @return nullopt when the quotes or an escape are wrong
std::optional<QString> EntreComillas(QStringView t)
{
    if (t.size() < 2 || !t.startsWith(u'"') || !t.endsWith(u'"'))
        return std::nullopt;
    t = t.sliced(1, t.size() - 2);
    QString s;
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (t[i] == u'"')
            return std::nullopt;
        if (t[i] != u'\\') {
            s += t[i];
            continue;
        }
        if (++i >= t.size())
            return std::nullopt;
        if (t[i] == u'n')
            s += u'\n';
        else if (t[i] == u'"' || t[i] == u'\\')
            s += t[i];
        else
            return std::nullopt;
    }
    return s;
}

bool Blanco(const QString &s, bool alFinal)
{
    return !s.isEmpty() && (alFinal ? s.back() : s.front()).isSpace();
}

void Comprobar(int numero, const QStringList &textos, QStringList &errores)
{
    for (size_t i = 0; i < Codigos.size(); ++i)
        if (textos.value(qsizetype(i)).isEmpty())
            errores << QStringLiteral("%1: no text in %2").arg(numero).arg(Codigos[i]);
    for (const bool alFinal : {false, true})
        for (const QString &t : textos)
            if (Blanco(t, alFinal) != Blanco(textos.front(), alFinal)) {
                errores << QStringLiteral("%1: blanks at the ends differ").arg(numero);
                return;
            }
}

// The given texts and those of each subsystem make one table.
QString TablaEntera()
{
    QString tabla;
    for (const QString &nombre : QDir(QStringLiteral(":/strings")).entryList()) {
        QFile f(QStringLiteral(":/strings/") + nombre);
        if (!f.open(QIODevice::ReadOnly))
            throw std::runtime_error("the string table is missing");
        tabla += QString::fromUtf8(f.readAll()) + u'\n';
    }
    return tabla;
}

} // namespace

Idioma IdiomaDeCodigo(const QString &codigo)
{
    if (codigo.startsWith(u"es", Qt::CaseInsensitive))
        return Idioma::Espanol;
    if (codigo.startsWith(u"pt", Qt::CaseInsensitive))
        return Idioma::Portugues;
    return Idioma::Ingles;
}

QString CodigoDeIdioma(Idioma idioma) { return Codigos[size_t(idioma)].toString(); }

Textos::Textos(Idioma idioma) : m_idioma(idioma)
{
    QStringList errores;
    const auto todos = Leer(TablaEntera(), &errores);
    if (!errores.isEmpty())
        throw std::runtime_error("string table: " + errores.front().toStdString());
    m_textos.reserve(todos.size());
    for (auto i = todos.begin(); i != todos.end(); ++i)
        m_textos.insert(i.key(), i.value().at(qsizetype(idioma)));
}

QString Textos::operator()(int numero) const
{
    const auto i = m_textos.find(numero);
    return i == m_textos.end() ? u'#' + QString::number(numero) : *i;
}

QHash<int, QStringList> Textos::Leer(const QString &tabla, QStringList *errores)
{
    QHash<int, QStringList> todos;
    int actual = 0;
    const QStringList lineas = tabla.split(u'\n');
    for (qsizetype n = 0; n < lineas.size(); ++n) {
        const QStringView linea = QStringView(lineas[n]).trimmed();
        if (linea.isEmpty() || linea.startsWith(u'#'))
            continue;
        bool esNumero = false;
        const int numero = linea.toInt(&esNumero);
        if (esNumero) {
            if (todos.contains(numero))
                *errores << QStringLiteral("%1: number twice").arg(numero);
            actual = numero;
            todos[actual] = QStringList{QString(), QString(), QString()};
            continue;
        }
        const auto codigo = std::find(Codigos.begin(), Codigos.end(), linea.left(2));
        const auto texto = EntreComillas(linea.mid(2).trimmed());
        if (actual == 0 || codigo == Codigos.end() || !texto) {
            *errores << QStringLiteral("line %1 cannot be read").arg(n + 1);
            continue;
        }
        QString &lugar = todos[actual][codigo - Codigos.begin()];
        if (!lugar.isEmpty())
            *errores << QStringLiteral("%1: %2 twice").arg(actual).arg(*codigo);
        lugar = *texto;
    }
    for (auto i = todos.begin(); i != todos.end(); ++i)
        Comprobar(i.key(), i.value(), *errores);
    return todos;
}
