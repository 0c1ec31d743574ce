#include "clients/profiles.h"
#include "contact/contact.h"
#include "support/clinic.h"

using namespace Qt::StringLiterals;

class Contact : public Clinic
{
};

TEST_F(Contact, AddressAndTelephonesLeaveOutWhatIsMissing)
{
    s.clientes->Execute("insert into cllocalidad (id, nom) values (3, 'Tolosa')");
    s.clientes->Execute("insert into cldepartamento (id, nom) values (3, 'La Plata')");
    s.clientes->Execute("insert into clientes (idc, dir, loc, dep, codp2, tel2, telc2) values "
                        "(1, 'Calle 5', 3, 3, '1900', '422', '155')");
    EXPECT_EQ(DomicilioCliente(s, 1), u"Calle 5, Tolosa, La Plata, CP: 1900"_s);
    EXPECT_EQ(TelefonosCliente(s, 1), u"422 / 155"_s);
    // Changes show at once, although both are read from the session's lists.
    s.clientes->Execute("update clientes set loc = 9, codp2 = null, tel2 = ''");
    EXPECT_EQ(DomicilioCliente(s, 1), u"Calle 5, La Plata"_s);
    EXPECT_EQ(TelefonosCliente(s, 1), u"155"_s);
    EXPECT_EQ(DomicilioCliente(s, 2), QString());
    EXPECT_EQ(TelefonosCliente(s, 2), QString());
}

TEST_F(Contact, AFeaturedClientBuysWellAndOftenAndDoesNotPayLate)
{
    for (int perfiles = 0; perfiles < 8; ++perfiles)
        s.clientes->Execute("insert into clientes (idc, perfil1, perfil2, perfil3) values "
                            "(?, ?, ?, ?)",
                            perfiles, bool(perfiles & 1), bool(perfiles & 2), bool(perfiles & 4));
    for (int perfiles = 0; perfiles < 8; ++perfiles)
        EXPECT_EQ(ClienteDestacado(s, perfiles), perfiles == 5) << perfiles;
    EXPECT_FALSE(ClienteDestacado(s, 99));
}
