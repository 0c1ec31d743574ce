#include "clients/deletion.h"

#include "agenda/tasks.h"
#include "store/data_folder.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// An image file of a patient: its folder, and its name, which is the patient's number, the row's
// number and the image's number run together.
struct Image {
    QString folder;
    QString name;
};

std::vector<int> numbersOf(Recordset r)
{
    std::vector<int> numbers;
    for (; !r.EOF_(); r.MoveNext())
        numbers.push_back(r[0].toInt());
    return numbers;
}

std::vector<Image> imagesOf(Sesion &s, int idm)
{
    std::vector<Image> images;
    const QString animal = QString::number(idm), bmp = u".bmp"_s;
    if (s.clientes->read("select fot from mascotas where idm = ?", idm).toBool())
        images.push_back({u"mascotas/fot"_s, animal + bmp});
    const auto numbered = [&](const QString &folder, Recordset r) {
        for (; !r.EOF_(); r.MoveNext())
            for (int n = 1; n <= r[1].toInt(); ++n)
                images.push_back({folder, animal + r[0].toText() + QString::number(n) + bmp});
    };
    numbered(
        u"mascotas/cli"_s,
        s.clientes->OpenSnapshot("select idclinica, cantfotos from mclinica where idm = ?", idm));
    numbered(u"mascotas/eco"_s,
             s.clientes->OpenSnapshot("select ideco, cantfotos from meco where idm = ?", idm));
    for (const int id : numbersOf(
             s.clientes->OpenSnapshot("select idray from mrayos where idm = ? and ray = -1", idm)))
        images.push_back({u"mascotas/ray"_s, animal + QString::number(id) + bmp});
    return images;
}

// Whether another patient has an image of that name: 1 with 23 and 12 with 3 make the same one.
bool isOfOther(Sesion &s, const Image &image)
{
    const QString figures = image.name.chopped(4);
    const bool xrays = image.folder.endsWith(u"ray");
    const std::string_view sql =
        xrays ? "select idray from mrayos where idm = ? and idray = ? and ray = -1"
        : image.folder.endsWith(u"cli")
            ? "select cantfotos from mclinica where idm = ? and idclinica = ?"
            : "select cantfotos from meco where idm = ? and ideco = ?";
    if (image.folder.endsWith(u"fot"))
        return false;
    for (qsizetype end = xrays ? figures.size() : 2; end <= figures.size(); ++end)
        for (qsizetype middle = 1; middle < end; ++middle) {
            const QString id = figures.sliced(middle, end - middle), n = figures.sliced(end);
            if (id.startsWith(u'0') || n.startsWith(u'0') || n.isEmpty() != xrays)
                continue;
            const store::Value v =
                s.clientes->read(sql, figures.first(middle).toLongLong(), id.toLongLong());
            if (!v.isNull() && (xrays || n.toLongLong() <= v.toLong()))
                return true;
        }
    return false;
}

// Removes files, ignoring the case of their names and reading each folder only once.
void removeFiles(Sesion &s, const std::vector<Image> &images)
{
    QHash<QString, QHash<QString, QString>> folders;
    for (const Image &i : images) {
        if (isOfOther(s, i))
            continue;
        const QDir dir(store::pathUnder(s.dataFolder, i.folder));
        auto loaded = folders.find(i.folder);
        if (loaded == folders.end()) {
            loaded = folders.insert(i.folder, {});
            for (const QString &name : dir.entryList(QDir::Files))
                loaded->insert(name.toLower(), name);
        }
        if (const QString name = loaded->value(i.name); !name.isEmpty())
            QFile::remove(dir.filePath(name));
    }
}

// Deletes everything that belongs to a patient, but not the patient's own row.
void cascade(Sesion &s, int idm)
{
    for (const std::string_view sql :
         {"delete * from ArtPlan where idm = ?", "delete * from Mauri where idm = ?",
          "delete * from Mahemograma where idm = ?", "delete * from Mabio where idm = ?",
          "delete * from Macultivo where idm = ?", "delete * from Macopro where idm = ?",
          "delete * from Minter where idm = ?", "delete * from mhospedaje where idm = ?"})
        s.clientes->Execute(sql, idm);
    // Only these kinds of task refer to a patient; others hold a client or a user in that column.
    s.morvane->Execute("delete * from TareasAgenda where ida = ? and (tip > 0 or tip in (?, ?, ?, "
                       "?, ?))",
                       idm, agenda::TaskKind::FoodShortage, agenda::TaskKind::DoseReminder,
                       agenda::TaskKind::Birthday, agenda::TaskKind::DiscontinuedDose,
                       agenda::TaskKind::FeaturedBirthday);
    for (const std::string_view sql :
         {"delete * from Meco where idm = ?", "delete * from Mclinica where idm = ?",
          "delete * from Mrayos where idm = ?"})
        s.clientes->Execute(sql, idm);
}

// Stops the patient's appointments from ringing. Only the alarms loaded at the start are known.
void silenceAlarms(Sesion &s, int idm)
{
    for (store::Alarm &a : s.Alarmas)
        if (a.tip > 0 && a.ida == idm)
            a.attended = true;
}

// Asks with the name, so that a row picked by mistake is noticed.
bool sure(Sesion &s, const QString &what)
{
    return s.dialogos.askBeforeLoss(s(text::DeleteQuestion) + u"\n\n"_s + what);
}

bool isCommon(Sesion &s)
{
    if (s.user.isCommon())
        s.dialogos.Mensaje(s(text::FeatureNotAvailable));
    return s.user.isCommon();
}

} // namespace

bool clients::deleteClient(Sesion &s, int idc)
{
    if (isCommon(s))
        return false;
    const Recordset r =
        s.clientes->OpenSnapshot("select ayn, obra, deuda from clientes where idc = ?", idc);
    if (r.EOF_()) {
        s.dialogos.Mensaje(s(text::ClientIsGone));
        return true;
    }
    const int obra = r["obra"].toInt();
    if (obra == 1 || obra == 2) {
        s.dialogos.Mensaje(s(text::ClientHasPrepaid));
        return false;
    }
    if (r["deuda"].toBool()) {
        s.dialogos.Mensaje(s(text::ClientHasDebt));
        return false;
    }
    const int count = s.clientes->read("select count(*) from mascotas where idc = ?", idc).toInt();
    if (!sure(s, r["ayn"].toText() + (count > 0 ? s(text::AndItsPatients).arg(count) : QString())))
        return false;

    std::vector<Image> images;
    std::vector<int> patients;
    {
        Lote lote(s);
        patients =
            numbersOf(s.clientes->OpenSnapshot("select idm from mascotas where idc = ?", idc));
        s.progress.tellStage(s(text::Deleting));
        for (size_t i = 0; i < patients.size(); ++i) {
            const auto its = imagesOf(s, patients[i]);
            images.insert(images.end(), its.begin(), its.end());
            cascade(s, patients[i]);
            s.progress.tellBar(int(i) + 1, int(patients.size()));
        }
        s.clientes->Execute("delete * from mascotas where idc = ?", idc);
        if (obra == 3) {
            s.os->Execute("delete * from socios where idc = ?", idc);
            s.os->Execute("delete * from MascotasAsociadas where idc = ?", idc);
        }
        s.clientes->Execute("delete * from clientes where idc = ?", idc);
        lote.commit();
    }
    for (const int idm : patients)
        silenceAlarms(s, idm);
    if (s.IdGlobal.idc == idc)
        s.IdGlobal = {};
    removeFiles(s, images);
    return true;
}

bool clients::deletePatient(Sesion &s, int idm)
{
    if (isCommon(s))
        return false;
    const Recordset r = s.clientes->OpenSnapshot("select nom from mascotas where idm = ?", idm);
    if (r.EOF_()) {
        s.dialogos.Mensaje(s(text::PatientIsGone));
        return true;
    }
    if (!sure(s, r["nom"].toText()))
        return false;
    s.progress.tellStage(s(text::Deleting));
    std::vector<Image> images;
    {
        Lote lote(s);
        images = imagesOf(s, idm);
        cascade(s, idm);
        s.clientes->Execute("delete * from mascotas where idm = ?", idm);
        lote.commit();
    }
    silenceAlarms(s, idm);
    if (s.IdGlobal.idm == idm)
        s.IdGlobal.idm = 0;
    removeFiles(s, images);
    return true;
}
