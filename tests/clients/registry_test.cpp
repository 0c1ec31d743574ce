#include "clients/client_rows.h"
#include "clients/photos.h"
#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "support/clinic.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <QFile>
#include <QImage>
#include <thread>

using namespace clients;
using namespace Qt::StringLiterals;

class Registry : public Clinic
{
protected:
    static ClientRecord Client(const QString &ayn, const QString &tel2 = {})
    {
        ClientRecord f;
        f.ayn = ayn;
        f.tel2 = tel2;
        return f;
    }
    int newId(const QString &ayn) { return addClient(s, Client(ayn)).id; }
    int newId(const PatientRecord &f) { return addPatient(s, f, true).id; }
    QString Clientes(const char *columns)
    {
        return allRows(*s.clientes, "select " + std::string(columns) + " from clientes");
    }
    QString regions() { return allRows(*s.clientes, "select nom, ran from cldepartamento"); }
    static PatientRecord Patient(const QString &nom, int idc)
    {
        PatientRecord f;
        f.idc = idc;
        f.nom = nom;
        f.esp = 2;
        f.breed = u"Siamés"_s;
        f.fecn = QDate(2020, 2, 29);
        f.pes = 3.5;
        f.service = true;
        return f;
    }
    QString counters()
    {
        return allRows(*s.morvane, "select contadorclientes, contadormascotas, contadordep, "
                                   "contadorloc, contadorraza from configuracion");
    }
};

TEST_F(Registry, ANewClientComesWithItsPlacesAndItsRowOfEvents)
{
    const int next = nextClient(s);
    ClientRecord f = Client(u" D'Ávila, José [hijo] "_s, u"422"_s);
    f.region = u"Canelones"_s;
    f.codt2 = u"0433"_s;
    f.subregion = u"z6"_s;
    f.codp2 = u"91000"_s;
    f.obs = u"0341"_s;
    f.deuda = true; // only the counter sets this, so a new client starts without
    const Addition addition = addClient(s, f);
    ASSERT_EQ(addition.id, next);
    EXPECT_FALSE(addition.rejection);
    EXPECT_EQ(nextClient(s), next + 1);
    EXPECT_EQ(Clientes("ayn, tel2, feci, fecu, deuda, obra, codp2, codt2, obs"),
              u"D'Ávila, José [hijo]|422|2026-03-11|2026-03-11|0|0|91000|0433|0341\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select idc, buenascompras from perfiles"),
              u"%1|0\n"_s.arg(next));
    EXPECT_EQ(regions(), u"Canelones|1\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom, cp, ran from cllocalidad"), u"z6|91000|1\n"_s);
    const auto loaded = readClient(s, next);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->region + u'/' + loaded->subregion, u"Canelones/z6"_s);
}

TEST_F(Registry, ChecksStandBeforeAnythingIsWritten)
{
    const QString before = counters();
    const struct {
        QString ayn, region, subregion;
        int text;
        Field field;
    } cases[] = {
        {u"  "_s, u"1"_s, u"1"_s, 2259, Field::Name},
        {u"123"_s, {}, {}, 31, Field::Name},
        {u"Ana"_s, u"1-2"_s, u"5"_s, 31, Field::Region},
        {u"Ana"_s, u"z4"_s, u"(5)"_s, 31, Field::Subregion},
    };
    for (const auto &c : cases) {
        ClientRecord f = Client(c.ayn);
        f.region = c.region;
        f.subregion = c.subregion;
        ask.wait(s(c.text));
        const Addition addition = addClient(s, f);
        EXPECT_EQ(addition.id, 0);
        EXPECT_TRUE(addition.rejection && addition.rejection->field == c.field);
        ask.wait(s(c.text));
        EXPECT_TRUE(modifyClient(s, f));
    }
    EXPECT_EQ(counters(), before);
    EXPECT_EQ(Clientes("idc") + regions(), QString());
}

TEST_F(Registry, ATelephoneThatIsThereIsAskedAboutOnce)
{
    const int ana = addClient(s, Client(u"Ana"_s, u"422*"_s)).id;
    newId(u"Eva"_s); // no telephone, no question
    newId(u"Eva"_s);

    ask.wait(u"Found: Ana, with telephone: 422*. Please check"_s, false);
    const Addition left = addClient(s, Client(u"Ana B"_s, u" 422* "_s));
    EXPECT_EQ(left.existing, ana);
    EXPECT_EQ(left.id, 0);
    EXPECT_EQ(Clientes("count(*)"), u"3\n"_s);

    ask.wait(u"Found: Ana"_s, true);
    const Addition taken = addClient(s, Client(u"Ana B"_s, u"422*"_s));
    EXPECT_EQ(taken.id, ana + 3);
    EXPECT_EQ(taken.existing, 0);
    // The telephone is no pattern, and changing a client does not ask.
    EXPECT_EQ(addClient(s, Client(u"Otra"_s, u"*"_s)).id, ana + 4);
    ClientRecord f = *readClient(s, ana + 4);
    f.tel2 = u"422*"_s;
    EXPECT_FALSE(modifyClient(s, f));
}

TEST_F(Registry, AChangeKeepsDaysAndDebtAndTellsWhenTheClientIsGone)
{
    const int idc = newId(u"Ana"_s);
    s.clientes->Execute("update clientes set feci = '2020-01-01', fecu = '2021-01-01', deuda = -1, "
                        "obra = 3, faltadir = -1, faltamail = -1");
    ClientRecord f = *readClient(s, idc);
    f.ayn = u"Ana María"_s;
    f.email = u"ana@vet.example"_s;
    f.deuda = false;
    EXPECT_FALSE(modifyClient(s, f));
    const char *state = "ayn, feci, fecu, deuda, obra, faltadir, faltamail";
    EXPECT_EQ(Clientes(state), u"Ana María|2020-01-01|2021-01-01|-1|3|-1|0\n"_s);
    f.codp2 = u"11300"_s; // letters can be sent now
    EXPECT_FALSE(modifyClient(s, f));
    EXPECT_EQ(Clientes(state), u"Ana María|2020-01-01|2021-01-01|-1|3|0|0\n"_s);

    s.clientes->Execute("delete * from clientes");
    f.region = u"Nueva"_s;
    ask.wait(s(text::ClientIsGone));
    EXPECT_TRUE(modifyClient(s, f));
    EXPECT_EQ(regions(), QString());
}

TEST_F(Registry, WhenIdentifiersAreUsedUpNothingIsWritten)
{
    s.morvane->Execute("update configuracion set contadorclientes = 32766, contadordep = 32767");
    ClientRecord f = Client(u"Ana"_s);
    f.region = u"Canelones"_s;
    const QString before = counters();
    try {
        addClient(s, f);
        ADD_FAILURE() << "no refusal";
    } catch (const store::StoreError &e) {
        EXPECT_EQ(e.description, s(text::UnableToPerform));
    }
    EXPECT_EQ(counters(), before);
    EXPECT_EQ(newId(u"Ana"_s), 32767);
    EXPECT_THROW(newId(u"Eva"_s), store::StoreError);
    EXPECT_EQ(Clientes("idc, ayn"), u"32767|Ana\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select idc from perfiles"), u"32767\n"_s);
}

TEST_F(Registry, TwoTerminalsAddingAtOnceNeverShareAnIdentifier)
{
    constexpr int ByTerminal = 20;
    TestDialogs ask2;
    Sesion other(ask2, impresion, store::Language::English);
    other.reloj = s.reloj;
    store::setDataFolder(other, folder.path());
    ASSERT_FALSE(store::openStore(other));
    const auto add = [](Sesion &session, const QString &who) {
        for (int i = 0; i < ByTerminal; ++i) {
            ClientRecord f = Client(who + QString::number(i));
            f.region = u"Canelones"_s;
            addClient(session, f);
        }
    };
    std::thread terminal([&] { add(other, u"Eva"_s); });
    add(s, u"Ana"_s);
    terminal.join();
    EXPECT_EQ(Clientes("count(*), min(idc), max(idc)"), u"40|1|40\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select count(*) from clientes where ayn like 'Eva*'"),
              u"20\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select count(*) from perfiles"), u"40\n"_s);
    EXPECT_EQ(regions(), u"Canelones|40\n"_s);
    EXPECT_EQ(clientsRows(s).size(), clientsRows(other).size());
}

TEST_F(Registry, ANewPatientComesWithItsBreed)
{
    const int idc = newId(u"Ana"_s);
    const int next = nextPatient(s);
    PatientRecord f = Patient(u"Ñato"_s, idc);
    f.fot = true; // a photograph is taken later
    EXPECT_EQ(addPatient(s, f, true).id, next);
    EXPECT_EQ(allRows(*s.clientes,
                      "select idc, nom, esp, fecn, pes, ser, feci, fot, dec, tarea, hos "
                      "from mascotas"),
              u"%1|Ñato|2|2020-02-29|3.5|1|2026-03-11|0|0|0|0\n"_s.arg(idc));
    EXPECT_EQ(allRows(*s.clientes, "select nom, esp, ran from mlrazas where nom = 'Siamés'"),
              u"Siamés|2|1\n"_s);
    EXPECT_EQ(readPatient(s, next)->breed, u"Siamés"_s);

    const auto rejected = [&](int text, bool understoodDate = true) {
        ask.wait(s(text));
        return addPatient(s, f, understoodDate).rejection->field;
    };
    f.nom = u"7"_s;
    EXPECT_EQ(rejected(31), Field::Name);
    f.nom = QString();
    EXPECT_EQ(rejected(2259), Field::Name);
    f.nom = u"Nata"_s;
    EXPECT_EQ(rejected(5057, false), Field::Birth);
    f.fecn = hoy.addDays(1); // not born yet
    EXPECT_EQ(rejected(5057), Field::Birth);
    f.fecn = hoy;
    for (const int none : {0, 99}) { // deleted in the meantime
        f.idc = none;
        EXPECT_EQ(rejected(9420), Field::Client);
    }
    EXPECT_EQ(nextPatient(s), next + 1);
}

TEST_F(Registry, AChangeWritesThreeSpeciesOnly)
{
    const int idc = newId(u"Ana"_s);
    const int idm = newId(Patient(u"Nata"_s, idc));
    PatientRecord f = *readPatient(s, idm);
    const auto species = [&](const QString &name) {
        f.esp = 9;
        EXPECT_FALSE(modifyPatient(s, f, name, true));
        return readPatient(s, idm)->esp;
    };
    EXPECT_EQ(species(u"Canino"_s), 1);
    EXPECT_EQ(species(u"Conejo"_s), 1); // On purpose: any other name changes nothing
    EXPECT_EQ(species(QString()), 1);
    EXPECT_EQ(species(u"Equino"_s), 3);
    EXPECT_EQ(species(u"Felino"_s), 2);

    f.fecn = {};
    f.dec = true;
    EXPECT_FALSE(modifyPatient(s, f, QString(), true));
    EXPECT_EQ(allRows(*s.clientes, "select fecn, dec, feci from mascotas"), u"|-1|2026-03-11\n"_s);
    f.idm = 99;
    ask.wait(s(text::PatientIsGone));
    EXPECT_TRUE(modifyPatient(s, f, QString(), true));
}

TEST_F(Registry, TheGridStandsByNameAndMarksWhoNeedsAttention)
{
    const struct {
        const char16_t *ayn;
        bool deuda;
        int obra;
        bool faltadir, faltamail;
    } cases[] = {
        {u"zeta", true, 5, false, true},   {u"Álvarez", false, 2, true, false},
        {u"alba", false, 5, false, false}, {u"Nuñez", false, 0, true, false},
        {u"Núñez", false, 4, false, true}, {u"andrea", false, 3, false, false},
    };
    int idc = 0;
    for (const auto &c : cases)
        s.clientes->Execute("insert into clientes (idc, ayn, deuda, obra, faltadir, faltamail) "
                            "values (?, ?, ?, ?, ?, ?)",
                            ++idc, c.ayn, c.deuda, c.obra, c.faltadir, c.faltamail);
    s.clientes->Execute("insert into clientes (idc) values (7)"); // no name at all
    QString grid;
    for (const ClientRow &f : clientsRows(s)) {
        grid += f.ayn + QString::number(int(f.sign)) + u' ';
        EXPECT_EQ(clientRow(s, f.idc)->sign, f.sign);
    }
    EXPECT_EQ(grid, u"0 alba2 Álvarez1 andrea0 Nuñez2 Núñez2 zeta1 "_s);
    EXPECT_FALSE(clientRow(s, 99));
}

TEST_F(Registry, PatientsAreFoundByTheBeginningOfTheirNameAndStandByOwner)
{
    const int zoe = newId(u"Zoe"_s);
    const int ana = newId(u"ana"_s);
    for (const char16_t *nom : {u"Luna", u"*Sol", u"Lu'z"})
        newId(Patient(QString::fromUtf16(nom), zoe));
    newId(Patient(u"LUNÁTICA"_s, ana));
    const auto found = [&](const QString &text) {
        QString t;
        for (const FoundPatient &p : findPatients(s, text))
            t += p.patient + u'/' + p.owner + u' ';
        return t;
    };
    EXPECT_EQ(found(u"lu"_s), u"LUNÁTICA/ana Lu'z/Zoe Luna/Zoe "_s);
    EXPECT_EQ(found(u"lu'"_s), u"Lu'z/Zoe "_s);
    EXPECT_EQ(found(u"*s"_s), u"*Sol/Zoe "_s);
    EXPECT_EQ(found(u"l*a"_s), u"LUNÁTICA/ana Luna/Zoe "_s);
    for (const QString &nothing : {u"lun?"_s, u"una"_s, u" "_s})
        EXPECT_EQ(found(nothing), QString()) << nothing.toStdString();

    s.clientes->Execute("update mascotas set raz = 0, dec = -1 where nom = 'Luna'");
    QString grid;
    for (const PatientRow &f : patientsRows(s, zoe))
        grid += f.nom + u'/' + f.species + u'/' + f.breed + (f.dec ? u"+ "_s : u" "_s);
    EXPECT_EQ(grid, u"*Sol/Felino/Siamés Lu'z/Felino/Siamés Luna/Felino/+ "_s);
}

TEST_F(Registry, APhotographIsKeptSmallAndAFailedOneLeavesTheFormer)
{
    const int idc = newId(u"Ana"_s);
    const int idm = newId(Patient(u"Nata"_s, idc));
    QImage large(3200, 800, QImage::Format_ARGB32);
    large.fill(Qt::red);
    savePhoto(s, idm, large);
    EXPECT_TRUE(readPatient(s, idm)->fot);
    EXPECT_EQ(QImage(photoFile(s, idm)).size(), QSize(800, 200));

    EXPECT_THROW(savePhoto(s, idm, QImage()), store::StoreError);
    EXPECT_EQ(QImage(photoFile(s, idm)).size(), QSize(800, 200));
    removePhoto(s, idm);
    EXPECT_THROW(savePhoto(s, idm, QImage()), store::StoreError);
    EXPECT_FALSE(readPatient(s, idm)->fot);
    EXPECT_FALSE(QFile::exists(photoFile(s, idm)));
}
