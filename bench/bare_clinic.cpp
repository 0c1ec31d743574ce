#include "bare_clinic.h"

#include "store/texts.h"
#include "texts/texts.h"

#include <QFile>
#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace
{

// As the store opens its files.
constexpr const char *keyOf = "korvi3namuspeltiraxo";
constexpr int FirstAppointment = 8 * 60 + 30, LastAppointment = 22 * 60, Nearness = 5;

std::string isoDay(QDate d) { return d.toString(Qt::ISODate).toStdString(); }

// Open doses of the category that were due earlier; `a` is the dose.
const std::string Late =
    "(SELECT count(*) FROM clientes.ArtPlan b WHERE b.idm = a.idm AND b.IdCat = a.IdCat AND b.rep "
    "< :hoy AND b.si IN (0, 2) AND (b.rep < a.rep OR (b.rep = a.rep AND b.rowid < a.rowid)))";
// Description of a booked task: category and product.
const std::string Reason = "(SELECT nom FROM finanzas.FLCategorias f WHERE f.idcat = t.IdCat) || ' "
                           "- ' || (SELECT nom FROM finanzas.Articulos p WHERE p.ida = t.ida)";
const std::string Service =
    "(SELECT coalesce(idserv, 0) FROM finanzas.FLCategorias f WHERE f.idcat = t.IdCat)";

} // namespace

// --- The engine ------------------------------------------------------------------------------

BareBase::BareBase(const QString &folder)
{
    const QString ruta = folder + QStringLiteral("/morvane.mdb");
    if (sqlite3_open_v2(QFile::encodeName(ruta).constData(), &m_db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr)
        != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_db));
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_MAINDBNAME, "morvane");
    sqlite3_key(m_db, keyOf, int(std::strlen(keyOf)));
    run("PRAGMA cipher_page_size = 4096");
    run("PRAGMA cipher_default_page_size = 4096");
    run("PRAGMA temp_store = MEMORY");
    run("PRAGMA morvane.cache_size = -32768");
    run("PRAGMA morvane.secure_delete = OFF");
    run("SELECT count(*) FROM morvane.sqlite_master");
    attach(folder + QStringLiteral("/clientes.mdb"), "clientes", 65536);
    attach(folder + QStringLiteral("/finanzas.mdb"), "finanzas", 32768);
}

BareBase::~BareBase() { sqlite3_close_v2(m_db); }

void BareBase::attach(const QString &file, const char *schema, int kilobytes)
{
    const std::string name = schema;
    values[":archivo"] = file.toStdString();
    values[":clave"] = std::string(keyOf);
    run("ATTACH DATABASE :archivo AS " + name + " KEY :clave");
    run("PRAGMA " + name + ".cache_size = -" + std::to_string(kilobytes));
    run("PRAGMA " + name + ".secure_delete = OFF");
    run("SELECT count(*) FROM " + name + ".sqlite_master");
}

QStringList BareBase::allRows(const char *sql)
{
    QStringList rows;
    sqlite3_stmt *st = prepare(sql);
    while (sqlite3_step(st) == SQLITE_ROW) {
        QString row;
        for (int c = 0; c < sqlite3_column_count(st); ++c) {
            const auto *t = reinterpret_cast<const char *>(sqlite3_column_text(st, c));
            row += (t ? QString::fromUtf8(t) : QStringLiteral("NULL")) + u'|';
        }
        rows << row;
    }
    sqlite3_finalize(st);
    return rows;
}

sqlite3_stmt *BareBase::prepare(const std::string &sql)
{
    sqlite3_stmt *st = nullptr;
    if (sqlite3_prepare_v2(m_db, sql.data(), int(sql.size()), &st, nullptr) != SQLITE_OK)
        throw std::runtime_error(std::string(sqlite3_errmsg(m_db)) + ": " + sql);
    return st;
}

qint64 BareBase::run(const std::string &sql)
{
    sqlite3_stmt *st = prepare(sql);
    for (int i = 1; i <= sqlite3_bind_parameter_count(st); ++i) {
        const Datum &d = values.at(sqlite3_bind_parameter_name(st, i));
        if (const auto *n = std::get_if<qint64>(&d))
            sqlite3_bind_int64(st, i, *n);
        else
            sqlite3_bind_text(st, i, std::get<std::string>(d).c_str(), -1, SQLITE_TRANSIENT);
    }
    int r = sqlite3_step(st);
    const qint64 first = r == SQLITE_ROW ? sqlite3_column_int64(st, 0) : 0;
    while (r == SQLITE_ROW)
        r = sqlite3_step(st);
    sqlite3_finalize(st);
    if (r != SQLITE_DONE)
        throw std::runtime_error(std::string(sqlite3_errmsg(m_db)) + ": " + sql);
    return first;
}

// --- The pass --------------------------------------------------------------------------------

BarePass::BarePass(const QString &folder, QDate hoy, const store::Texts &texts)
    : m_folder(folder), m_base(folder), m_today(hoy)
{
    m_base.values[":descontinuada"] = texts(text::VaccinationDiscontinued).toStdString();
    m_base.values[":deuda"] = texts(text::DebtNotification).toStdString();
    m_base.values[":saludo"] = texts(text::GreetingsFrom).toStdString();
    sqlite3_create_function_v2(m_base.connection(), "hora_libre", 1, SQLITE_UTF8, this,
                               functionHour, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(m_base.connection(), "numero_de_tarea", 0, SQLITE_UTF8, this,
                               functionNumber, nullptr, nullptr, nullptr);
}

void BarePass::functionNumber(sqlite3_context *c, int, sqlite3_value **)
{
    sqlite3_result_int64(c, ++static_cast<BarePass *>(sqlite3_user_data(c))->m_lastTask);
}

void BarePass::functionHour(sqlite3_context *c, int, sqlite3_value **v)
{
    const int m = static_cast<BarePass *>(sqlite3_user_data(c))->freeHour(sqlite3_value_int(*v));
    const QString hour = QTime(m / 60, m % 60).toString(u"HH:mm:ss");
    sqlite3_result_text(c, hour.toLatin1().constData(), -1, SQLITE_TRANSIENT);
}

// Reads the booked hours once; the pass adds what it books itself.
void BarePass::readHours()
{
    m_busy.assign(24 * 60, 0);
    sqlite3_stmt *st = m_base.prepare(
        "WITH RECURSIVE h(hor) AS (SELECT min(hor) FROM TareasAgenda UNION ALL SELECT (SELECT "
        "min(hor) FROM TareasAgenda t WHERE t.hor > h.hor) FROM h WHERE h.hor IS NOT NULL) SELECT "
        "substr(hor, 1, 2) * 60 + substr(hor, 4, 2) FROM h WHERE hor IS NOT NULL");
    while (sqlite3_step(st) == SQLITE_ROW)
        m_busy[size_t(sqlite3_column_int(st, 0))] = 1;
    sqlite3_finalize(st);
    st = m_base.prepare("SELECT ida, tiempo FROM finanzas.Servicios");
    while (sqlite3_step(st) == SQLITE_ROW)
        m_duration[sqlite3_column_int(st, 0)] = sqlite3_column_int(st, 1);
    sqlite3_finalize(st);
    m_todayTasks = int(m_base.run("SELECT count(*) FROM TareasAgenda WHERE dia = :hoy"));
}

int BarePass::freeHour(int service)
{
    const auto duration = m_duration.find(service);
    const int step = duration == m_duration.end() ? 30 : duration->second;
    const auto near = [this](int m) {
        const auto from = m_busy.begin() + std::max(0, m - Nearness);
        const auto until = m_busy.begin() + std::min(24 * 60, m + Nearness + 1);
        return std::find(from, until, 1) != until;
    };
    int m = FirstAppointment;
    for (int i = 0; i < m_todayTasks && step > 0 && m < 24 * 60 && near(m); ++i)
        m += step;
    if (m > LastAppointment)
        m = FirstAppointment;
    m_busy[size_t(m)] = 1;
    ++m_todayTasks;
    return m;
}

void BarePass::insert(const std::string &task)
{
    m_base.run("INSERT INTO TareasAgenda (tip, ida, dia, hor, medio, fcreacion, artaux, des, "
               "id) "
               + task);
}

void BarePass::Pizarra(const std::string &numbers, int dibujo, int codigo1, int codigo2)
{
    m_base.values[":mensaje"] = numbers;
    m_base.run("INSERT INTO Pizarra (mensaje, dibujo, Codigo1, Codigo2) VALUES (:mensaje, "
               + std::to_string(dibujo) + ", " + std::to_string(codigo1) + ", "
               + std::to_string(codigo2) + ")");
}

namespace
{
std::string T(qint64 n) { return std::to_string(n); }
} // namespace

void BarePass::foods()
{
    m_base.run("UPDATE clientes.Consumo SET FaltaHoy = 0 WHERE FaltaHoy = -1");
    m_base.run(
        "CREATE TEMP TABLE falta AS SELECT c.rowid AS fila, c.idm, c.ida, c.IdCat, m.ser FROM "
        "clientes.Consumo c JOIN clientes.Mascotas m ON m.idm = c.idm WHERE c.can > 0 AND c.men = "
        "0 AND m.dec = 0 AND round(c.can - :dias * c.Con, 4) <= CASE WHEN c.IdCat <> 1 THEN 0 WHEN "
        "m.esp = 1 THEN (SELECT CASE WHEN m.pes <= 10 THEN detali1 WHEN m.pes <= 25 THEN detali2 "
        "ELSE detali3 END FROM Configuracion) ELSE coalesce((SELECT ali FROM clientes.MLEspecies e "
        "WHERE e.id = m.esp), 0) END");
    m_base.run("UPDATE clientes.Consumo SET can = max(round(can - :dias * Con, 4), 0.0) WHERE "
               "can > 0 AND EXISTS (SELECT 1 FROM clientes.Mascotas m WHERE m.idm = Consumo.idm "
               "AND m.dec = 0)");
    m_base.run("UPDATE clientes.Consumo SET men = -1, FaltaHoy = -1 WHERE rowid IN (SELECT fila "
               "FROM falta)");
    insert("SELECT tip, idm, :hoy, hora_libre(tip), 4, :hoy, ida, des, numero_de_tarea() FROM "
           "(SELECT "
           + Service + " AS tip, t.idm, t.ida, " + Reason
           + " AS des FROM falta t WHERE ser > 0 ORDER BY fila)");
    insert("SELECT -41, idm, :hoy, NULL, 1, :hoy, ida, '', numero_de_tarea() FROM falta WHERE "
           "ser = 0 ORDER BY fila");
    const qint64 con = m_base.run("SELECT count(*) FROM falta WHERE ser > 0");
    const qint64 sin = m_base.run("SELECT count(*) FROM falta WHERE ser = 0");
    if (con > 0)
        Pizarra(T(con), 107, 2, 8);
    if (sin > 0)
        Pizarra(T(sin), 109, 1, 5);
    m_base.run("DROP TABLE falta");
}

void BarePass::missedDoses()
{
    m_base.run("CREATE TEMP TABLE perdidas AS SELECT a.idm, a.ida, a.dos, m.ser, m.nom, m.idc, "
               "CASE WHEN m.ser = 0 THEN "
               + Late
               + " END AS n FROM clientes.ArtPlan a JOIN clientes.Mascotas m ON m.idm = a.idm "
                 "WHERE a.si IN (0, 2) AND a.rep BETWEEN :desde0 AND :ayer AND m.dec = 0 ORDER "
                 "BY a.idm");
    const auto part = [](const std::string &what) {
        return "CASE WHEN coalesce(" + what + ", '') = '' THEN '' ELSE ', ' || " + what + " END";
    };
    m_base.run(
        "INSERT INTO rep97.auxrevacunacion (mas, vac, pro, dir, tel, dos) SELECT t.nom, (SELECT "
        "nom FROM finanzas.Articulos p WHERE p.ida = t.ida), c.ayn, substr("
        + part("c.dir") + " || " + part("l.nom") + " || " + part("d.nom") + " || "
        + part("'CP: ' || nullif(c.codp2, '')")
        + ", 3), coalesce(c.tel2, '') || CASE WHEN coalesce(c.tel2, '') = '' OR "
          "coalesce(c.telc2, '') = '' THEN '' ELSE ' / ' END || coalesce(c.telc2, ''), t.dos FROM "
          "perdidas t LEFT JOIN clientes.Clientes c ON c.idc = t.idc LEFT JOIN "
          "clientes.CLLocalidad l ON l.id = c.loc LEFT JOIN clientes.CLDepartamento d ON d.id = "
          "c.dep");
    const qint64 a = m_base.run("SELECT count(*) FROM perdidas WHERE n = 0");
    const qint64 b = m_base.run("SELECT count(*) FROM perdidas WHERE n = 1");
    const qint64 c = m_base.run("SELECT count(*) FROM perdidas WHERE ser <> 0");
    if (a > 0)
        Pizarra(T(a), 103, 6, 18);
    if (b > 0)
        Pizarra(T(b), 103, 14, 18);
    if (c > 0)
        Pizarra(T(c), 103, 7, 19);
    m_base.run("DROP TABLE perdidas");
}

void BarePass::dosesOfTheDay()
{
    m_base.run("CREATE TEMP TABLE dosis AS SELECT a.rep, a.si, a.rowid AS fila, a.idm, a.ida, "
               "a.IdCat, m.ser, CASE WHEN m.ser = 0 AND a.rep = :hoy THEN "
               + Late
               + " END AS n FROM clientes.ArtPlan a JOIN clientes.Mascotas m ON m.idm = a.idm "
                 "WHERE a.rep BETWEEN :desde1 AND :hoy AND a.si IN (0, 2) AND m.dec = 0 ORDER "
                 "BY a.rep, a.si, a.rowid");
    insert("SELECT tip, idm, :hoy, hora_libre(tip), 4, :hoy, ida, des, numero_de_tarea() FROM "
           "(SELECT "
           + Service + " AS tip, t.idm, t.ida, " + Reason
           + " AS des FROM dosis t WHERE ser > 0 ORDER BY t.rowid)");
    insert("SELECT -50, idm, NULL, NULL, 1, :hoy, ida, :descontinuada, numero_de_tarea() FROM "
           "dosis WHERE n = 1");
    const qint64 a = m_base.run("SELECT count(*) FROM dosis WHERE n = 0");
    const qint64 b = m_base.run("SELECT count(*) FROM dosis WHERE n > 0");
    const qint64 c = m_base.run("SELECT count(*) FROM dosis WHERE n = 1");
    const qint64 d = m_base.run("SELECT count(*) FROM dosis WHERE ser > 0");
    if (d > 0)
        Pizarra(T(d), 104, 4, 21);
    if (a > 0 && b > 0 && c > 0)
        Pizarra(T(a) + ' ' + T(b) + ' ' + T(c), 102, 3, 5);
    else if (a > 0 && b > 0)
        Pizarra(T(a) + ' ' + T(b), 102, 3, 20);
    else if (a > 0)
        Pizarra(T(a), 102, 3, 20);
    else if (b > 0)
        Pizarra(T(b) + (c > 0 ? ' ' + T(c) : ""), c > 0 ? 109 : 103, c > 0 ? 14 : 3,
                c > 0 ? 5 : 20);
    m_base.run("DROP TABLE dosis");
}

void BarePass::reminders()
{
    insert("SELECT -42, a.idm, NULL, NULL, 3, :hoy, a.ida, a.dos, numero_de_tarea() FROM "
           "clientes.ArtPlan a JOIN clientes.Mascotas m ON m.idm = a.idm WHERE a.rep BETWEEN "
           ":avisar1 AND :avisar2 AND a.si IN (0, 2) AND m.ser = 0 AND a.Ana = 0 AND m.dec = 0 "
           "AND "
           + Late + " = 0");
    if (const int n = sqlite3_changes(m_base.connection()))
        Pizarra(T(n), 109, 13, 5);
}

void BarePass::birthday()
{
    insert("SELECT CASE WHEN c.Perfil1 AND c.Perfil3 AND NOT c.Perfil2 THEN -51 ELSE -46 END, "
           "m.idm, NULL, NULL, CASE WHEN c.Perfil1 AND c.Perfil3 AND NOT c.Perfil2 THEN 1 ELSE 3 "
           "END, :hoy, 0, '', numero_de_tarea() FROM clientes.Mascotas m LEFT JOIN "
           "clientes.Clientes c ON c.idc = m.idc WHERE m.dec = 0 AND substr(m.fecn, 6, 5) = "
           "substr(:hoy, 6)");
    if (const int n = sqlite3_changes(m_base.connection()))
        Pizarra(T(n), 109, 12, 5);
}

void BarePass::debtors()
{
    m_base.run(
        "CREATE TEMP TABLE deudas AS SELECT fila, idc, men FROM (SELECT CtaCteC.rowid AS fila, "
        "idc, men, julianday(:hoy) - julianday(fecUltPago) - diasdeudores AS demas FROM "
        "finanzas.CtaCteC, (SELECT diasdeudores FROM Configuracion) WHERE Cancelado = 0 "
        "AND fecUltPago <= date(:hoy, -diasdeudores || ' days')) WHERE men IN (0, 3) OR "
        "(men = 1 AND demas >= 10) OR (men = 2 AND demas >= 20)");
    insert("SELECT -43, idc, :hoy, NULL, CASE WHEN men = 2 THEN 2 ELSE 3 END, :hoy, 0, "
           ":deuda, numero_de_tarea() FROM deudas WHERE men < 3");
    m_base.run("UPDATE finanzas.CtaCteC SET men = men + 1 WHERE rowid IN (SELECT fila FROM "
               "deudas)");
    m_base.run("UPDATE Perfiles SET deudasdemoradas = deudasdemoradas + (SELECT count(*) FROM "
               "deudas d WHERE d.idc = Perfiles.idc AND d.men = 0) WHERE idc IN (SELECT idc "
               "FROM deudas WHERE men = 0)");
    if (const qint64 n = m_base.run("SELECT count(*) FROM deudas WHERE men < 3"))
        Pizarra(T(n), 110, 15, 5);
    m_base.run("DROP TABLE deudas");
}

void BarePass::Boarding()
{
    m_base.run("DELETE FROM TareasAgenda WHERE tip = -47");
    m_base.run("CREATE TEMP TABLE vencidas AS SELECT h.idm, m.idc FROM clientes.MHospedaje h "
               "JOIN clientes.Mascotas m ON m.idm = h.idm WHERE h.fent < :hoy AND h.tip = 'r'");
    const qint64 expired = m_base.run("SELECT count(*) FROM vencidas");
    m_base.run("UPDATE clientes.Mascotas SET hos = 0 WHERE idm IN (SELECT idm FROM vencidas)");
    m_base.run("UPDATE Perfiles SET TurnosNoCumplidos = TurnosNoCumplidos + (SELECT count(*) "
               "FROM vencidas v WHERE v.idc = Perfiles.idc) WHERE idc IN (SELECT idc FROM "
               "vencidas)");
    m_base.run("DELETE FROM clientes.MHospedaje WHERE fent < :hoy AND tip = 'r'");
    m_base.run("DROP TABLE vencidas");
    if (expired > 0)
        Pizarra(T(expired), 108, 0, 0);
    const qint64 remaining =
        m_base.run("SELECT count(*) FROM clientes.MHospedaje WHERE tip = 'h' AND fsal >= :hoy");
    const qint64 over =
        m_base.run("SELECT count(*) FROM clientes.MHospedaje WHERE tip = 'h' AND fsal < :hoy");
    if (over > 0)
        Pizarra(T(remaining + over) + ' ' + T(over), 108, 9, 0);
    else if (remaining > 0)
        Pizarra(T(remaining), 108, 9, 0);
    if (remaining == 1)
        m_base.run("INSERT INTO TareasAgenda (tip, ida, dia, hor, ala, medio, fcreacion, "
                   "artaux, des, id) SELECT -47, 0, :hoy, hora, hora, 0, :hoy, 0, '', "
                   "numero_de_tarea() FROM (SELECT horaracion2 AS hora FROM Configuracion UNION "
                   "ALL SELECT horaracion1 FROM Configuracion)");
}

void BarePass::summary()
{
    if (const qint64 n = m_base.run("SELECT count(*) FROM TareasAgenda WHERE dia = :hoy AND est "
                                    "= 0 AND (tip > 0 OR tip = -47)"))
        Pizarra(T(n), 115, 8, 0);
    if (const qint64 n = m_base.run("SELECT count(*) FROM TareasAgenda WHERE fcreacion = :hoy "
                                    "AND est = 0 AND tip < 0 AND tip <> -47"))
        Pizarra(T(n), 106, 10, 0);
}

void BarePass::Appointments()
{
    m_base.run(
        "CREATE TEMP TABLE turnos AS SELECT m.idc AS idc, sum(t.est <> 0) AS si, sum(t.est = 0) "
        "AS no FROM TareasAgenda t JOIN clientes.Mascotas m ON m.idm = t.ida WHERE t.dia "
        "BETWEEN :desde1 AND :hoy AND t.tip > 0 GROUP BY m.idc");
    m_base.run("CREATE UNIQUE INDEX temp.turnos_idc ON turnos (idc)");
    m_base.run("UPDATE Perfiles SET TurnosCumplidos = TurnosCumplidos + (SELECT si FROM turnos "
               "WHERE turnos.idc = Perfiles.idc), TurnosNoCumplidos = TurnosNoCumplidos + "
               "(SELECT no FROM turnos WHERE turnos.idc = Perfiles.idc) WHERE idc IN (SELECT "
               "idc FROM turnos)");
    m_base.run("DROP TABLE turnos");
}

void BarePass::stock()
{
    if (m_base.run("SELECT 1 FROM finanzas.Articulos WHERE can < min LIMIT 1"))
        Pizarra("", 113, 17, 0);
    if (m_base.run("SELECT 1 FROM finanzas.ArtVenc v JOIN finanzas.Articulos a ON a.ida = v.ida "
                   "WHERE v.ven <= date(:hoy, '+30 days') LIMIT 1"))
        Pizarra("", 113, 31, 0);
}

void BarePass::newClients()
{
    insert("SELECT -71, c.idc, :hoy, NULL, 1, :hoy, 0, :saludo || ' ' || (SELECT nom FROM "
           "Veterinaria), numero_de_tarea() FROM "
           "clientes.Clientes c WHERE c.email <> '' AND c.feci BETWEEN date(:hoy, '-2 days') AND "
           ":hoy AND NOT EXISTS (SELECT 1 FROM TareasAgenda t WHERE t.tip = -71 AND t.ida = "
           "c.idc)");
    if (const int n = sqlite3_changes(m_base.connection()))
        Pizarra(T(n), 109, 10, 5);
}

void BarePass::run()
{
    m_lastTask = m_base.run("SELECT contadorTareas FROM Configuracion");
    sqlite3_stmt *st = m_base.prepare("SELECT FechaUltimoInicio FROM Configuracion");
    sqlite3_step(st);
    const QDate last = QDate::fromString(
        QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(st, 0))), Qt::ISODate);
    sqlite3_finalize(st);
    const qint64 leadTime = m_base.run("SELECT tiempovencimiento FROM Configuracion");
    m_base.values[":dias"] = last.daysTo(m_today);
    m_base.values[":hoy"] = isoDay(m_today);
    m_base.values[":ayer"] = isoDay(m_today.addDays(-1));
    m_base.values[":desde0"] = isoDay(last);
    m_base.values[":desde1"] = isoDay(last.addDays(1));
    m_base.values[":avisar1"] = isoDay(last.addDays(1 + leadTime));
    m_base.values[":avisar2"] = isoDay(m_today.addDays(leadTime));

    m_base.run("ATTACH DATABASE ':memory:' AS rep97 KEY ''");
    m_base.run("CREATE TABLE rep97.auxrevacunacion (mas, vac, pro, dir, tel, dos)");
    m_base.run("BEGIN IMMEDIATE");
    m_base.run("DELETE FROM Pizarra");
    readHours();
    foods();
    missedDoses();
    dosesOfTheDay();
    reminders();
    birthday();
    debtors();
    if (const qint64 n = m_base.run("SELECT count(*) FROM clientes.Mascotas WHERE int = -1"))
        Pizarra(T(n), 0, 0, 0);
    Boarding();
    m_base.run("SELECT dia, ala, tip, ida FROM TareasAgenda WHERE dia = :hoy AND est = 0 AND "
               "ala >= '09:00:00'");
    m_base.run("UPDATE clientes.Mascotas SET tarea = 0 WHERE tarea = -1 AND NOT EXISTS "
               "(SELECT 1 FROM TareasAgenda t WHERE t.ida = Mascotas.idm AND t.est = 0 AND "
               "t.tip > 0)");
    summary();
    Appointments();
    if (m_base.run("SELECT count(*) FROM TareasAgenda WHERE dia = :ayer AND est = 0 AND (tip > "
                   "0 OR tip = -47)"))
        Pizarra("", 115, 32, 0);
    m_base.run("DELETE FROM clientes.FichasVisitadas WHERE fec < date(:hoy, '-30 days')");
    stock();
    newClients();

    m_base.values[":contador"] = m_lastTask;
    m_base.run("UPDATE Configuracion SET FechaInicioAnterior = FechaUltimoInicio, "
               "FechaUltimoInicio = :hoy, contadorTareas = :contador");
    m_base.run("COMMIT");
}

QStringList BarePass::missed()
{
    return m_base.allRows("SELECT mas, vac, pro, dir, tel, dos FROM rep97.auxrevacunacion");
}
