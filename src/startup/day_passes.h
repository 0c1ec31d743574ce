// The nineteen passes of a day, and what they share. Internal to the daily pass.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

#include <memory>
#include <vector>

inline constexpr int Pases = 19;
// Doses of a closed program are caught up for this many days; food is consumed for all of them.
inline constexpr int DiasQueSeRecuperan = 10;
// Rows between two signs of life on a long walk.
inline constexpr int FilasPorAviso = 512;

/// One run of the pass: its days, and what can be told and asked only when it has been written.
struct Corrida {
    Sesion &s;
    QDate hoy = s.reloj.hoy;
    QDate ultimo;
    qint64 dias = 0;
    int pase = 0;
    std::vector<ErrorDeAlmacen> errores;
    bool listarPerdidas = false; // the missed doses
    std::unique_ptr<DocumentoHtml> perdidas = nullptr;
    bool ofrecerResumen = false; // the day sheet

    Valor Ajuste(std::string_view columna) const { return s.configuracion[columna]; }

    // A statement that fails is passed over; a disk that fails ends the run.
    template <typename F>
    void Intentar(F &&f)
    {
        try {
            f();
        } catch (const ErrorDeAlmacen &e) {
            if (e.EsDelMedio())
                throw;
            errores.push_back(e);
        }
    }

    // Walks the rows of a recordset, each one tried by itself.
    template <typename F>
    void PorFila(Recordset &r, F &&f)
    {
        for (int n = 0; !r.EOF_(); r.MoveNext()) {
            if (++n % FilasPorAviso == 0)
                s.avance.Barra(pase, Pases);
            Intentar([&] { f(r); });
        }
    }

    // First day whose doses are looked at.
    QDate Desde(int trasElUltimo) const
    {
        return dias > DiasQueSeRecuperan ? hoy.addDays(-DiasQueSeRecuperan)
                                         : ultimo.addDays(trasElUltimo);
    }
};

/// Joins the pieces of a board line with one blank.
QString Unir(std::initializer_list<QString> partes);
/// Ends a line with a point; some texts of the table bring theirs.
QString ConPunto(const QString &t);
QString Num(int n);

/// Reminder and birthday measures: the `medio` to use for 1, 2 and 3, else 0 for off.
int Medida(const Valor &v);

/// Books what the clinic itself does today: the category's service with the product to bring.
void ReservarServicio(Corrida &c, int idm, int ida, int idcat);

/// Each runs inside the day's batch and tries its statements one by one.
namespace pases
{
void Alimentos(Corrida &c);
void DosisPerdidas(Corrida &c);
void DosisDelDia(Corrida &c);
void RecordatoriosDeDosis(Corrida &c);
void Cumpleanos(Corrida &c);
void Deudores(Corrida &c);
void ClientesNuevos(Corrida &c);
void Internados(Corrida &c);
void Hospedaje(Corrida &c);
void Alarmas(Corrida &c);
void MarcasDeTarea(Corrida &c);
void ResumenDelDia(Corrida &c);
void CumplimientoDeTurnos(Corrida &c);
void TareasDeAyer(Corrida &c);
} // namespace pases
