#include "messages/mail_account.h"

#include "store/settings_row.h"

using namespace Qt::StringLiterals;

namespace
{

enum Texto { ValorNoValido = 31, Contrasena = 2685, UsuarioMail = 9584 };

constexpr int mayorPuerto = 65535;

// Keys of this machine's settings.
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
    c.servidor = LeerAjusteDeMaquina(s, claveServidor.toString());
    c.cifrado = CifradoDeNombre(LeerAjusteDeMaquina(s, claveCifrado.toString()));
    c.puerto = LeerAjusteDeMaquina(s, clavePuerto.toString()).toInt();
    if (c.puerto < 1 || c.puerto > mayorPuerto)
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
    GuardarAjusteDeMaquina(s, claveServidor.toString(), cuenta.servidor.trimmed());
    GuardarAjusteDeMaquina(s, clavePuerto.toString(), QString::number(cuenta.puerto));
    GuardarAjusteDeMaquina(s, claveCifrado.toString(), NombreDe(cuenta.cifrado));
}

bool ModificarCuentaDeCorreo(Sesion &s)
{
    const int anchoDeUsuario = s.morvane->Ancho("Configuracion", "usuariomail");
    const int anchoDeContrasena = s.morvane->Ancho("Configuracion", "passwordmail");
    CuentaDeCorreo c = LeerCuentaDeCorreo(s);

    const auto usuario = s.dialogos.PedirTexto(s(UsuarioMail), s(UsuarioMail), c.usuario);
    if (!usuario || usuario->trimmed().isEmpty())
        return false;
    const auto contrasena = s.dialogos.PedirContrasena(s(UsuarioMail), s(Contrasena));
    if (!contrasena)
        return false;
    // Cut short, either would only be refused by the server some day later.
    if (usuario->trimmed().size() > anchoDeUsuario || contrasena->size() > anchoDeContrasena) {
        s.dialogos.Mensaje(s(ValorNoValido));
        return false;
    }
    c.usuario = usuario->trimmed();
    c.contrasena = *contrasena;
    GuardarCuentaDeCorreo(s, c);
    return true;
}
