#include "clients/client_rows.h"
#include "clients/photos.h"
#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "support/clinic.h"

#include <QFile>
#include <QImage>
#include <thread>

using namespace Qt::StringLiterals;

class Registro : public Clinica
{
protected:
    static FichaDeCliente Cliente(const QString &ayn, const QString &tel2 = {})
    {
        FichaDeCliente f;
        f.ayn = ayn;
        f.tel2 = tel2;
        return f;
    }
    int IdNuevo(const QString &ayn) { return AgregarCliente(s, Cliente(ayn)).id; }
    int IdNuevo(const FichaDePaciente &f) { return AgregarPaciente(s, f, true).id; }
    QString Clientes(const char *columnas)
    {
        return Filas(*s.clientes, "select " + std::string(columnas) + " from clientes");
    }
    QString Regiones() { return Filas(*s.clientes, "select nom, ran from cldepartamento"); }
    static FichaDePaciente Paciente(const QString &nom, int idc)
    {
        FichaDePaciente f;
        f.idc = idc;
        f.nom = nom;
        f.esp = 2;
        f.raza = u"Siamés"_s;
        f.fecn = QDate(2020, 2, 29);
        f.pes = 3.5;
        f.servicio = true;
        return f;
    }
    QString Contadores()
    {
        return Filas(*s.morvane, "select contadorclientes, contadormascotas, contadordep, "
                                 "contadorloc, contadorraza from configuracion");
    }
};

TEST_F(Registro, ANewClientComesWithItsPlacesAndItsRowOfEvents)
{
    const int proximo = ProximoCliente(s);
    FichaDeCliente f = Cliente(u" D'Ávila, José [hijo] "_s, u"422"_s);
    f.region = u"Canelones"_s;
    f.codt2 = u"0433"_s;
    f.subregion = u"z6"_s;
    f.codp2 = u"91000"_s;
    f.obs = u"0341"_s;
    f.deuda = true; // a client does not begin with what the counter alone sets
    const Alta alta = AgregarCliente(s, f);
    ASSERT_EQ(alta.id, proximo);
    EXPECT_FALSE(alta.rechazo);
    EXPECT_EQ(ProximoCliente(s), proximo + 1);
    EXPECT_EQ(Clientes("ayn, tel2, feci, fecu, deuda, obra, codp2, codt2, obs"),
              u"D'Ávila, José [hijo]|422|2026-03-11|2026-03-11|0|0|91000|0433|0341\n"_s);
    EXPECT_EQ(Filas(*s.morvane, "select idc, buenascompras from perfiles"),
              u"%1|0\n"_s.arg(proximo));
    EXPECT_EQ(Regiones(), u"Canelones|1\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select nom, cp, ran from cllocalidad"), u"z6|91000|1\n"_s);
    const auto leida = LeerCliente(s, proximo);
    ASSERT_TRUE(leida);
    EXPECT_EQ(leida->region + u'/' + leida->subregion, u"Canelones/z6"_s);
}

TEST_F(Registro, ChecksStandBeforeAnythingIsWritten)
{
    const QString antes = Contadores();
    const struct {
        QString ayn, region, subregion;
        int texto;
        Campo campo;
    } casos[] = {
        {u"  "_s, u"1"_s, u"1"_s, 2259, Campo::Nombre},
        {u"123"_s, {}, {}, 31, Campo::Nombre},
        {u"Ana"_s, u"1-2"_s, u"5"_s, 31, Campo::Region},
        {u"Ana"_s, u"z4"_s, u"(5)"_s, 31, Campo::Subregion},
    };
    for (const auto &c : casos) {
        FichaDeCliente f = Cliente(c.ayn);
        f.region = c.region;
        f.subregion = c.subregion;
        ask.Espera(s(c.texto));
        const Alta alta = AgregarCliente(s, f);
        EXPECT_EQ(alta.id, 0);
        EXPECT_TRUE(alta.rechazo && alta.rechazo->campo == c.campo);
        ask.Espera(s(c.texto));
        EXPECT_TRUE(ModificarCliente(s, f));
    }
    EXPECT_EQ(Contadores(), antes);
    EXPECT_EQ(Clientes("idc") + Regiones(), QString());
}

TEST_F(Registro, ATelephoneThatIsThereIsAskedAboutOnce)
{
    const int ana = AgregarCliente(s, Cliente(u"Ana"_s, u"422*"_s)).id;
    IdNuevo(u"Eva"_s); // no telephone, no question
    IdNuevo(u"Eva"_s);

    ask.Espera(u"Found: Ana, with telephone: 422*. Please check"_s, false);
    const Alta dejada = AgregarCliente(s, Cliente(u"Ana B"_s, u" 422* "_s));
    EXPECT_EQ(dejada.existente, ana);
    EXPECT_EQ(dejada.id, 0);
    EXPECT_EQ(Clientes("count(*)"), u"3\n"_s);

    ask.Espera(u"Found: Ana"_s, true);
    const Alta tomada = AgregarCliente(s, Cliente(u"Ana B"_s, u"422*"_s));
    EXPECT_EQ(tomada.id, ana + 3);
    EXPECT_EQ(tomada.existente, 0);
    // The telephone is no pattern, and a change does not ask.
    EXPECT_EQ(AgregarCliente(s, Cliente(u"Otra"_s, u"*"_s)).id, ana + 4);
    FichaDeCliente f = *LeerCliente(s, ana + 4);
    f.tel2 = u"422*"_s;
    EXPECT_FALSE(ModificarCliente(s, f));
}

TEST_F(Registro, AChangeKeepsDaysAndDebtAndTellsWhenTheClientIsGone)
{
    const int idc = IdNuevo(u"Ana"_s);
    s.clientes->Execute("update clientes set feci = '2020-01-01', fecu = '2021-01-01', deuda = -1, "
                        "obra = 3, faltadir = -1, faltamail = -1");
    FichaDeCliente f = *LeerCliente(s, idc);
    f.ayn = u"Ana María"_s;
    f.email = u"ana@vet.example"_s;
    f.deuda = false;
    EXPECT_FALSE(ModificarCliente(s, f));
    const char *estado = "ayn, feci, fecu, deuda, obra, faltadir, faltamail";
    EXPECT_EQ(Clientes(estado), u"Ana María|2020-01-01|2021-01-01|-1|3|-1|-1\n"_s);
    f.codp2 = u"11300"_s; // letters can go now
    EXPECT_FALSE(ModificarCliente(s, f));
    EXPECT_EQ(Clientes(estado), u"Ana María|2020-01-01|2021-01-01|-1|3|0|-1\n"_s);

    s.clientes->Execute("delete * from clientes");
    f.region = u"Nueva"_s;
    ask.Espera(s(9418));
    EXPECT_TRUE(ModificarCliente(s, f));
    EXPECT_EQ(Regiones(), QString());
}

TEST_F(Registro, WhenIdentifiersAreUsedUpNothingIsWritten)
{
    s.morvane->Execute("update configuracion set contadorclientes = 32766, contadordep = 32767");
    FichaDeCliente f = Cliente(u"Ana"_s);
    f.region = u"Canelones"_s;
    const QString antes = Contadores();
    try {
        AgregarCliente(s, f);
        ADD_FAILURE() << "no refusal";
    } catch (const ErrorDeAlmacen &e) {
        EXPECT_EQ(e.descripcion, s(29));
    }
    EXPECT_EQ(Contadores(), antes);
    EXPECT_EQ(IdNuevo(u"Ana"_s), 32767);
    EXPECT_THROW(IdNuevo(u"Eva"_s), ErrorDeAlmacen);
    EXPECT_EQ(Clientes("idc, ayn"), u"32767|Ana\n"_s);
    EXPECT_EQ(Filas(*s.morvane, "select idc from perfiles"), u"32767\n"_s);
}

TEST_F(Registro, TwoTerminalsAddingAtOnceNeverShareAnIdentifier)
{
    constexpr int PorTerminal = 20;
    DialogosDePrueba ask2;
    Sesion otra(ask2, impresion, Idioma::Ingles);
    otra.reloj = s.reloj;
    FijarCarpetaDeDatos(otra, carpeta.path());
    ASSERT_FALSE(AbrirAlmacen(otra));
    const auto agregar = [](Sesion &sesion, const QString &quien) {
        for (int i = 0; i < PorTerminal; ++i) {
            FichaDeCliente f = Cliente(quien + QString::number(i));
            f.region = u"Canelones"_s;
            AgregarCliente(sesion, f);
        }
    };
    std::thread terminal([&] { agregar(otra, u"Eva"_s); });
    agregar(s, u"Ana"_s);
    terminal.join();
    EXPECT_EQ(Clientes("count(*), min(idc), max(idc)"), u"40|1|40\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select count(*) from clientes where ayn like 'Eva*'"), u"20\n"_s);
    EXPECT_EQ(Filas(*s.morvane, "select count(*) from perfiles"), u"40\n"_s);
    EXPECT_EQ(Regiones(), u"Canelones|40\n"_s);
    EXPECT_EQ(FilasDeClientes(s).size(), FilasDeClientes(otra).size());
}

TEST_F(Registro, ANewPatientComesWithItsBreed)
{
    const int idc = IdNuevo(u"Ana"_s);
    const int proximo = ProximoPaciente(s);
    FichaDePaciente f = Paciente(u"Ñato"_s, idc);
    f.fot = true; // a photograph is taken later
    EXPECT_EQ(AgregarPaciente(s, f, true).id, proximo);
    EXPECT_EQ(Filas(*s.clientes, "select idc, nom, esp, fecn, pes, ser, feci, fot, dec, tarea, hos "
                                 "from mascotas"),
              u"%1|Ñato|2|2020-02-29|3.5|1|2026-03-11|0|0|0|0\n"_s.arg(idc));
    EXPECT_EQ(Filas(*s.clientes, "select nom, esp, ran from mlrazas where nom = 'Siamés'"),
              u"Siamés|2|1\n"_s);
    EXPECT_EQ(LeerPaciente(s, proximo)->raza, u"Siamés"_s);

    const auto rechazado = [&](int texto, bool fechaEntendida = true) {
        ask.Espera(s(texto));
        return AgregarPaciente(s, f, fechaEntendida).rechazo->campo;
    };
    f.nom = u"7"_s;
    EXPECT_EQ(rechazado(31), Campo::Nombre);
    f.nom = QString();
    EXPECT_EQ(rechazado(2259), Campo::Nombre);
    f.nom = u"Nata"_s;
    EXPECT_EQ(rechazado(5057, false), Campo::Nacimiento);
    f.fecn = hoy.addDays(1); // not born yet
    EXPECT_EQ(rechazado(5057), Campo::Nacimiento);
    f.fecn = hoy;
    for (const int ninguno : {0, 99}) { // deleted meanwhile
        f.idc = ninguno;
        EXPECT_EQ(rechazado(9420), Campo::Cliente);
    }
    EXPECT_EQ(ProximoPaciente(s), proximo + 1);
}

TEST_F(Registro, AChangeWritesThreeSpeciesOnly)
{
    const int idc = IdNuevo(u"Ana"_s);
    const int idm = IdNuevo(Paciente(u"Nata"_s, idc));
    FichaDePaciente f = *LeerPaciente(s, idm);
    const auto especie = [&](const QString &nombre) {
        f.esp = 9;
        EXPECT_FALSE(ModificarPaciente(s, f, nombre, true));
        return LeerPaciente(s, idm)->esp;
    };
    EXPECT_EQ(especie(u"Canino"_s), 1);
    EXPECT_EQ(especie(u"Conejo"_s), 1); // intended: any other name leaves what was there
    EXPECT_EQ(especie(QString()), 1);
    EXPECT_EQ(especie(u"Equino"_s), 3);
    EXPECT_EQ(especie(u"Felino"_s), 2);

    f.fecn = {};
    f.dec = true;
    EXPECT_FALSE(ModificarPaciente(s, f, QString(), true));
    EXPECT_EQ(Filas(*s.clientes, "select fecn, dec, feci from mascotas"), u"|-1|2026-03-11\n"_s);
    f.idm = 99;
    ask.Espera(s(9419));
    EXPECT_TRUE(ModificarPaciente(s, f, QString(), true));
}

TEST_F(Registro, TheGridStandsByNameAndMarksWhoNeedsAttention)
{
    const struct {
        const char16_t *ayn;
        bool deuda;
        int obra;
        bool faltadir, faltamail;
    } casos[] = {
        {u"zeta", true, 5, false, true},   {u"Álvarez", false, 2, true, false},
        {u"alba", false, 5, false, false}, {u"Nuñez", false, 0, true, false},
        {u"Núñez", false, 4, false, true}, {u"andrea", false, 3, false, false},
    };
    int idc = 0;
    for (const auto &c : casos)
        s.clientes->Execute("insert into clientes (idc, ayn, deuda, obra, faltadir, faltamail) "
                            "values (?, ?, ?, ?, ?, ?)",
                            ++idc, c.ayn, c.deuda, c.obra, c.faltadir, c.faltamail);
    s.clientes->Execute("insert into clientes (idc) values (7)"); // no name at all
    QString grilla;
    for (const FilaDeCliente &f : FilasDeClientes(s)) {
        grilla += f.ayn + QString::number(int(f.sena)) + u' ';
        EXPECT_EQ(FilaDelCliente(s, f.idc)->sena, f.sena);
    }
    EXPECT_EQ(grilla, u"0 alba2 Álvarez1 andrea0 Nuñez2 Núñez2 zeta1 "_s);
    EXPECT_FALSE(FilaDelCliente(s, 99));
}

TEST_F(Registro, PatientsAreFoundByTheBeginningOfTheirNameAndStandByOwner)
{
    const int zoe = IdNuevo(u"Zoe"_s);
    const int ana = IdNuevo(u"ana"_s);
    for (const char16_t *nom : {u"Luna", u"*Sol", u"Lu'z"})
        IdNuevo(Paciente(QString::fromUtf16(nom), zoe));
    IdNuevo(Paciente(u"LUNÁTICA"_s, ana));
    const auto hallados = [&](const QString &texto) {
        QString t;
        for (const PacienteHallado &p : BuscarPacientes(s, texto))
            t += p.mascota + u'/' + p.propietario + u' ';
        return t;
    };
    EXPECT_EQ(hallados(u"lu"_s), u"LUNÁTICA/ana Lu'z/Zoe Luna/Zoe "_s);
    EXPECT_EQ(hallados(u"lu'"_s), u"Lu'z/Zoe "_s);
    EXPECT_EQ(hallados(u"*s"_s), u"*Sol/Zoe "_s);
    EXPECT_EQ(hallados(u"l*a"_s), u"LUNÁTICA/ana Luna/Zoe "_s);
    for (const QString &nada : {u"lun?"_s, u"una"_s, u" "_s})
        EXPECT_EQ(hallados(nada), QString()) << nada.toStdString();

    s.clientes->Execute("update mascotas set raz = 0, dec = -1 where nom = 'Luna'");
    QString grilla;
    for (const FilaDePaciente &f : FilasDePacientes(s, zoe))
        grilla += f.nom + u'/' + f.especie + u'/' + f.raza + (f.dec ? u"+ "_s : u" "_s);
    EXPECT_EQ(grilla, u"*Sol/Felino/Siamés Lu'z/Felino/Siamés Luna/Felino/+ "_s);
}

TEST_F(Registro, APhotographIsKeptSmallAndAFailedOneLeavesTheFormer)
{
    const int idc = IdNuevo(u"Ana"_s);
    const int idm = IdNuevo(Paciente(u"Nata"_s, idc));
    QImage grande(3200, 800, QImage::Format_ARGB32);
    grande.fill(Qt::red);
    GuardarFoto(s, idm, grande);
    EXPECT_TRUE(LeerPaciente(s, idm)->fot);
    EXPECT_EQ(QImage(ArchivoDeFoto(s, idm)).size(), QSize(1600, 400));

    EXPECT_THROW(GuardarFoto(s, idm, QImage()), ErrorDeAlmacen);
    EXPECT_EQ(QImage(ArchivoDeFoto(s, idm)).size(), QSize(1600, 400));
    QuitarFoto(s, idm);
    EXPECT_THROW(GuardarFoto(s, idm, QImage()), ErrorDeAlmacen);
    EXPECT_FALSE(LeerPaciente(s, idm)->fot);
    EXPECT_FALSE(QFile::exists(ArchivoDeFoto(s, idm)));
}
