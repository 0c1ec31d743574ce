// The quick find: any piece of an owner or an animal, answered while it is typed.
#pragma once

#include "store/session.h"

#include <string>

/// An animal with its owner, or an owner without animals (`idm` 0).
struct HalladoRapido {
    int idc = 0;
    int idm = 0;
    QString propietario;
    QString mascota;
    QString telefonos;
    bool dec = false;
};

/// What the quick find shows of all that matches.
struct RespuestaRapida {
    std::vector<HalladoRapido> filas; // animals of one owner stand together
    int total = 0;                    // matches, shown or not
};

/// All owners and animals as short folded texts, a few megabytes for a full clinic. What is shown
/// of a match is read from the tables.
class IndiceRapido
{
public:
    /// Reads the tables if they were written since the last time.
    /// @throws ErrorDeAlmacen
    void PonerAlDia(Sesion &s);

    /// Every word of the text must be found in the owner, the animal, its chip or, for a number,
    /// in the digits of a telephone; a number of fewer than five digits is also an id. Letter case
    /// and accents do not count. First what begins with the words, living animals before dead ones.
    RespuestaRapida Buscar(Sesion &s, const QString &texto, int cuantos) const;

    size_t Bytes() const;

private:
    // Places in m_texto.
    struct Trozo {
        quint32 desde = 0;
        quint16 largo = 0;
    };
    struct Cliente {
        int idc = 0;
        Trozo nombre;
        Trozo telefonos;     // digits, each number behind a blank
        quint32 primera = 0; // its animals in m_mascotas
        quint32 fin = 0;
    };
    struct Mascota {
        int idm = 0;
        Trozo nombre;
        Trozo chip;
        bool dec = false;
    };
    struct Acierto;

    Trozo Guardar(const std::string &texto);
    std::string_view Texto(Trozo t) const { return {m_texto.data() + t.desde, t.largo}; }
    std::vector<Acierto> Aciertos(const QString &texto) const;

    std::string m_texto;
    std::vector<Cliente> m_clientes;
    std::vector<Mascota> m_mascotas; // owner by owner
    qint64 m_version = -1;
};
