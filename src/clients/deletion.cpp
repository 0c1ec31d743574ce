#include "clients/deletion.h"

#include "store/data_folder.h"
#include "store/opening.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

// An image file of a patient: its folder, and its name as the patient's number, the row's number
// and the image's number written together.
struct Imagen {
    QString carpeta;
    QString nombre;
};

std::vector<int> Numeros(Recordset r)
{
    std::vector<int> numeros;
    for (; !r.EOF_(); r.MoveNext())
        numeros.push_back(r[0].toInt());
    return numeros;
}

std::vector<Imagen> ImagenesDe(Sesion &s, int idm)
{
    std::vector<Imagen> imagenes;
    const QString animal = QString::number(idm), bmp = u".bmp"_s;
    if (s.clientes->Leer("select fot from mascotas where idm = ?", idm).toBool())
        imagenes.push_back({u"mascotas/fot"_s, animal + bmp});
    const auto numeradas = [&](const QString &carpeta, Recordset r) {
        for (; !r.EOF_(); r.MoveNext())
            for (int n = 1; n <= r[1].toInt(); ++n)
                imagenes.push_back({carpeta, animal + r[0].toText() + QString::number(n) + bmp});
    };
    numeradas(
        u"mascotas/cli"_s,
        s.clientes->OpenSnapshot("select idclinica, cantfotos from mclinica where idm = ?", idm));
    numeradas(u"mascotas/eco"_s,
              s.clientes->OpenSnapshot("select ideco, cantfotos from meco where idm = ?", idm));
    for (const int id : Numeros(
             s.clientes->OpenSnapshot("select idray from mrayos where idm = ? and ray = -1", idm)))
        imagenes.push_back({u"mascotas/ray"_s, animal + QString::number(id) + bmp});
    return imagenes;
}

// Whether another patient's row has an image of that name: 1 with 23 and 12 with 3 are the same.
bool EsDeOtro(Sesion &s, const Imagen &imagen)
{
    const QString cifras = imagen.nombre.chopped(4);
    const bool rayos = imagen.carpeta.endsWith(u"ray");
    const std::string_view sql =
        rayos ? "select idray from mrayos where idm = ? and idray = ? and ray = -1"
        : imagen.carpeta.endsWith(u"cli")
            ? "select cantfotos from mclinica where idm = ? and idclinica = ?"
            : "select cantfotos from meco where idm = ? and ideco = ?";
    if (imagen.carpeta.endsWith(u"fot"))
        return false;
    for (qsizetype fin = rayos ? cifras.size() : 2; fin <= cifras.size(); ++fin)
        for (qsizetype medio = 1; medio < fin; ++medio) {
            const QString id = cifras.sliced(medio, fin - medio), n = cifras.sliced(fin);
            if (id.startsWith(u'0') || n.startsWith(u'0') || n.isEmpty() != rayos)
                continue;
            const Valor v =
                s.clientes->Leer(sql, cifras.first(medio).toLongLong(), id.toLongLong());
            if (!v.EsNulo() && (rayos || n.toLongLong() <= v.toLong()))
                return true;
        }
    return false;
}

// Removes files whatever the case of their names, reading each folder once.
void QuitarArchivos(Sesion &s, const std::vector<Imagen> &imagenes)
{
    QHash<QString, QHash<QString, QString>> carpetas;
    for (const Imagen &i : imagenes) {
        if (EsDeOtro(s, i))
            continue;
        const QDir dir(RutaBajo(s.carpetaDeDatos, i.carpeta));
        auto leida = carpetas.find(i.carpeta);
        if (leida == carpetas.end()) {
            leida = carpetas.insert(i.carpeta, {});
            for (const QString &nombre : dir.entryList(QDir::Files))
                leida->insert(nombre.toLower(), nombre);
        }
        if (const QString nombre = leida->value(i.nombre); !nombre.isEmpty())
            QFile::remove(dir.filePath(nombre));
    }
}

// Everything that hangs on a patient, without the patient's own row.
void Cascada(Sesion &s, int idm)
{
    for (const std::string_view sql :
         {"delete * from ArtPlan where idm = ?", "delete * from Mauri where idm = ?",
          "delete * from Mahemograma where idm = ?", "delete * from Mabio where idm = ?",
          "delete * from Macultivo where idm = ?", "delete * from Macopro where idm = ?",
          "delete * from Minter where idm = ?", "delete * from mhospedaje where idm = ?"})
        s.clientes->Execute(sql, idm);
    // The kinds of task whose subject is a patient; others hold a client or a user there.
    s.morvane->Execute("delete * from TareasAgenda where ida = ? and (tip > 0 or tip = -41 or "
                       "tip = -42 or tip = -46 or tip = -50 or tip = -51)",
                       idm);
    for (const std::string_view sql :
         {"delete * from Meco where idm = ?", "delete * from Mclinica where idm = ?",
          "delete * from Mrayos where idm = ?"})
        s.clientes->Execute(sql, idm);
}

// The patient's appointments do not ring any more. Only those are known that the start loaded.
void CallarAlarmas(Sesion &s, int idm)
{
    for (Alarma &a : s.Alarmas)
        if (a.tip > 0 && a.ida == idm)
            a.atendida = true;
}

// Whose it is, so that a row chosen by mistake is seen.
bool Seguro(Sesion &s, const QString &que) { return s.dialogos.Pregunta(s(3) + u"\n\n"_s + que); }

bool EsComun(Sesion &s)
{
    if (s.usuario.EsComun())
        s.dialogos.Mensaje(s(1));
    return s.usuario.EsComun();
}

// Holds the members' database open: it can neither be opened nor closed inside a batch.
class BaseDeSocios
{
public:
    BaseDeSocios(Sesion &s, bool abrir) : m_s(s), m_abierta(abrir)
    {
        if (abrir)
            AbrirAuxiliar(s, u"os"_s);
    }
    ~BaseDeSocios()
    {
        if (m_abierta)
            CerrarAuxiliar(m_s);
    }
    BaseDeSocios(const BaseDeSocios &) = delete;
    BaseDeSocios &operator=(const BaseDeSocios &) = delete;

private:
    Sesion &m_s;
    bool m_abierta;
};

} // namespace

bool EliminarCliente(Sesion &s, int idc)
{
    if (EsComun(s))
        return false;
    const Recordset r =
        s.clientes->OpenSnapshot("select ayn, obra, deuda from clientes where idc = ?", idc);
    if (r.EOF_()) {
        s.dialogos.Mensaje(s(9418));
        return true;
    }
    const int obra = r["obra"].toInt();
    if (obra == 1 || obra == 2) {
        s.dialogos.Mensaje(s(2260));
        return false;
    }
    if (r["deuda"].toBool()) {
        s.dialogos.Mensaje(s(2261));
        return false;
    }
    const int cuantos =
        s.clientes->Leer("select count(*) from mascotas where idc = ?", idc).toInt();
    if (!Seguro(s, r["ayn"].toText() + (cuantos > 0 ? s(9430).arg(cuantos) : QString())))
        return false;

    const BaseDeSocios socios(s, obra == 3);
    std::vector<Imagen> imagenes;
    std::vector<int> pacientes;
    {
        Lote lote(s);
        pacientes =
            Numeros(s.clientes->OpenSnapshot("select idm from mascotas where idc = ?", idc));
        s.avance.Etapa(s(9422));
        for (size_t i = 0; i < pacientes.size(); ++i) {
            const auto suyas = ImagenesDe(s, pacientes[i]);
            imagenes.insert(imagenes.end(), suyas.begin(), suyas.end());
            Cascada(s, pacientes[i]);
            s.avance.Barra(int(i) + 1, int(pacientes.size()));
        }
        s.clientes->Execute("delete * from mascotas where idc = ?", idc);
        if (obra == 3) {
            s.auxiliar->Execute("delete * from socios where idc = ?", idc);
            s.auxiliar->Execute("delete * from MascotasAsociadas where idc = ?", idc);
        }
        s.clientes->Execute("delete * from clientes where idc = ?", idc);
        lote.Confirmar();
    }
    for (const int idm : pacientes)
        CallarAlarmas(s, idm);
    if (s.IdGlobal.idc == idc)
        s.IdGlobal = {};
    QuitarArchivos(s, imagenes);
    return true;
}

bool EliminarPaciente(Sesion &s, int idm)
{
    if (EsComun(s))
        return false;
    const Recordset r = s.clientes->OpenSnapshot("select nom from mascotas where idm = ?", idm);
    if (r.EOF_()) {
        s.dialogos.Mensaje(s(9419));
        return true;
    }
    if (!Seguro(s, r["nom"].toText()))
        return false;
    s.avance.Etapa(s(9422));
    std::vector<Imagen> imagenes;
    {
        Lote lote(s);
        imagenes = ImagenesDe(s, idm);
        Cascada(s, idm);
        s.clientes->Execute("delete * from mascotas where idm = ?", idm);
        lote.Confirmar();
    }
    CallarAlarmas(s, idm);
    if (s.IdGlobal.idm == idm)
        s.IdGlobal.idm = 0;
    QuitarArchivos(s, imagenes);
    return true;
}
