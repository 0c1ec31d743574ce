// What rules ask and tell, as boxes on the screen.
#pragma once

#include "store/dialogs.h"
#include "store/texts.h"

/// Modal boxes over the window in use. Texts are shown as they are, never as mark-up; long ones
/// scroll. Everything can be answered from the keyboard.
class DialogosDeVentana : public Dialogos
{
public:
    explicit DialogosDeVentana(Textos textos) : m_textos(std::move(textos)) {}

    void Mensaje(const QString &texto) override;
    bool Pregunta(const QString &texto) override;
    bool Confirmar(const QString &texto) override;
    std::optional<QString> PedirTexto(const QString &titulo, const QString &texto,
                                      const QString &inicial = {}) override;
    std::optional<QString> PedirContrasena(const QString &titulo, const QString &texto) override;
    std::optional<QList<Opcion>> Seleccionar(const QString &titulo, const QStringList &columnas,
                                             const QList<Opcion> &opciones,
                                             bool varias = false) override;
    std::optional<QString> ElegirArchivo(const QString &titulo, const QString &filtro) override;
    std::optional<QString> GuardarArchivo(const QString &titulo, const QString &propuesto,
                                          const QString &filtro) override;

    /// Whether a box waits for an answer now.
    static bool HayUnaAbierta();

private:
    Textos m_textos;
};
