// What the tests of the rules share: a real clinic in a temporary folder, a fixed day and prompts
// that are told beforehand.
#pragma once

#include "store/data_folder.h"
#include "store/opening.h"
#include "store/session.h"

#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>

/// Answers what a test expects to be asked. A prompt that was not expected fails the test, and so
/// does one that was expected and never came.
class DialogosDePrueba : public Dialogos
{
public:
    ~DialogosDePrueba() override;

    /// The next prompt holds this text; a question gets the answer.
    void Espera(const QString &parte, bool respuesta = true);
    void EsperaTexto(const QString &parte, std::optional<QString> respuesta);
    void EsperaSeleccion(const QString &parte, std::optional<QList<int>> filas);

    void Mensaje(const QString &texto) override;
    bool Pregunta(const QString &texto) override;
    bool Confirmar(const QString &texto) override;
    std::optional<QString> PedirTexto(const QString &titulo, const QString &texto,
                                      const QString &inicial) override;
    std::optional<QList<Opcion>> Seleccionar(const QString &titulo, const QStringList &columnas,
                                             const QList<Opcion> &opciones, bool varias) override;
    std::optional<QString> ElegirArchivo(const QString &titulo, const QString &filtro) override;
    std::optional<QString> GuardarArchivo(const QString &titulo, const QString &propuesto,
                                          const QString &filtro) override;

    /// Questions that hold one of these are answered No whenever they come.
    QStringList siempreNo;

    /// Collects the faults instead of failing the test; for the test of this class alone.
    QStringList *faltas = nullptr;

private:
    struct Prompt {
        QString parte;
        bool si = true;
        std::optional<QString> texto;
        std::optional<QList<int>> filas;
    };
    Prompt Siguiente(const QString &texto);
    void Falta(const QString &que);
    std::deque<Prompt> m_esperados;
};

/// Notes the titles of what would have been printed.
class ImpresionDePrueba : public Impresion
{
public:
    QStringList impresos;
    void Imprimir(Sesion &s, Documento &documento) override;
    void Mostrar(Sesion &s, Documento &documento) override { Imprimir(s, documento); }
};

/// A clinic as a new folder brings it, opened, on Wednesday 11 March 2026 at 09:00, in English,
/// with a Supervisor working. The file set is made once for each test program and copied.
class Clinica : public testing::Test
{
protected:
    explicit Clinica(Idioma idioma = Idioma::Ingles);
    ~Clinica() override;

    QTemporaryDir carpeta;
    DialogosDePrueba ask;
    ImpresionDePrueba impresion;
    Sesion s;

    const QDate hoy{2026, 3, 11};

    /// Opens the folder again with a new session state, as another start or terminal would.
    void Reabrir();
};

/// The rows of a query as text, a line each, fields parted by '|': whole states are compared so.
QString Filas(Base &base, std::string_view sql);
