#include "startup/first_run.h"

#include "startup/seeds.h"
#include "store/identifiers.h"
#include "store/lookups.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int MayorUsuario = 255; // Usuarios.idu is a byte

/// Gives the rows of a table the names that a seed file has for them.
void Renombrar(Base &base, const std::string &sql, const Semillas &semillas, QStringView id,
               QStringView nombre)
{
    for (const QStringList &fila : semillas.filas)
        base.Execute(sql, semillas.Celda(fila, nombre), semillas.Celda(fila, id).toInt());
}

/// Adds the products or services that are not there yet; those that are get their name.
/// @return the highest identifier
int Articulos(Base &finanzas, const Semillas &semillas, bool servicios)
{
    static const QStringList deServicio{u"ida"_s, u"tiempo"_s, u"tipo"_s};
    int mayor = 0;
    for (const QStringList &fila : semillas.filas) {
        const int ida = semillas.Celda(fila, u"ida").toInt();
        const QString &nombre = semillas.Celda(fila, u"nom");
        mayor = std::max(mayor, ida);
        if (!finanzas.Leer("select ida from Articulos where ida = ?", ida).EsNulo()) {
            finanzas.Execute("update Articulos set nom = ? where ida = ?", nombre, ida);
            continue;
        }
        QStringList columnas{u"ida"_s, u"nom"_s, u"cb"_s};
        std::vector<Valor> valores{ida, nombre, QString::number(ida)};
        const QStringList resto =
            servicios ? QStringList{} : QStringList{u"idcat"_s, u"uni"_s, u"canuni"_s, u"vto"_s};
        for (const QString &columna : resto) {
            columnas.append(columna);
            valores.push_back(
                ValorDeSemilla(finanzas, "Articulos", columna, semillas.Celda(fila, columna)));
        }
        if (servicios) {
            columnas += {u"idcat"_s, u"uni"_s};
            valores.insert(valores.end(), {2, u"u"_s});
            InsertarFila(finanzas, u"Servicios"_s, deServicio,
                         {ida, semillas.Celda(fila, u"tiempo").toInt(),
                          semillas.Celda(fila, u"tipo").toInt()});
        }
        InsertarFila(finanzas, u"Articulos"_s, columnas, valores);
    }
    return mayor;
}

} // namespace

int ValidarPrimeraVez(const DatosPrimeraVez &datos)
{
    if (QuitarApostrofes(datos.usuario).trimmed().isEmpty())
        return 2259;
    return datos.contrasena == datos.contrasena2 ? 0 : 5030;
}

void RegistrarPrimeraVez(Sesion &s, const DatosPrimeraVez &datos)
{
    const QString usuario = QuitarApostrofes(datos.usuario);
    const QString clinica = QuitarApostrofes(datos.clinica);
    Base &morvane = *s.morvane;
    Lote lote(s);
    morvane.Execute("delete * from Veterinaria");
    morvane.Execute("insert into Veterinaria (nom, pro, dir, tel) values (?, ?, ?, ?)",
                    clinica.trimmed().isEmpty() ? usuario : clinica, usuario,
                    QuitarApostrofes(datos.direccion), QuitarApostrofes(datos.telefonos));
    morvane.Execute("delete * from Usuarios");
    const int idu = TomarIdentificador(s, "contadorUsuarios", MayorUsuario);
    morvane.Execute("insert into Usuarios (idu, nom, up, ut) values (?, ?, ?, 2)", idu, usuario,
                    datos.contrasena);
    lote.Confirmar();
}

void SembrarPrimeraVez(Sesion &s)
{
    const Idioma idioma = s.textos.idioma();
    Base &morvane = *s.morvane;
    Base &finanzas = *s.finanzas;
    Lote lote(s);
    Renombrar(finanzas, "update FLCategorias set nom = ? where idcat = ?",
              LeerSemillas(u"categories"_s, idioma), u"idcat", u"nom");
    Renombrar(morvane, "update Regimen set Nom = ? where Idr = ?", LeerSemillas(u"plans"_s, idioma),
              u"Idr", u"Nom");

    const int mayor = std::max(Articulos(finanzas, LeerSemillas(u"products"_s, idioma), false),
                               Articulos(finanzas, LeerSemillas(u"services"_s, idioma), true));
    morvane.Execute("update Configuracion set contadorarticulo = ? where contadorarticulo < ?",
                    mayor, mayor);

    const Semillas rotulos = LeerSemillas(u"labels"_s, idioma);
    for (const QStringList &fila : rotulos.filas)
        morvane.Execute(u"update Configuracion set [%1] = ?"_s.arg(rotulos.Celda(fila, u"columna"))
                            .toStdString(),
                        rotulos.Celda(fila, u"valor"));
    for (const CartaSembrada &carta : LeerCartas(idioma))
        for (const QString &columna : carta.columnas)
            morvane.Execute(u"update Configuracion set [%1] = ?"_s.arg(columna).toStdString(),
                            carta.texto);
    lote.Confirmar();
}
