#include "clients/panels.h"
#include "support/clinic.h"

#include <QLocale>

using namespace clients;
using namespace Qt::StringLiterals;

class Panels : public Clinic
{
protected:
    Panels()
    {
        QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
        s.clientes->Execute("insert into clientes (idc, ayn, fecu, perfil1, perfil3, perfil4) "
                            "values (1, 'Ana', '2026-03-01', -1, -1, -1)");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (5, 1, 'Luna')");
    }
    ~Panels() override { QLocale::setDefault(QLocale::c()); }
};

TEST_F(Panels, TheClientsPanelTellsVisitDebtsAndProfile)
{
    s.morvane->Execute("update configuracion set LeerPerfil = 0");
    EXPECT_EQ(clientInformation(s, 1), u"Last vst: 03/01/2026"_s);
    const struct {
        double saldo;
        QDate payment;
        int men;
        bool cancelado;
    } owes[] = {
        {1250.5, QDate(2026, 2, 28), 2, false},
        {99, QDate(2026, 3, 1), 1, true},
        {10, QDate(), 0, false},
    };
    for (const auto &d : owes)
        s.finanzas->Execute("insert into ctactec (idc, saldo, fecultpago, men, cancelado) values "
                            "(1, ?, ?, ?, ?)",
                            Moneda::round(d.saldo), d.payment, d.men, d.cancelado);
    s.morvane->Execute("update configuracion set LeerPerfil = -1");
    EXPECT_EQ(clientInformation(s, 1), uR"(Last vst: 03/01/2026
-----------------------------
Outstanding $1,250.50
Last payment made 02/28/2026 11 days.
Have issued 2 notices.
-----------------------------
Outstanding $10.00
No notices have been issued.
-----------------------------
Outstanding
Good buyer
Frequent
Sometimes forgets to attend appointments)"_s);
    EXPECT_EQ(clientInformation(s, 99), QString());
}

TEST_F(Panels, ThePatientsPanelTellsWhatAppliesInItsOrder)
{
    EXPECT_EQ(patientInformation(s, 5), QString());
    EXPECT_EQ(patientInformation(s, 99), QString());

    s.clientes->Execute("update mascotas set int = -1");
    s.finanzas->Execute("insert into articulos (ida, idcat, nom, uni) values (900, 2, 'Surgery', "
                        "'u')");
    const struct {
        int tip, days;
        bool est;
    } tasks[] = {
        {900, 2, false}, {900, 0, false}, {900, -1, false}, {900, 1, true}, {-42, 1, false}};
    int id = 0;
    for (const auto &t : tasks)
        s.morvane->Execute("insert into TareasAgenda (id, tip, ida, dia, hor, des, est) values "
                           "(?, ?, 5, ?, ?, 'knee', ?)",
                           ++id, t.tip, hoy.addDays(t.days), t.days ? QTime(9, 30) : QTime(),
                           t.est);
    s.clientes->Execute("insert into mhospedaje (idm, tip, fent, fsal) values (5, 'h', ?, ?)",
                        hoy.addDays(-1), hoy.addDays(3));
    s.clientes->Execute("insert into mclinica (idclinica, idm, fec, cli) values (1, 5, ?, 'Old')",
                        hoy.addDays(-30));
    s.clientes->Execute("insert into mclinica (idclinica, idm, fec, cli) values (2, 5, ?, ?)",
                        hoy.addDays(-8), u"Limps.\nLeft knee. "_s + QString(300, u'x'));
    s.clientes->Execute("insert into consumo (idm, idcat, can, con) values (5, 1, 500, 100)");
    EXPECT_EQ(patientInformation(s, 5), uR"(Currently in care.
Surgery 03/11/2026 knee
Surgery 03/13/2026 9:30 AM knee
There is/are 3 day/s of boarding left.
Tuesday, March 3, 2026 Limps. Left knee. )"_s
                                            + QString(102, u'x') + u" .....\n"_s
                                            + u"Left: 0.5kg. 100g/day - Approx. 5 days. R. "
                                              u"03/16/2026"_s);
}

TEST_F(Panels, AgeIsToldInTheTwoLargestUnits)
{
    const struct {
        QDate birth;
        const char16_t *age;
    } cases[] = {
        {QDate(2026, 3, 11), u"0 days"},
        {QDate(2026, 3, 10), u"1 day"},
        {QDate(2026, 2, 12), u"27 days"},
        {QDate(2026, 2, 11), u"1 month"},
        {QDate(2025, 3, 12), u"11 months"},
        {QDate(2025, 3, 11), u"1 year"},
        {QDate(2023, 12, 1), u"2 years 3 months"},
        {QDate(2024, 12, 31), u"1 year 2 months"},
        {QDate(2026, 3, 12), u""},
        {QDate(), u""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(ageOf(s, c.birth), QString::fromUtf16(c.age))
            << c.birth.toString(Qt::ISODate).toStdString();
    s.reloj.hoy = QDate(2026, 2, 28);
    EXPECT_EQ(ageOf(s, QDate(2024, 2, 29)), u"2 years"_s);
    EXPECT_EQ(ageOf(s, QDate(2025, 12, 31)), u"2 months"_s); // month end counts as month end
}
