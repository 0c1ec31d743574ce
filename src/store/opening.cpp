#include "store/opening.h"

#include "store/data_folder.h"
#include "store/schema.h"
#include "texts/texts.h"

using namespace store;

namespace
{

QString textOf(const Sesion &s, const StoreError &e)
{
    return e.number == ErrorNumber::DatabaseNotFound ? s(text::CannotOpenDatabase)
                                                     : errorText(s, e);
}

void openLists(Sesion &s)
{
    s.configuracion = s.morvane->OpenList("select * from configuracion");
    Lists &l = s.lists;
    l.flcategorias = s.finanzas->OpenList("select * from flcategorias order by nom");
    l.mlrazas = s.clientes->OpenList("select * from mlrazas order by nom");
    l.mlespecies = s.clientes->OpenList("select * from mlespecies order by nom");
    l.proveedores = s.finanzas->OpenList("select * from proveedores");
    l.artvenc = s.finanzas->OpenList("select * from ArtVenc");
    l.cllocalidad = s.clientes->OpenList("select * from CLlocalidad order by nom");
    l.cldepartamento = s.clientes->OpenList("select * from CLDepartamento order by nom");
    l.clientes = s.clientes->OpenList("select * from Clientes order by idc", "idc");
    l.mascotas = s.clientes->OpenList("select * from Mascotas order by idm", "idm");
    l.artplan = s.clientes->OpenList("select * from artplan", "idm");
}

std::unique_ptr<Base> openBase(Sesion &s, const QString &base)
{
    s.motor->open(pathUnder(s.dataFolder, fileOf(base)), base.toStdString());
    return std::make_unique<Base>(*s.motor, base.toStdString(), s.reloj);
}

} // namespace

QString store::errorText(const Sesion &s, const StoreError &e)
{
    switch (e.number) {
    case ErrorNumber::FullDisk:
        return s(text::DiskIsFull);
    case ErrorNumber::ReadOnly:
        return s(text::FolderIsReadOnly);
    case ErrorNumber::Locked:
        return s(text::HeldByAnotherTerminal);
    case ErrorNumber::PathOrDisk:
        return s(text::FolderUnreachable) + u'\n' + e.description;
    case ErrorNumber::DatabaseDamaged:
        return s(text::DatabaseDamaged) + u'\n' + e.description;
    default:
        return e.description;
    }
}

std::optional<OpeningFailure> store::openStore(Sesion &s)
{
    try {
        s.motor = createFileEngine();
        s.morvane = openBase(s, QStringLiteral("morvane"));
        s.clientes = openBase(s, QStringLiteral("clientes"));
        s.finanzas = openBase(s, QStringLiteral("finanzas"));
        openLists(s);
        if (s.configuracion.RecordCount() == 0)
            return OpeningFailure{ErrorNumber::NoCurrentRecord, s(text::SettingsRowMissing)};
        // Tried now and taken back: a start that cannot write is no start.
        Lote test(s);
        s.morvane->Execute("update configuracion set Ver = Ver");
    } catch (const StoreError &e) {
        return OpeningFailure{e.number, textOf(s, e)};
    }
    return std::nullopt;
}

Base &store::openScratch(Sesion &s, const QString &base)
{
    closeScratch(s);
    s.scratch = openBase(s, base);
    return *s.scratch;
}

void store::closeScratch(Sesion &s)
{
    if (!s.scratch)
        return;
    const std::string schema = s.scratch->Schema();
    s.scratch.reset();
    s.motor->close(schema);
}

void store::readClinic(Sesion &s)
{
    const Recordset r = s.morvane->OpenSnapshot("select * from veterinaria");
    s.clinic = r.EOF_() ? ClinicData{}
                        : ClinicData{r["nom"].toText(), r["pro"].toText(), r["dir"].toText(),
                                     r["tel"].toText()};
}
