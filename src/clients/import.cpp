#include "clients/import.h"

#include "clients/delimited_file.h"
#include "clients/import_matching.h"
#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "store/identifiers.h"
#include "store/lookups.h"
#include "store/opening.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Forma = 9754,
    NombresDeSeparador,
    NombresDeSuerte = 9764,
    ResumenClientes = 9766,
    ResumenPacientes,
    ResumenLineas,
    ResumenSinLugar,
    FueEnSeco,
    FueEscrito,
    FueInterrumpido,
    FuePorError,
    NoSeAbre,
    NoEsTexto,
    ComillasAbiertas,
    ArchivoVacio,
    SinNombres,
    FaltaPropietario,
    FaltaOrden,
    ColumnaDesconocida,
    DatoDesconocido,
    SinNombreDeMascota,
    SinNombreDeCliente,
    NombreNumerico,
    SobranCampos,
    ApostrofeQuitado,
    Cortado,
    FechaIlegible,
    SexoIlegible,
    PesoIlegible,
    SubregionNumerica,
    ListaLlena,
    Repetida,
    PropietarioNumero,
    PacienteNumero,
    SiNoIlegible,
    NotaSinNombres,
    NotaSinCliente,
};

constexpr int FilasPorLote = 500;
constexpr int FilasPorAvance = 2000;
constexpr int MayorIdDeEspecie = 255;

QString Plegado(const QString &t) { return t.simplified().toCaseFolded(); }

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

// --- Reference lists, as they will be once the rows are written

struct EntradaPrevista {
    int id = 0; // 0: to be added when the first row that uses it is written
    QString nom;
    QString codigo;
    int padre = -1; // place in the parent list
    int usos = 0;   // since ranks were last raised
};

struct ListaPrevista {
    Lista lista;
    const char *tabla;
    const char *contador;
    int maximo = MayorIdDe16Bits;
    int libres = 0;
    std::vector<EntradaPrevista> entradas = {};
    QHash<QString, int> porNombre = {};
    QHash<int, int> porId = {};

    void Cargar(Sesion &s, const ListaPrevista *padres)
    {
        libres =
            maximo
            - s.morvane->Leer("select " + std::string(contador) + " from configuracion").toInt();
        for (const Entrada &e : CargarLista(s, lista)) {
            porNombre.insert(Plegado(e.nom), int(entradas.size()));
            porId.insert(e.id, int(entradas.size()));
            entradas.push_back(
                {e.id, e.nom, e.codigo, padres ? padres->porId.value(e.padre, -1) : -1});
        }
    }

    int Id(int lugar) const { return lugar < 0 ? 0 : entradas[size_t(lugar)].id; }
};

// --- What a row tells

struct ClientePrevisto {
    FichaDeCliente f; // idc: the client that is there, or once it is written
    SenasDeCliente senas;
    int region = -1;
    int subregion = -1;
    int anonimas = 0; // animals without a name so far
    bool existente = false;
};

struct MascotaPrevista {
    FichaDePaciente f;
    int cliente = -1;
    int especie = -1;
    int raza = -1;
    int pelaje = -1;
    int linea = 0;
    bool conSexo = false;
    bool existente = false;
    bool sinLugar = false;
};

struct FilaPrevista {
    int cliente = -1;
    int mascota = -1;
    bool abreCliente = false; // the first row of its owner
    bool abreMascota = false;
};

// A patient of the clinic that a row may mean.
struct PacienteConocido {
    int esp = 0;
    QDate fecn;
    QString chip;
    bool tomado = false; // by a row: each patient is one animal of the file at most
};

template <typename T>
bool Contradice(const T &a, const T &b, const T &desconocido)
{
    return a != desconocido && b != desconocido && a != b;
}

struct Plan {
    Plan(Sesion &sesion, const OpcionesDeImportacion &opciones) : s(sesion), o(opciones) {}

    Sesion &s;
    const OpcionesDeImportacion &o;
    InformeDeImportacion informe;
    std::vector<ClientePrevisto> clientes;
    std::vector<MascotaPrevista> mascotas;
    std::vector<FilaPrevista> filas; // beside informe.lineas

    ListaPrevista regiones{Lista::Region, "cldepartamento", "contadordep"};
    ListaPrevista subregiones{Lista::Subregion, "cllocalidad", "contadorloc"};
    ListaPrevista especies{Lista::Especie, "mlespecies", "contadorespecie", MayorIdDeEspecie};
    ListaPrevista razas{Lista::Raza, "mlrazas", "contadorRaza"};
    ListaPrevista pelajes{Lista::Pelaje, "mlpelajes", "contadorpelaje"};

    bool Hacer(const Seguir &seguir);
    void Escribir(const Seguir &seguir);

private:
    bool Fallar(InformeDeImportacion::Falta falta, const QString &texto);
    bool Preparar();
    bool HallarOrden(const Seguir &seguir);
    bool Seguimos(const ArchivoDelimitado &archivo, const Seguir &seguir);
    bool Leer(const Seguir &seguir);
    void LeerFila(const QStringList &campos);
    void Cotejar();
    bool AgregaCliente(const FilaPrevista &fila) const;
    bool AgregaMascota(const FilaPrevista &fila) const;
    void Contar();

    bool Hay(Dato d) const { return m_columnaDe[size_t(d)] >= 0; }
    QString Campo(Dato d) const;
    void Avisar(int texto, const QString &valor);
    QString Limpio(const QString &texto, const char *tabla, const char *columna);
    QString LosQueCaben(const QString &texto, const char *columna);
    int Entrar(ListaPrevista &lista, const QString &texto, int padre = -1,
               const QString &codigo = {});
    int Especie(const QString &texto);
    bool SiNo(Dato d);

    std::optional<FichaDeCliente> FichaDelCliente(QString &motivo);
    std::optional<MascotaPrevista> FichaDeLaMascota(QString &motivo, bool &hay);
    int ClienteDe(const FichaDeCliente &f, const QString &numero);
    void Completar(int cliente, FichaDeCliente f);
    int MascotaDe(MascotaPrevista m, int linea);
    void Completar(MascotaPrevista &m, const MascotaPrevista &otra);
    bool MismaMascota(const MascotaPrevista &a, const MascotaPrevista &b) const;

    void Escribir(ClientePrevisto &c);
    void Escribir(MascotaPrevista &m);
    int Escrita(ListaPrevista &lista, int lugar);
    void SubirRangos(ListaPrevista &lista);

    std::array<int, CuantosDatos> m_columnaDe{};
    const QStringList *m_campos = nullptr;
    QStringList m_avisos; // of the row at hand
    OrdenDeFecha m_orden = OrdenDeFecha::DiaMes;
    QString m_propietario; // of rows that name none

    DirectorioDeClientes m_directorio;
    QHash<QString, int> m_clientePorNumero;
    QHash<QString, int> m_mascotaPorNumero;
    QHash<QString, std::vector<int>> m_mascotasPorNombre;
};

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
    return true;
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

// --- Writing

// The id of an entry, which is added when the first row that uses it is written. That it is new the
// plan knows: asking the file again for each would take as long as the list is, every time.
int Plan::Escrita(ListaPrevista &lista, int lugar)
{
    if (lugar < 0)
        return 0;
    EntradaPrevista &e = lista.entradas[size_t(lugar)];
    ++e.usos;
    if (e.id)
        return e.id;
    e.id = TomarIdentificador(s, lista.contador, lista.maximo);
    switch (lista.lista) {
    case Lista::Region:
        s.clientes->Execute("insert into cldepartamento (id, nom, ctel) values (?, ?, ?)", e.id,
                            e.nom, e.codigo);
        break;
    case Lista::Subregion:
        s.clientes->Execute("insert into cllocalidad (id, nom, cp, dep) values (?, ?, ?, ?)", e.id,
                            e.nom, e.codigo, regiones.Id(e.padre));
        break;
    case Lista::Raza:
        s.clientes->Execute("insert into mlrazas (id, nom, esp) values (?, ?, ?)", e.id, e.nom,
                            especies.Id(e.padre));
        break;
    default:
        s.clientes->Execute("insert into " + std::string(lista.tabla) + " (id, nom) values (?, ?)",
                            e.id, e.nom);
    }
    return e.id;
}

void Plan::SubirRangos(ListaPrevista &lista)
{
    const std::string sql = "update " + std::string(lista.tabla)
                            + " set ran = IIf(ran + ? > 32000, 32000, ran + ?) where id = ?";
    for (EntradaPrevista &e : lista.entradas)
        if (e.usos > 0) {
            s.clientes->Execute(sql, e.usos, e.usos, e.id);
            e.usos = 0;
        }
}

void Plan::Escribir(ClientePrevisto &c)
{
    const int dep = Escrita(regiones, c.region);
    const int loc = Escrita(subregiones, c.subregion);
    c.f.idc = TomarIdentificador(s, "contadorclientes", MayorIdDe16Bits);
    s.clientes->Execute(
        "insert into clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark,"
        " obs, feci, fecu, deuda) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, ?, ?, 0)",
        c.f.idc, c.f.ayn, c.f.dir, loc, dep, c.f.codp2, c.f.codt2, c.f.tel2, c.f.telc2, c.f.email,
        c.f.obs, s.reloj.hoy, s.reloj.hoy);
    s.morvane->Execute("insert into perfiles (idc) values (?)", c.f.idc);
}

void Plan::Escribir(MascotaPrevista &m)
{
    const FichaDePaciente &f = m.f;
    const int esp = Escrita(especies, m.especie);
    const int raz = Escrita(razas, m.raza);
    const int pel = Escrita(pelajes, m.pelaje);
    const int idm = TomarIdentificador(s, "contadormascotas", MayorIdDe16Bits);
    s.clientes->Execute(
        "insert into mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped, rep,"
        " dec, ser, obs, feci, fot) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, 0, ?, ?, 0)",
        idm, clientes[size_t(m.cliente)].f.idc, f.nom, esp, raz, pel, f.car, f.Chip, f.fecn, f.pes,
        f.sex, f.ped, f.dec, f.obs, s.reloj.hoy);
}

void Plan::Escribir(const Seguir &seguir)
{
    informe.escrito = true;
    size_t hechas = 0;
    try {
        while (hechas < filas.size()) {
            s.avance.Barra(int(hechas), int(filas.size()));
            if (seguir && !seguir()) {
                informe.interrumpido = true;
                break;
            }
            const size_t hasta = std::min(filas.size(), hechas + FilasPorLote);
            Lote lote(s);
            for (size_t n = hechas; n < hasta; ++n) {
                if (informe.lineas[n].suerte != Suerte::Nueva)
                    continue;
                const FilaPrevista &fila = filas[n];
                if (AgregaCliente(fila))
                    Escribir(clientes[size_t(fila.cliente)]);
                if (AgregaMascota(fila))
                    Escribir(mascotas[size_t(fila.mascota)]);
            }
            for (ListaPrevista *lista : {&regiones, &subregiones, &razas})
                SubirRangos(*lista);
            lote.Confirmar();
            hechas = hasta;
        }
        s.avance.Barra(int(hechas), int(filas.size()));
    } catch (const ErrorDeAlmacen &e) {
        informe.interrumpido = true;
        informe.falla = TextoDeError(s, e);
    }
    if (informe.interrumpido) { // tell of what was written, and of nothing else
        filas.resize(hechas);
        informe.lineas.resize(hechas);
        Contar();
    }
}

} // namespace

VistaDeArchivo MirarArchivo(Sesion &s, const QString &archivo, int filas)
{
    VistaDeArchivo v;
    ArchivoDelimitado lector(archivo);
    const bool hay = lector.Leer(v.titulos);
    QStringList campos;
    for (int i = 0; i < filas && lector.Leer(campos); ++i)
        v.filas << campos;
    v.utf8 = lector.EsUtf8();
    v.separador = lector.Separador();
    v.falla = FallaDeArchivo(s, lector);
    if (v.falla.isEmpty() && !hay)
        v.falla = s(ArchivoVacio);
    for (QString &titulo : v.titulos)
        titulo = titulo.simplified();
    v.columnas = ReconocerTitulos(v.titulos);
    return v;
}

QString TextoDeVista(const Sesion &s, const VistaDeArchivo &vista)
{
    const int cual = vista.separador == u';' ? 1 : vista.separador == u'\t' ? 2 : 0;
    return s(Forma).arg(vista.utf8 ? u"UTF-8"_s : u"Latin-1"_s,
                        s(NombresDeSeparador).section(u'|', cual, cual));
}

InformeDeImportacion ProbarImportacion(Sesion &s, const OpcionesDeImportacion &o,
                                       const Seguir &seguir)
{
    Plan plan(s, o);
    plan.Hacer(seguir);
    return std::move(plan.informe);
}

InformeDeImportacion Importar(Sesion &s, const OpcionesDeImportacion &o, const Seguir &seguir)
{
    Plan plan(s, o);
    if (plan.Hacer(seguir))
        plan.Escribir(seguir);
    return std::move(plan.informe);
}

QString ResumenDeImportacion(const Sesion &s, const InformeDeImportacion &i)
{
    const auto n = [](int cuantos) { return QLocale().toString(cuantos); };
    QStringList lineas = i.notas;
    lineas << s(ResumenClientes).arg(n(i.clientesNuevos), n(i.clientesExistentes))
           << s(ResumenPacientes).arg(n(i.mascotasNuevas), n(i.mascotasExistentes))
           << s(ResumenLineas).arg(n(i.rechazadas), n(i.avisos));
    if (i.sinLugar)
        lineas << s(ResumenSinLugar).arg(n(i.sinLugar), n(i.primeraSinLugar));
    return lineas.join(u'\n');
}

QString FinalDeImportacion(const Sesion &s, const InformeDeImportacion &i)
{
    const QString ultima = QLocale().toString(i.lineas.empty() ? 1 : i.lineas.back().linea);
    if (!i.falla.isEmpty())
        return s(FuePorError).arg(ultima, i.falla);
    if (i.interrumpido && i.escrito)
        return s(FueInterrumpido).arg(ultima);
    return s(i.escrito ? FueEscrito : FueEnSeco);
}

QString TextoDeSuerte(const Sesion &s, Suerte suerte)
{
    return s(NombresDeSuerte).section(u'|', int(suerte), int(suerte));
}

QString AplicarColumnas(const Sesion &s, const QString &texto, const QStringList &titulos,
                        QList<Dato> &columnas)
{
    for (const QString &parte : texto.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype igual = parte.lastIndexOf(u'=');
        const QString titulo = parte.left(std::max<qsizetype>(igual, 0)).trimmed();
        qsizetype columna = -1;
        for (qsizetype i = 0; i < titulos.size() && columna < 0; ++i)
            if (EnClave(titulos[i]) == EnClave(titulo) && !titulo.isEmpty())
                columna = i;
        bool esNumero = false;
        if (const int numero = titulo.toInt(&esNumero); columna < 0 && esNumero)
            columna = numero - 1;
        if (columna < 0 || columna >= columnas.size())
            return s(ColumnaDesconocida).arg(igual < 0 ? parte : titulo);
        const QString nombre = parte.mid(igual + 1).trimmed();
        const auto dato = DatoPorNombre(nombre);
        if (!dato) {
            QStringList nombres;
            for (int d = 0; d < CuantosDatos; ++d)
                nombres << NombreDeDato(Dato(d));
            return s(DatoDesconocido).arg(nombre, nombres.join(u", "_s));
        }
        if (*dato != Dato::Nada)
            std::replace(columnas.begin(), columnas.end(), *dato, Dato::Nada);
        columnas[columna] = *dato;
    }
    return {};
}
