#include "clients/import_plan.h"

#include "store/lookups.h"
#include "store/opening.h"
#include "store/settings_row.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace importacion
{

namespace
{

constexpr int FilasPorAvance = 2000;

template <typename T>
bool Contradice(const T &a, const T &b, const T &desconocido)
{
    return a != desconocido && b != desconocido && a != b;
}

} // namespace

QString FallaDeArchivo(const Sesion &s, const ArchivoDelimitado &archivo)
{
    switch (archivo.LaFalla()) {
    case ArchivoDelimitado::Falla::NoSeLee:
        return s(NoSeAbre).arg(archivo.ErrorDeSistema());
    case ArchivoDelimitado::Falla::NoEsTexto:
        return s(NoEsTexto);
    case ArchivoDelimitado::Falla::ComillasAbiertas:
        return s(ComillasAbiertas).arg(archivo.Linea());
    case ArchivoDelimitado::Falla::Ninguna:
        break;
    }
    return {};
}

bool Plan::Fallar(InformeDeImportacion::Falta falta, const QString &texto)
{
    informe.falta = falta;
    informe.falla = texto;
    return false;
}

bool Plan::Hacer(const Seguir &seguir)
{
    if (!Preparar() || !HallarOrden(seguir) || !Leer(seguir))
        return false;
    Cotejar();
    AvisarDeBienvenida();
    return true;
}

// What the daily run would do with so many clients at once. Nobody can be asked here.
void Plan::AvisarDeBienvenida()
{
    if (s.configuracion["AutNuevoCliente"].toInt() != 1)
        return;
    for (size_t n = 0; n < filas.size(); ++n)
        if (informe.lineas[n].suerte == Suerte::Nueva && AgregaCliente(filas[n])
            && !clientes[size_t(filas[n].cliente)].f.email.isEmpty()) {
            informe.notas << s(NotaDeBienvenida)
                                 .arg(s(Configuracion), s(Automatizacion), s(NuevoCliente),
                                      s(Nada_));
            return;
        }
}

// Whether the columns are enough to go by, and the lists that rows refer to.
bool Plan::Preparar()
{
    using Falta = InformeDeImportacion::Falta;
    m_columnaDe.fill(-1);
    for (int i = int(o.columnas.size()) - 1; i >= 0; --i)
        m_columnaDe[size_t(o.columnas[i])] = i;
    const bool conCliente = Hay(Dato::Cliente) || Hay(Dato::Apellido) || Hay(Dato::IdCliente);
    const bool conMascota = std::any_of(o.columnas.begin(), o.columnas.end(), EsDeMascota);
    m_propietario = Limpio(o.propietario, "clientes", "ayn");
    informe.notas << m_avisos;
    if (!conCliente && !conMascota)
        return Fallar(Falta::Columnas, s(SinNombres));
    if (!conCliente && m_propietario.isEmpty())
        return Fallar(Falta::Propietario, s(FaltaPropietario));
    if (EsNumerico(m_propietario))
        return Fallar(Falta::Propietario, s(NombreNumerico).arg(m_propietario));
    if (conMascota && !Hay(Dato::Mascota))
        informe.notas << s(NotaSinNombres);
    if (!conCliente && std::any_of(o.columnas.begin(), o.columnas.end(), [](Dato d) {
            return d != Dato::Nada && !EsDeMascota(d);
        }))
        informe.notas << s(NotaSinCliente);

    regiones.Cargar(s, nullptr);
    subregiones.Cargar(s, &regiones);
    especies.Cargar(s, nullptr);
    razas.Cargar(s, &especies);
    pelajes.Cargar(s, nullptr);
    return true;
}

bool Plan::Seguimos(const ArchivoDelimitado &archivo, const Seguir &seguir)
{
    s.avance.Barra(int(archivo.Leido() / 1024), int(archivo.Tamano() / 1024) + 1);
    informe.interrumpido = seguir && !seguir();
    return !informe.interrumpido;
}

// Looks through all birth dates for one that can be read in one way only.
bool Plan::HallarOrden(const Seguir &seguir)
{
    using Falta = InformeDeImportacion::Falta;
    if (o.orden || !Hay(Dato::Nacimiento)) {
        m_orden = o.orden.value_or(OrdenDeFecha::DiaMes);
        return true;
    }
    ArchivoDelimitado archivo(o.archivo);
    QStringList campos;
    archivo.Leer(campos);
    bool diaMes = false, mesDia = false, ambigua = false;
    for (int n = 0; archivo.Leer(campos); ++n) {
        if (n % FilasPorAvance == 0 && !Seguimos(archivo, seguir))
            return false;
        switch (OrdenQuePrueba(campos.value(m_columnaDe[size_t(Dato::Nacimiento)]))) {
        case PruebaDeOrden::DiaMes:
            diaMes = true;
            break;
        case PruebaDeOrden::MesDia:
            mesDia = true;
            break;
        case PruebaDeOrden::Ambigua:
            ambigua = true;
            break;
        case PruebaDeOrden::Ninguna:
            break;
        }
    }
    if (ambigua && diaMes == mesDia)
        return Fallar(Falta::Orden, s(FaltaOrden));
    m_orden = mesDia && !diaMes ? OrdenDeFecha::MesDia : OrdenDeFecha::DiaMes;
    return true;
}

bool Plan::Leer(const Seguir &seguir)
{
    using Falta = InformeDeImportacion::Falta;
    ArchivoDelimitado archivo(o.archivo);
    QStringList campos;
    const bool hay = archivo.Leer(campos);
    if (archivo.LaFalla() != ArchivoDelimitado::Falla::Ninguna)
        return Fallar(Falta::Archivo, FallaDeArchivo(s, archivo));
    if (!hay)
        return Fallar(Falta::Archivo, s(ArchivoVacio));
    const qsizetype titulos = campos.size();
    if (Hay(Dato::Peso)) {
        const QString titulo = campos.value(m_columnaDe[size_t(Dato::Peso)]).simplified();
        if (EsOtraUnidad(titulo))
            informe.notas << s(OtraUnidad).arg(UnidadPropia(), titulo);
    }
    for (int n = 0; archivo.Leer(campos); ++n) {
        if (n % FilasPorAvance == 0 && !Seguimos(archivo, seguir)) {
            informe.lineas.clear();
            return false;
        }
        LineaDeInforme linea;
        linea.linea = archivo.Linea();
        informe.lineas.push_back(linea);
        filas.emplace_back();
        const bool sobran =
            std::any_of(campos.begin() + std::min(titulos, campos.size()), campos.end(),
                        [](const QString &c) { return !c.trimmed().isEmpty(); });
        if (sobran) {
            informe.lineas.back().suerte = Suerte::Rechazada;
            informe.lineas.back().texto = s(SobranCampos).arg(campos.size()).arg(titulos);
            continue;
        }
        LeerFila(campos);
    }
    if (archivo.LaFalla() != ArchivoDelimitado::Falla::Ninguna)
        return Fallar(Falta::Archivo, FallaDeArchivo(s, archivo));
    return true;
}

QString Plan::Campo(Dato d) const
{
    const int columna = m_columnaDe[size_t(d)];
    return columna < 0 ? QString() : m_campos->value(columna).trimmed();
}

void Plan::Avisar(int texto, const QString &valor) { m_avisos << s(texto).arg(valor); }

// A text of one line as its column takes it; says what was changed.
QString Plan::Limpio(const QString &texto, const char *tabla, const char *columna)
{
    QString t = texto.simplified();
    if (t.isEmpty())
        return t;
    if (t.contains(u'\'')) {
        Avisar(ApostrofeQuitado, t);
        t = QuitarApostrofes(t).simplified();
    }
    if (const QString corto = s.clientes->Recortado(tabla, columna, t).trimmed(); corto != t) {
        Avisar(Cortado, t);
        return corto;
    }
    return t;
}

// A telephone or an address for mail as its column takes it. Of several, as many as fit whole: a
// part of a number reaches nobody.
QString Plan::LosQueCaben(const QString &texto, const char *columna)
{
    QString t = texto.simplified();
    if (t.contains(u'\'')) {
        Avisar(ApostrofeQuitado, t);
        t = QuitarApostrofes(t);
    }
    const int ancho = s.clientes->Ancho("clientes", columna);
    if (t.size() <= ancho)
        return t;
    Avisar(Cortado, t);
    static const QRegularExpression partes(u"\\s*[,;/]\\s*"_s);
    QString juntos;
    for (const QString &parte : t.split(partes, Qt::SkipEmptyParts)) {
        const QString mas = juntos.isEmpty() ? parte : juntos + u", "_s + parte;
        if (mas.size() <= ancho)
            juntos = mas;
    }
    return juntos;
}

// The place of a name in a list, at its end if it is new. -1 for none, or when the list is full.
int Plan::Entrar(ListaPrevista &lista, const QString &texto, int padre, const QString &codigo)
{
    const QString nom = Limpio(texto, lista.tabla, "nom");
    if (nom.isEmpty())
        return -1;
    const QString clave = Plegado(nom);
    if (const auto i = lista.porNombre.constFind(clave); i != lista.porNombre.constEnd())
        return *i;
    if (lista.libres <= 0) {
        Avisar(ListaLlena, nom);
        return -1;
    }
    --lista.libres;
    const int lugar = int(lista.entradas.size());
    lista.porNombre.insert(clave, lugar);
    lista.entradas.push_back({0, nom, codigo, padre});
    return lugar;
}

int Plan::Especie(const QString &texto)
{
    if (const auto i = especies.porNombre.constFind(Plegado(texto));
        i != especies.porNombre.constEnd())
        return *i;
    if (const int conocida = EspecieConocida(texto))
        if (const auto i = especies.porId.constFind(conocida); i != especies.porId.constEnd())
            return *i;
    return Entrar(especies, texto);
}

bool Plan::SiNo(Dato d)
{
    const QString texto = Campo(d);
    const auto valor = LeerSiNo(texto);
    if (!valor)
        Avisar(SiNoIlegible, texto);
    return valor.value_or(false);
}

// In which the clinic weighs.
QString Plan::UnidadPropia() const
{
    return s.configuracion["KgLbs"].toInt() == UnidadDePeso::Libras ? u"lb"_s : u"kg"_s;
}

bool Plan::EsOtraUnidad(const QString &texto) const
{
    const QString unidad = UnidadEscrita(texto);
    return !unidad.isEmpty() && unidad != UnidadPropia();
}

std::optional<FichaDeCliente> Plan::FichaDelCliente(QString &motivo)
{
    FichaDeCliente f;
    f.ayn = Campo(Dato::Apellido) + u' ' + Campo(Dato::Cliente);
    const bool sinNombre = f.ayn.trimmed().isEmpty();
    if (const QString numero = Campo(Dato::IdCliente); sinNombre && !numero.isEmpty()) {
        f.ayn = s(PropietarioNumero).arg(numero);
    } else if (sinNombre) {
        if (m_propietario.isEmpty()) {
            motivo = s(SinNombreDeCliente);
            return std::nullopt;
        }
        f.ayn = m_propietario; // nothing else in the row tells of this client
        return f;
    }
    f.ayn = Limpio(f.ayn, "clientes", "ayn");
    if (f.ayn.isEmpty() || EsNumerico(f.ayn)) {
        motivo = f.ayn.isEmpty() ? s(SinNombreDeCliente) : s(NombreNumerico).arg(f.ayn);
        return std::nullopt;
    }
    f.dir = Limpio(Campo(Dato::Direccion), "clientes", "dir");
    f.codp2 = Limpio(Campo(Dato::CodigoPostal), "clientes", "codp2");
    f.codt2 = Limpio(Campo(Dato::CodigoDeArea), "clientes", "codt2");
    f.tel2 = LosQueCaben(Campo(Dato::Telefono), "tel2");
    f.telc2 = LosQueCaben(Campo(Dato::Movil), "telc2");
    f.email = LosQueCaben(Campo(Dato::Email), "email");
    f.obs = QuitarApostrofes(Campo(Dato::NotasDeCliente));
    f.region = Campo(Dato::Region);
    f.subregion = Campo(Dato::Subregion);
    for (QString *lugar : {&f.region, &f.subregion})
        if (EsNumerico(*lugar)) {
            Avisar(SubregionNumerica, *lugar);
            lugar->clear();
        }
    return f;
}

std::optional<MascotaPrevista> Plan::FichaDeLaMascota(QString &motivo, bool &hay)
{
    hay = false;
    for (int d = int(Dato::Mascota); d < CuantosDatos; ++d)
        hay = hay || !Campo(Dato(d)).isEmpty();
    if (!hay)
        return std::nullopt;

    MascotaPrevista m;
    m.f.nom = Limpio(Campo(Dato::Mascota), "mascotas", "nom");
    if (Hay(Dato::Mascota) && (m.f.nom.isEmpty() || EsNumerico(m.f.nom))) {
        motivo = m.f.nom.isEmpty() ? s(SinNombreDeMascota) : s(NombreNumerico).arg(m.f.nom);
        return std::nullopt;
    }
    m.especie = Especie(Campo(Dato::Especie));
    m.raza = Entrar(razas, Campo(Dato::Raza), m.especie);
    if (m.especie < 0 && m.raza >= 0)
        m.especie = razas.entradas[size_t(m.raza)].padre;
    m.pelaje = Entrar(pelajes, Campo(Dato::Pelaje));
    m.f.car = Limpio(Campo(Dato::Marcas), "mascotas", "car");
    m.f.Chip = Limpio(Campo(Dato::Chip), "mascotas", "Chip");
    m.f.obs = QuitarApostrofes(Campo(Dato::NotasDeMascota));
    m.f.ped = SiNo(Dato::Pedigri);
    m.f.dec = SiNo(Dato::Fallecido);

    if (const QString texto = Campo(Dato::Nacimiento); !texto.isEmpty()) {
        const QDate dia = LeerFecha(texto, m_orden);
        if (dia.isValid() && dia.year() >= 1900 && dia <= s.reloj.hoy)
            m.f.fecn = dia;
        else
            Avisar(FechaIlegible, texto);
    }
    if (const QString texto = Campo(Dato::Peso); !texto.isEmpty()) {
        const auto peso = LeerPeso(texto);
        if (!peso)
            Avisar(PesoIlegible, texto);
        else if (EsOtraUnidad(texto))
            m_avisos << s(OtraUnidad).arg(UnidadPropia(), texto);
        m.f.pes = peso.value_or(0);
    }
    if (const QString texto = Campo(Dato::Sexo); !texto.isEmpty()) {
        const auto sexo = LeerSexo(texto);
        if (!sexo)
            Avisar(SexoIlegible, texto);
        m.conSexo = sexo.has_value();
        m.f.sex = sexo.value_or(0);
    }
    if (SiNo(Dato::Castrado) && m.f.sex < 2)
        m.f.sex += 2;
    return m;
}

void Plan::LeerFila(const QStringList &campos)
{
    m_campos = &campos;
    m_avisos.clear();
    LineaDeInforme &linea = informe.lineas.back();
    FilaPrevista &fila = filas.back();

    QString motivo;
    bool hayMascota = false;
    auto mascota = FichaDeLaMascota(motivo, hayMascota);
    std::optional<FichaDeCliente> cliente;
    if (motivo.isEmpty())
        cliente = FichaDelCliente(motivo);
    if (!motivo.isEmpty() || !cliente) {
        linea.suerte = Suerte::Rechazada;
        linea.texto = motivo;
        linea.cliente = (Campo(Dato::Apellido) + u' ' + Campo(Dato::Cliente)).trimmed();
        linea.mascota = Campo(Dato::Mascota);
        return;
    }
    const auto antes = clientes.size();
    fila.cliente = ClienteDe(*cliente, Campo(Dato::IdCliente));
    fila.abreCliente = clientes.size() > antes;
    linea.cliente = clientes[size_t(fila.cliente)].f.ayn;
    if (mascota) {
        mascota->cliente = fila.cliente;
        const auto eran = mascotas.size();
        fila.mascota = MascotaDe(std::move(*mascota), linea.linea);
        fila.abreMascota = mascotas.size() > eran;
        linea.mascota = mascotas[size_t(fila.mascota)].f.nom;
    }
    linea.aviso = !m_avisos.isEmpty();
    linea.texto = m_avisos.join(u"; "_s);
}

// Which owner of the file a row tells of. Owners with a number of their own are told apart by it,
// all others by what they are known by. Two owners of one name never share a telephone, mail or
// street address, so that every one finds itself again when the file is imported once more.
int Plan::ClienteDe(const FichaDeCliente &f, const QString &numero)
{
    if (const auto i = m_clientePorNumero.constFind(numero);
        !numero.isEmpty() && i != m_clientePorNumero.constEnd()) {
        Completar(*i, f);
        return *i;
    }
    const SenasDeCliente senas = SenasDe(f);
    int cual = m_directorio.ConSenaComun(senas);
    if (cual < 0 && numero.isEmpty())
        cual = m_directorio.Indistinto(senas);
    if (cual >= 0) {
        Completar(cual, f);
    } else {
        cual = int(clientes.size());
        ClientePrevisto c;
        c.f = f;
        c.senas = senas;
        c.region = Entrar(regiones, f.region, -1, f.codt2);
        c.subregion = Entrar(subregiones, f.subregion, c.region, f.codp2);
        clientes.push_back(std::move(c));
        m_directorio.Agregar(cual, senas);
    }
    if (!numero.isEmpty())
        m_clientePorNumero.insert(numero, cual);
    return cual;
}

// What a further row of an owner knows better than the rows before it.
void Plan::Completar(int cliente, FichaDeCliente f)
{
    ClientePrevisto &c = clientes[size_t(cliente)];
    f.ayn = c.f.ayn;
    // A telephone that is another owner's of this name stays with that one.
    FichaDeCliente soloSenas;
    soloSenas.ayn = f.ayn;
    for (QString FichaDeCliente::*campo : {&FichaDeCliente::tel2, &FichaDeCliente::telc2,
                                           &FichaDeCliente::email, &FichaDeCliente::dir}) {
        if (!(c.f.*campo).isEmpty() || (f.*campo).isEmpty())
            continue;
        soloSenas.*campo = f.*campo;
        const SenasDeCliente nueva = SenasDe(soloSenas);
        (soloSenas.*campo).clear();
        m_directorio.Quitar(cliente, c.senas);
        const int deQuien = m_directorio.ConSenaComun(nueva);
        if (deQuien < 0)
            c.f.*campo = f.*campo;
        c.senas = SenasDe(c.f);
        m_directorio.Agregar(cliente, c.senas);
    }
    for (QString FichaDeCliente::*campo :
         {&FichaDeCliente::codp2, &FichaDeCliente::codt2, &FichaDeCliente::obs})
        if ((c.f.*campo).isEmpty())
            c.f.*campo = f.*campo;
    if (c.region < 0)
        c.region = Entrar(regiones, f.region, -1, f.codt2);
    if (c.subregion < 0)
        c.subregion = Entrar(subregiones, f.subregion, c.region, f.codp2);
}

bool Plan::MismaMascota(const MascotaPrevista &a, const MascotaPrevista &b) const
{
    return !Contradice(a.especie, b.especie, -1) && !Contradice(a.raza, b.raza, -1)
           && !Contradice(a.pelaje, b.pelaje, -1) && !Contradice(a.f.fecn, b.f.fecn, QDate())
           && !Contradice(a.f.Chip, b.f.Chip, QString())
           && !(a.conSexo && b.conSexo && a.f.sex % 2 != b.f.sex % 2);
}

// What a further row of an animal knows and the rows before it did not.
void Plan::Completar(MascotaPrevista &m, const MascotaPrevista &otra)
{
    for (int MascotaPrevista::*lugar :
         {&MascotaPrevista::especie, &MascotaPrevista::raza, &MascotaPrevista::pelaje})
        if (m.*lugar < 0)
            m.*lugar = otra.*lugar;
    for (QString FichaDePaciente::*campo :
         {&FichaDePaciente::car, &FichaDePaciente::Chip, &FichaDePaciente::obs})
        if ((m.f.*campo).isEmpty())
            m.f.*campo = otra.f.*campo;
    if (!m.f.fecn.isValid())
        m.f.fecn = otra.f.fecn;
    if (m.f.pes == 0)
        m.f.pes = otra.f.pes;
    if (!m.conSexo && otra.conSexo) {
        m.conSexo = true;
        m.f.sex = otra.f.sex % 2 + (m.f.sex >= 2 ? 2 : 0);
    }
    if (otra.f.sex >= 2 && m.f.sex < 2)
        m.f.sex += 2;
    m.f.ped = m.f.ped || otra.f.ped;
    m.f.dec = m.f.dec || otra.f.dec;
}

// Which animal of the file a row tells of, among those of one owner with one name: where there is a
// number, it says; else the first that the row does not contradict. Animals without name or number
// are one each.
int Plan::MascotaDe(MascotaPrevista m, int linea)
{
    const int nueva = int(mascotas.size());
    const QString clave = QString::number(m.cliente) + u'\n' + Plegado(m.f.nom);
    if (const QString numero = Campo(Dato::IdMascota); !numero.isEmpty()) {
        const auto i = m_mascotaPorNumero.constFind(clave + u'\n' + numero);
        if (i != m_mascotaPorNumero.constEnd()) {
            Completar(mascotas[size_t(*i)], m);
            return *i;
        }
        m_mascotaPorNumero.insert(clave + u'\n' + numero, nueva);
        if (m.f.nom.isEmpty())
            m.f.nom = Limpio(s(PacienteNumero).arg(numero), "mascotas", "nom");
    } else if (m.f.nom.isEmpty()) {
        m.f.nom = s(PacienteNumero).arg(++clientes[size_t(m.cliente)].anonimas);
    } else {
        std::vector<int> &tocayas = m_mascotasPorNombre[clave];
        for (const int i : tocayas)
            if (MismaMascota(mascotas[size_t(i)], m)) {
                Completar(mascotas[size_t(i)], m);
                return i;
            }
        tocayas.push_back(nueva);
    }
    m.linea = linea;
    mascotas.push_back(std::move(m));
    return nueva;
}

// Finds what is there already and counts how far the identifiers reach. Whoever is in the clinic
// answers for one owner or animal of the file only, in the order of both; so a file that was
// imported finds all of itself again.
void Plan::Cotejar()
{
    DirectorioDeClientes conocidos;
    QHash<int, SenasDeCliente> senas;
    Recordset c = s.clientes->OpenSnapshot(
        "select idc, ayn, dir, tel2, telc2, email from clientes order by idc");
    for (; !c.EOF_(); c.MoveNext()) {
        FichaDeCliente f;
        f.idc = c[0].toInt();
        f.ayn = c[1].toText();
        f.dir = c[2].toText();
        f.tel2 = c[3].toText();
        f.telc2 = c[4].toText();
        f.email = c[5].toText();
        SenasDeCliente d = SenasDe(f);
        conocidos.Agregar(f.idc, d);
        senas.insert(f.idc, std::move(d));
    }
    for (ClientePrevisto &previsto : clientes) {
        int idc = conocidos.ConSenaComun(previsto.senas);
        if (idc < 0)
            idc = conocidos.Indistinto(previsto.senas);
        if (idc < 0)
            continue;
        previsto.existente = true;
        previsto.f.idc = idc;
        conocidos.Quitar(idc, senas[idc]);
    }

    QHash<QString, std::vector<PacienteConocido>> pacientes;
    const auto clave = [](int idc, const QString &nom) {
        return QString::number(idc) + u'\n' + Plegado(nom);
    };
    Recordset p =
        s.clientes->OpenSnapshot("select idc, nom, esp, fecn, Chip from mascotas order by idm");
    for (; !p.EOF_(); p.MoveNext())
        pacientes[clave(p[0].toInt(), p[1].toText())].push_back(
            {p[2].toInt(), p[3].toDate(), p[4].toText(), false});
    for (MascotaPrevista &m : mascotas) {
        const ClientePrevisto &dueno = clientes[size_t(m.cliente)];
        if (!dueno.existente)
            continue;
        const auto i = pacientes.find(clave(dueno.f.idc, m.f.nom));
        if (i == pacientes.end())
            continue;
        // A species that is to be added yet is nobody's.
        const int esp = m.especie < 0 ? 0 : especies.Id(m.especie) ? especies.Id(m.especie) : -1;
        for (PacienteConocido &conocido : *i) {
            if (conocido.tomado || Contradice(esp, conocido.esp, 0)
                || Contradice(m.f.fecn, conocido.fecn, QDate())
                || Contradice(m.f.Chip, conocido.chip, QString()))
                continue;
            conocido.tomado = m.existente = true;
            break;
        }
    }

    const auto libres = [this](const char *contador) {
        return MayorIdDe16Bits
               - s.morvane->Leer("select " + std::string(contador) + " from configuracion").toInt();
    };
    int clientesLibres = libres("contadorclientes"), mascotasLibres = libres("contadormascotas");
    bool lleno = false;
    for (size_t n = 0; n < filas.size(); ++n) {
        const FilaPrevista &fila = filas[n];
        LineaDeInforme &linea = informe.lineas[n];
        if (linea.suerte == Suerte::Rechazada)
            continue;
        const bool cliente = AgregaCliente(fila), mascota = AgregaMascota(fila);
        MascotaPrevista *m = fila.mascota < 0 ? nullptr : &mascotas[size_t(fila.mascota)];
        if (!cliente && !mascota) {
            linea.suerte = m && m->sinLugar ? Suerte::SinLugar : Suerte::Existente;
            if (m && !fila.abreMascota)
                linea.texto +=
                    (linea.texto.isEmpty() ? QString() : u"; "_s) + s(Repetida).arg(m->linea);
            continue;
        }
        // The first line that does not fit ends it: no gaps, and nothing without its owner.
        lleno = lleno || (cliente && clientesLibres == 0) || (mascota && mascotasLibres == 0);
        if (lleno) {
            linea.suerte = Suerte::SinLugar;
            if (m)
                m->sinLugar = true;
        } else {
            clientesLibres -= cliente;
            mascotasLibres -= mascota;
        }
    }
    Contar();
}

bool Plan::AgregaCliente(const FilaPrevista &fila) const
{
    return fila.abreCliente && !clientes[size_t(fila.cliente)].existente;
}

bool Plan::AgregaMascota(const FilaPrevista &fila) const
{
    return fila.abreMascota && !mascotas[size_t(fila.mascota)].existente;
}

void Plan::Contar()
{
    InformeDeImportacion &i = informe;
    i.clientesNuevos = i.clientesExistentes = i.mascotasNuevas = i.mascotasExistentes = 0;
    i.rechazadas = i.avisos = i.sinLugar = i.primeraSinLugar = 0;
    for (size_t n = 0; n < filas.size(); ++n) {
        const FilaPrevista &fila = filas[n];
        const LineaDeInforme &linea = i.lineas[n];
        if (linea.suerte == Suerte::Rechazada) {
            ++i.rechazadas;
            continue;
        }
        if (linea.suerte == Suerte::SinLugar) {
            if (i.sinLugar++ == 0)
                i.primeraSinLugar = linea.linea;
            continue;
        }
        const bool cliente = AgregaCliente(fila), mascota = AgregaMascota(fila);
        i.avisos += linea.aviso;
        i.clientesNuevos += cliente;
        i.mascotasNuevas += mascota;
        i.clientesExistentes += fila.abreCliente && !cliente;
        i.mascotasExistentes += fila.mascota >= 0 && !mascota;
    }
}

} // namespace importacion
