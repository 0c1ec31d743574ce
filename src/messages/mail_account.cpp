#include "messages/mail_account.h"

#include "store/settings_row.h"

using namespace Qt::StringLiterals;

namespace
{

enum Texto { ValorNoValido = 31, Contrasena = 2685, UsuarioMail = 9584 };

constexpr int mayorPuerto = 65535;

// Keys of the clinic's settings file.
constexpr QStringView claveServidor = u"correo/servidor";
constexpr QStringView clavePuerto = u"correo/puerto";
constexpr QStringView claveCifrado = u"correo/cifrado";

struct NombreDeCifrado {
    Cifrado cifrado;
    QStringView nombre;
};
constexpr NombreDeCifrado cifrados[] = {
    {Cifrado::StartTls, u"starttls"},
    {Cifrado::Tls, u"tls"},
    {Cifrado::Ninguno, u"ninguno"},
};

// Cut short, either would only be refused by the server some day later.
bool Cabe(Sesion &s, const QString &texto, std::string_view columna)
{
    if (texto.size() <= s.morvane->Ancho("Configuracion", columna))
        return true;
    s.dialogos.Mensaje(s(ValorNoValido));
    return false;
}

std::optional<QString> PedirUsuario(Sesion &s, QString usuario)
{
    do {
        const auto dado = s.dialogos.PedirTexto(s(UsuarioMail), s(UsuarioMail), usuario);
        usuario = dado.value_or(QString()).trimmed();
        if (usuario.isEmpty())
            return std::nullopt;
    } while (!Cabe(s, usuario, "usuariomail"));
    return usuario;
}

std::optional<QString> PedirContrasenaDeCorreo(Sesion &s)
{
    std::optional<QString> dada;
    do
        dada = s.dialogos.PedirContrasena(s(UsuarioMail), s(Contrasena));
    while (dada && !Cabe(s, *dada, "passwordmail"));
    return dada;
}

/// What cannot be read protects rather than not.
Cifrado CifradoDeNombre(const QString &nombre)
{
    for (const NombreDeCifrado &c : cifrados)
        if (c.nombre == nombre)
            return c.cifrado;
    return Cifrado::StartTls;
}

QString NombreDe(Cifrado cifrado)
{
    for (const NombreDeCifrado &c : cifrados)
        if (c.cifrado == cifrado)
            return c.nombre.toString();
    return {};
}

} // namespace

bool EsPuerto(int puerto) { return puerto >= 1 && puerto <= mayorPuerto; }

int PuertoHabitual(Cifrado cifrado)
{
    switch (cifrado) {
    case Cifrado::Tls:
        return 465;
    case Cifrado::Ninguno:
        return 25;
    case Cifrado::StartTls:
        break;
    }
    return 587;
}

CuentaDeCorreo LeerCuentaDeCorreo(Sesion &s)
{
    CuentaDeCorreo c;
    c.usuario = s.configuracion["usuariomail"].toText();
    c.contrasena = s.configuracion["passwordmail"].toText();
    c.servidor = LeerAjusteDeClinica(s, claveServidor.toString());
    c.cifrado = CifradoDeNombre(LeerAjusteDeClinica(s, claveCifrado.toString()));
    c.puerto = LeerAjusteDeClinica(s, clavePuerto.toString()).toInt();
    if (!EsPuerto(c.puerto))
        c.puerto = PuertoHabitual(c.cifrado);
    return c;
}

void GuardarCuentaDeCorreo(Sesion &s, const CuentaDeCorreo &cuenta)
{
    Lote lote(s);
    GuardarAjuste(s, "usuariomail", cuenta.usuario);
    GuardarAjuste(s, "passwordmail", cuenta.contrasena);
    lote.Confirmar();
    GuardarServidorDeCorreo(s, cuenta);
}

void GuardarServidorDeCorreo(Sesion &s, const CuentaDeCorreo &cuenta)
{
    const CuentaDeCorreo antes = LeerCuentaDeCorreo(s);
    if (cuenta.servidor != antes.servidor)
        GuardarAjusteDeClinica(s, claveServidor.toString(), cuenta.servidor.trimmed());
    if (cuenta.cifrado != antes.cifrado)
        GuardarAjusteDeClinica(s, claveCifrado.toString(), NombreDe(cuenta.cifrado));
    // Read again: a port that was never stored follows the encryption.
    if (cuenta.puerto != LeerCuentaDeCorreo(s).puerto)
        GuardarAjusteDeClinica(s, clavePuerto.toString(), QString::number(cuenta.puerto));
}

bool ModificarCuentaDeCorreo(Sesion &s)
{
    CuentaDeCorreo c = LeerCuentaDeCorreo(s);
    const auto usuario = PedirUsuario(s, c.usuario);
    if (!usuario)
        return false;
    const auto contrasena = PedirContrasenaDeCorreo(s);
    if (!contrasena)
        return false;
    c.usuario = *usuario;
    c.contrasena = *contrasena;
    GuardarCuentaDeCorreo(s, c);
    return true;
}
