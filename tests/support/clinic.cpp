#include "support/clinic.h"

#include "support/server_engine.h"

#include "printing/document.h"
#include "startup/new_folder.h"
#include "store/schema.h"

#include <QDir>
#include <QFile>
#include <algorithm>

namespace
{

// Making the five files derives a key for each; once is enough for a test program.
const QString &gridModel()
{
    static const QTemporaryDir folder;
    static const QString ruta = [] {
        const QString r = folder.path() + QStringLiteral("/modelo");
        startup::createFolder(r, store::Language::English);
        return r;
    }();
    return ruta;
}

void copy(const QString &from, const QString &until)
{
    QDir(until).mkpath(QStringLiteral("reportes"));
    for (const QString &base : store::databases())
        ASSERT_TRUE(QFile::copy(store::pathUnder(from, store::fileOf(base)),
                                until + u'/' + store::fileOf(base)));
}

} // namespace

TestDialogs::~TestDialogs()
{
    for (const Prompt &p : m_expected)
        Missing(QStringLiteral("never asked: ") + p.part);
}

void TestDialogs::Missing(const QString &que)
{
    if (faults)
        *faults << que;
    else
        ADD_FAILURE() << que.toStdString();
}

void TestDialogs::wait(const QString &part, bool answer)
{
    m_expected.push_back({part, answer, std::nullopt, std::nullopt});
}

void TestDialogs::expectText(const QString &part, std::optional<QString> answer)
{
    m_expected.push_back({part, true, std::move(answer), std::nullopt});
}

void TestDialogs::expectSelection(const QString &part, std::optional<QList<int>> rows)
{
    m_expected.push_back({part, true, std::nullopt, std::move(rows)});
}

TestDialogs::Prompt TestDialogs::nextOne(const QString &text)
{
    if (m_expected.empty()) {
        Missing(QStringLiteral("not expected: ") + text);
        return {.part = {}, .si = false, .text = {}, .rows = {}};
    }
    const Prompt p = m_expected.front();
    m_expected.pop_front();
    if (!text.contains(p.part))
        Missing(QStringLiteral("expected '%1', got '%2'").arg(p.part, text));
    return p;
}

void TestDialogs::Mensaje(const QString &text) { nextOne(text); }
bool TestDialogs::Pregunta(const QString &text)
{
    if (std::ranges::any_of(alwaysNo, [&](const QString &p) { return text.contains(p); }))
        return false;
    return nextOne(text).si;
}

bool TestDialogs::confirm(const QString &text) { return nextOne(text).si; }

std::optional<QString> TestDialogs::PedirTexto(const QString &, const QString &text,
                                               const QString &)
{
    return nextOne(text).text;
}

std::optional<QList<store::Option>> TestDialogs::Seleccionar(const QString &title,
                                                             const QStringList &,
                                                             const QList<store::Option> &options,
                                                             bool)
{
    const auto rows = nextOne(title).rows;
    if (!rows)
        return std::nullopt;
    QList<store::Option> chosen;
    for (int f : *rows)
        chosen << options.value(f);
    return chosen;
}

std::optional<QString> TestDialogs::ElegirArchivo(const QString &title, const QString &)
{
    return nextOne(title).text;
}

std::optional<QString> TestDialogs::saveFile(const QString &title, const QString &, const QString &)
{
    return nextOne(title).text;
}

void TestPrinting::print(Sesion &, Documento &document) { printed << document.titleOf(); }

Clinic::Clinic(store::Language language) : s(ask, impresion, language)
{
    s.reloj.hoy = hoy;
    s.reloj.now = [this] { return QDateTime(s.reloj.hoy, QTime(9, 0)); };
    s.user = {1, 2, QStringLiteral("Ana")};
    // All rules hold on a server too: the tests are run a second time with it.
    if (onServer())
        s.createEngine = createServerEngine;
    copy(gridModel(), folder.path());
    store::setDataFolder(s, folder.path());
    if (const auto failure = store::openStore(s))
        ADD_FAILURE() << failure->text.toStdString();
}

Clinic::~Clinic() = default;

void Clinic::reopen()
{
    if (const auto failure = store::openStore(s))
        ADD_FAILURE() << failure->text.toStdString();
}

QString allRows(Base &base, std::string_view sql)
{
    QString t;
    Recordset r = base.OpenSnapshot(sql);
    for (; !r.EOF_(); r.MoveNext()) {
        for (int c = 0; c < r.allColumns(); ++c)
            t += (c ? QStringLiteral("|") : QString()) + r[c].toText();
        t += u'\n';
    }
    return t;
}
