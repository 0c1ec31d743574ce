#include "admin/users.h"

#include "support/clinic.h"

using namespace Qt::StringLiterals;

namespace
{

/// Ana, Supervisor, and Luis, Common; the counter stands at the last one.
class Usuarios : public Clinica
{
protected:
    Usuarios()
    {
        s.morvane->Execute("delete * from usuarios");
        s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (1, 'Ana', 'gato', 2)");
        s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (2, 'Luis', '', 1)");
        contador(2);
    }
    void contador(int n) { s.morvane->Execute("update configuracion set contadorUsuarios = ?", n); }
    QString todos()
    {
        return Filas(*s.morvane, "select idu, nom, up, ut from usuarios order by idu");
    }
    QString contados() { return Filas(*s.morvane, "select contadorUsuarios from configuracion"); }

    const QString antes = u"1|Ana|gato|2\n2|Luis||1\n"_s;
    const QString agregar = u"Add a user?"_s;
    const QString nombre = u"Enter 'username'"_s;
    const QString contrasena = u"Enter the 'password'"_s;
    const QString tipo = u"Enter 'user type'"_s;
};

} // namespace

TEST_F(Usuarios, EachAnswerIsAskedForAgainUntilItCanBeUsed)
{
    ask.Espera(agregar);
    ask.EsperaTexto(nombre, u"ANA"_s);
    ask.Espera(u"Name or item duplicate"_s);
    ask.EsperaTexto(nombre, u"d'Or"_s);
    ask.Espera(u"Can not use the character"_s);
    ask.EsperaTexto(nombre, u"a*"_s); // the login would take it for a pattern
    ask.Espera(u"Name or item duplicate"_s);
    ask.EsperaTexto(nombre, QString(51, u'x'));
    ask.Espera(u"Name or item duplicate"_s);
    ask.EsperaTexto(nombre, u" Eva "_s);
    ask.EsperaTexto(contrasena, u"a'b"_s);
    ask.Espera(u"Can not use the character"_s);
    ask.EsperaTexto(contrasena, QString(51, u'x'));
    ask.Espera(u"valid value"_s);
    ask.EsperaTexto(contrasena, u"perro"_s);
    ask.EsperaTexto(tipo, u"3"_s);
    ask.Espera(u"valid value"_s);
    ask.EsperaTexto(tipo, u"12"_s);
    ask.Espera(u"valid value"_s);
    ask.EsperaTexto(tipo, u"2"_s);
    EXPECT_EQ(NuevoUsuario(s), 3);
    EXPECT_EQ(todos(), antes + u"3|Eva|perro|2\n"_s);
    EXPECT_EQ(contados(), u"3\n"_s);
}

TEST_F(Usuarios, BackingOutOfAnyAnswerAddsNothing)
{
    for (int respondidas = 0; respondidas < 3; ++respondidas)
        for (const auto &salida : {std::optional<QString>(), std::optional<QString>(u""_s)}) {
            if (respondidas == 1 && salida)
                continue; // an empty password is one
            ask.Espera(agregar);
            if (respondidas > 0)
                ask.EsperaTexto(nombre, u"Eva"_s);
            if (respondidas > 1)
                ask.EsperaTexto(contrasena, u""_s);
            ask.EsperaTexto(QStringList{nombre, contrasena, tipo}[respondidas], salida);
            EXPECT_EQ(NuevoUsuario(s), std::nullopt) << respondidas;
        }
    ask.Espera(agregar, false);
    EXPECT_EQ(NuevoUsuario(s), std::nullopt);
    EXPECT_EQ(todos(), antes);
    EXPECT_EQ(contados(), u"2\n"_s);
}

TEST_F(Usuarios, NumbersEndWhereTheirColumnDoes)
{
    contador(254);
    ask.Espera(agregar);
    ask.EsperaTexto(nombre, u"Eva"_s);
    ask.EsperaTexto(contrasena, u""_s);
    ask.EsperaTexto(tipo, u"1"_s);
    EXPECT_EQ(NuevoUsuario(s), 255);
    for (int lleno : {255, 256}) {
        contador(lleno);
        ask.Espera(u"Unable to perform action"_s);
        EXPECT_EQ(NuevoUsuario(s), std::nullopt) << lleno;
    }
    EXPECT_EQ(todos(), antes + u"255|Eva||1\n"_s);
}

TEST_F(Usuarios, TheLastOneAndTheLastSupervisorStay)
{
    ask.Espera(u"Unable to perform action"_s);
    EXPECT_FALSE(EliminarUsuario(s, 1));
    ask.Espera(u"Delete?"_s, false);
    EXPECT_FALSE(EliminarUsuario(s, 2));
    EXPECT_EQ(todos(), antes);

    ask.Espera(u"Delete?"_s);
    EXPECT_TRUE(EliminarUsuario(s, 2));
    ask.Espera(u"Unable to perform action"_s);
    EXPECT_FALSE(EliminarUsuario(s, 1));
    EXPECT_EQ(todos(), u"1|Ana|gato|2\n"_s);

    // With a second Supervisor the first may go.
    s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (3, 'Eva', '', 2)");
    ask.Espera(u"Delete?"_s);
    EXPECT_TRUE(EliminarUsuario(s, 1));
    EXPECT_EQ(todos(), u"3|Eva||2\n"_s);
}

TEST_F(Usuarios, APasswordIsChangedTakenAwayOrLeft)
{
    ask.EsperaTexto(contrasena, std::nullopt);
    EXPECT_FALSE(ModificarContrasena(s, 1));
    EXPECT_EQ(todos(), antes);
    ask.EsperaTexto(contrasena, u"'"_s);
    ask.Espera(u"Can not use the character"_s);
    ask.EsperaTexto(contrasena, u"ratón"_s);
    EXPECT_TRUE(ModificarContrasena(s, 2));
    ask.EsperaTexto(contrasena, u""_s);
    EXPECT_TRUE(ModificarContrasena(s, 1));
    EXPECT_EQ(todos(), u"1|Ana||2\n2|Luis|ratón|1\n"_s);
}
