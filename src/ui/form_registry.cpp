#include "ui/form_registry.h"

#include "ui/form_base.h"

#include <QApplication>

namespace
{

/// The busy cursor while a screen is built, however that ends.
struct CursorOcupado {
    CursorOcupado() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CursorOcupado() { QApplication::restoreOverrideCursor(); }
    CursorOcupado(const CursorOcupado &) = delete;
    CursorOcupado &operator=(const CursorOcupado &) = delete;
};

} // namespace

Formularios::~Formularios()
{
    // Hidden first: a window that goes away while it shows moves the focus, and its own slots would
    // hear of that when half of it is gone.
    for (const auto &form : std::as_const(m_cargados))
        if (form) {
            form->hide();
            delete form.data();
        }
}

void Formularios::Registrar(const QString &nombre, Fabrica fabrica)
{
    m_fabricas.insert(nombre, std::move(fabrica));
}

bool Formularios::Existe(const QString &nombre) const { return m_fabricas.contains(nombre); }

FormBase *Formularios::Cargar(const QString &nombre)
{
    FormBase *form = m_cargados.value(nombre);
    if (!form && Existe(nombre)) {
        form = m_fabricas.value(nombre)();
        m_cargados.insert(nombre, form);
    }
    return form;
}

bool Formularios::Abrir(const QString &nombre, const QVariantMap &parametros)
{
    FormBase *form = nullptr;
    {
        const CursorOcupado busy;
        form = Cargar(nombre);
        if (!form)
            return false;
        form->opened(parametros);
    }
    if (form->isModal()) {
        form->exec();
        return true;
    }
    if (form->isMinimized())
        form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
    form->show();
    form->raise();
    form->activateWindow();
    return true;
}
