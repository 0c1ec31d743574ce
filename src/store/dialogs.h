// How rules talk to the user without knowing of any window.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// One row of the pick list.
struct Opcion {
    QString texto; // columns parted by tabs
    int valor = 0;
    bool marcada = false;
};

/// Everything that a rule may ask or tell. Backing out of an answer is nullopt.
class Dialogos
{
public:
    virtual ~Dialogos() = default;
    virtual void Mensaje(const QString &texto) = 0;
    /// Yes or No.
    virtual bool Pregunta(const QString &texto) = 0;
    /// The same with the buttons OK and Cancel, for texts that name them.
    virtual bool Confirmar(const QString &texto) = 0;
    virtual std::optional<QString> PedirTexto(const QString &titulo, const QString &texto,
                                              const QString &inicial = {}) = 0;
    /// A text that nobody should read over a shoulder.
    virtual std::optional<QString> PedirContrasena(const QString &titulo, const QString &texto);
    /// A pick list under its column titles. @return the options marked, one unless @p varias
    virtual std::optional<QList<Opcion>> Seleccionar(const QString &titulo,
                                                     const QStringList &columnas,
                                                     const QList<Opcion> &opciones,
                                                     bool varias = false) = 0;
    /// @param filtro "Pictures (*.bmp *.jpg)"
    virtual std::optional<QString> ElegirArchivo(const QString &titulo, const QString &filtro) = 0;
    /// A file to be written. @param propuesto name offered; its ending decides the kind
    virtual std::optional<QString> GuardarArchivo(const QString &titulo, const QString &propuesto,
                                                  const QString &filtro) = 0;
};

/// Nobody is there: questions are answered No, messages go to standard error.
class DialogosDesatendidos : public Dialogos
{
public:
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
};
