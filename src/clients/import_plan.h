// How an import is worked out before anything is written: what every line of the file becomes.
// Of use to the import's own sources alone.
#pragma once

#include "clients/delimited_file.h"
#include "clients/import.h"
#include "clients/import_matching.h"
#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "store/identifiers.h"

#include <array>

namespace importacion
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
    SinEscribir = 9871,
    NotaDeBienvenida,
    OtraUnidad,
    // Of other subjects: where a setting is found.
    Nada_ = 2231,
    NuevoCliente = 5068,
    Configuracion = 9106,
    Automatizacion = 9551,
};

constexpr int MayorIdDeEspecie = 255;

/// A name as the lists are looked up by.
inline QString Plegado(const QString &t) { return t.simplified().toCaseFolded(); }

/// Why a file cannot be read, for the user.
QString FallaDeArchivo(const Sesion &s, const ArchivoDelimitado &archivo);

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
    void AvisarDeBienvenida();

    bool Hay(Dato d) const { return m_columnaDe[size_t(d)] >= 0; }
    QString Campo(Dato d) const;
    void Avisar(int texto, const QString &valor);
    QString Limpio(const QString &texto, const char *tabla, const char *columna);
    QString LosQueCaben(const QString &texto, const char *columna);
    int Entrar(ListaPrevista &lista, const QString &texto, int padre = -1,
               const QString &codigo = {});
    int Especie(const QString &texto);
    bool SiNo(Dato d);
    QString UnidadPropia() const;
    bool EsOtraUnidad(const QString &texto) const;

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
    int Agregada(ListaPrevista &lista, int lugar);
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

} // namespace importacion
