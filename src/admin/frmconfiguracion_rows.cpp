#include "admin/frmconfiguracion_rows.h"

#include "ui/boxes.h"
#include "ui/form_base.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QFormLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{

/// Looks on and takes nothing away.
class Listener : public QObject
{
public:
    Listener(QObject *parent, std::function<void(QEvent *)> hear)
        : QObject(parent), m_hear(std::move(hear))
    {
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_hear(event);
        return false;
    }

private:
    std::function<void(QEvent *)> m_hear;
};

constexpr int captionDrop = 6;

} // namespace

GrupoDeOpciones *FilaDeOpciones(const ContextoDePagina &c, QFormLayout *seccion,
                                const PreguntaDePagina &pregunta)
{
    QList<std::pair<int, QString>> options;
    for (const auto &[number, text] : pregunta.opciones)
        options.append({number, c.s(text)});
    auto *group = named(new GrupoDeOpciones({}, options), pregunta.nombre, pregunta.titulo);
    // The question stands beside it, so that it needs no frame of its own.
    group->setStyleSheet(
        u"QGroupBox { background: transparent; border: 0; margin: 0; padding: 0 }"_s);
    group->layout()->setContentsMargins(0, 0, 0, Espacio::S);
    for (auto *button : group->findChildren<QAbstractButton *>())
        button->setAccessibleDescription(pregunta.titulo);
    Parte::Fila(seccion, pregunta.titulo, group);
    // Its first line on that of the first option, however many lines it takes.
    auto *caption = qobject_cast<QLabel *>(seccion->labelForField(group));
    caption->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    caption->setContentsMargins(0, captionDrop, 0, 0);
    AvisarAlEntrar(c, group, pregunta.ayuda);
    return group;
}

QLineEdit *FilaDeEntero(const ContextoDePagina &c, QFormLayout *seccion, std::string_view columna,
                        int titulo, int digitos, int ayuda)
{
    auto *box = new CajaDeEntero(digitos);
    box->setObjectName(QString::fromLatin1(columna.data(), qsizetype(columna.size())));
    box->setFixedWidth(Parte::AnchoDeCifra);
    Parte::Fila(seccion, c.s(titulo), box);
    Atar::Entero(c.s, c.guarded, box, columna);
    AvisarAlEntrar(c, box, ayuda);
    return box;
}

QCheckBox *FilaDeCasilla(const ContextoDePagina &c, QFormLayout *seccion, const QString &nombre,
                         int titulo, int ayuda)
{
    auto *check = named(new QCheckBox(c.s(titulo)), nombre, c.s(titulo));
    seccion->addRow(check);
    AvisarAlEntrar(c, check, ayuda);
    return check;
}

void AvisarAlEntrar(const ContextoDePagina &c, QWidget *control, int ayuda)
{
    const auto hear = [line = c.ayuda, text = c.s(ayuda)](const QEvent *event) {
        // Not when the window comes back, from a question for one: what it led to is told then.
        if (event->type() == QEvent::FocusIn
            && static_cast<const QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason)
            line->Decir(text);
    };
    auto *listener = new Listener(control, hear);
    control->installEventFilter(listener);
    for (auto *inner : control->findChildren<QWidget *>())
        inner->installEventFilter(listener);
}

void AlMostrar(QWidget *pagina, const std::function<void()> &tarea)
{
    pagina->installEventFilter(new Listener(pagina, [tarea](const QEvent *event) {
        if (event->type() == QEvent::Show)
            tarea();
    }));
}
