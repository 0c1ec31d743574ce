#include "ui/bound.h"

#include "store/settings_row.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFocusEvent>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace
{

constexpr const char *valueOf = "valor";

QString decimalText(const Sesion &s, const Valor &v)
{
    return v.EsNulo() ? QString() : v.toMoneda().ATexto().replace(u'.', s.separadorDecimal);
}

/// A control and the column that it stands for.
struct Atadura {
    Sesion &s;
    Atar::Guardia guard;
    std::string column;
    std::function<void(const Valor &)> show;
    std::shared_ptr<Valor> last = std::make_shared<Valor>(); // shown

    /// Without the guard, so that a row that cannot be read is told once by whoever ties the
    /// controls, and not by each of them.
    void showStored() const
    {
        if (s.configuracion.AbsolutePosition() < 0)
            s.configuracion.MoveFirst();
        *last = s.configuracion[column];
        show(*last);
    }
    /// What is stored is what is shown after, whether it was written or not.
    void write(const Valor &value) const
    {
        const bool written = guard([&] {
            GuardarAjuste(s, column, value);
            showStored();
        });
        if (!written)
            show(*last);
    }
};

/// Looks on and takes nothing away.
class Dejada : public QObject
{
public:
    Dejada(QWidget *control, std::function<void()> task)
        : QObject(control), m_control(control), m_task(std::move(task))
    {
        control->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool left =
            event->type() == QEvent::FocusOut && EsDejada(*static_cast<const QFocusEvent *>(event));
        // A form that is being destroyed is no form any more and has no guard.
        const bool hidden =
            event->type() == QEvent::Hide && qobject_cast<FormBase *>(m_control->window());
        if (left || hidden)
            m_task();
        return false;
    }

private:
    QWidget *m_control;
    std::function<void()> m_task;
};

/// @param textOf the stored value as the box shows it
/// @param valueOfText what to store; nullopt for a text that is no such value
void tieBox(Sesion &s, const Atar::Guardia &guard, QLineEdit *box, std::string_view column,
            const std::function<QString(const Valor &)> &textOf,
            const std::function<std::optional<Valor>(const QString &)> &valueOfText)
{
    auto shown = std::make_shared<QString>();
    const Atadura tie{s, guard, std::string(column), [box, textOf, shown](const Valor &v) {
                          box->setText(textOf(v));
                          *shown = box->text();
                      }};
    const auto commit = [box, tie, shown, valueOfText] {
        if (box->text() == *shown)
            return;
        *shown = box->text(); // a message over the form leaves the box once more
        if (const auto value = valueOfText(box->text()))
            tie.write(*value);
        else
            tie.show(*tie.last);
    };
    tie.showStored();
    QObject::connect(box, &QLineEdit::editingFinished, box, commit);
    Atar::AlDejar(box, commit);
}

} // namespace

GrupoDeOpciones::GrupoDeOpciones(const QString &titulo,
                                 const QList<std::pair<int, QString>> &opciones, QWidget *parent)
    : QGroupBox(titulo, parent), m_grupo(new QButtonGroup(this))
{
    setAccessibleName(titulo);
    auto *column = new QVBoxLayout(this);
    column->setSpacing(Espacio::XS);
    for (const auto &[number, caption] : opciones) {
        auto *option = named(new QRadioButton(caption), u"opt%1"_s.arg(number), caption);
        option->setProperty(valueOf, number);
        m_grupo->addButton(option);
        column->addWidget(option);
    }
    connect(m_grupo, &QButtonGroup::buttonToggled, this, [this](QAbstractButton *b, bool on) {
        if (on)
            Q_EMIT elegida(b->property(valueOf).toInt());
    });
}

int GrupoDeOpciones::Valor() const
{
    const QAbstractButton *chosen = m_grupo->checkedButton();
    return chosen ? chosen->property(valueOf).toInt() : 0;
}

void GrupoDeOpciones::PonerValor(int valor)
{
    const QSignalBlocker silent(m_grupo);
    m_grupo->setExclusive(false); // else none could be chosen
    for (QAbstractButton *option : m_grupo->buttons())
        option->setChecked(option->property(valueOf).toInt() == valor);
    m_grupo->setExclusive(true);
}

void Atar::AlDejar(QWidget *control, const std::function<void()> &tarea)
{
    new Dejada(control, tarea);
}

void Atar::Opciones(Sesion &s, const Guardia &guardia, GrupoDeOpciones *grupo,
                    std::string_view columna)
{
    const Atadura tie{s, guardia, std::string(columna),
                      [grupo](const Valor &v) { grupo->PonerValor(v.toInt()); }};
    tie.showStored();
    QObject::connect(grupo, &GrupoDeOpciones::elegida, grupo,
                     [tie](int value) { tie.write(value); });
}

void Atar::Casilla(Sesion &s, const Guardia &guardia, QCheckBox *casilla, std::string_view columna)
{
    const Atadura tie{s, guardia, std::string(columna), [casilla](const Valor &v) {
                          const QSignalBlocker silent(casilla);
                          casilla->setChecked(v.toBool());
                      }};
    tie.showStored();
    QObject::connect(casilla, &QCheckBox::toggled, casilla, [tie](bool on) { tie.write(on); });
}

void Atar::Texto(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna)
{
    tieBox(
        s, guardia, caja, columna, [](const Valor &v) { return v.toText(); },
        [](const QString &t) { return std::optional<Valor>(t); });
}

void Atar::Entero(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna)
{
    tieBox(
        s, guardia, caja, columna,
        [](const Valor &v) { return v.EsNulo() ? QString() : QString::number(v.toLong()); },
        [](const QString &t) -> std::optional<Valor> {
            bool fine = false;
            const int n = t.trimmed().toInt(&fine);
            if (fine)
                return n;
            return t.trimmed().isEmpty() ? std::optional<Valor>(nullptr) : std::nullopt;
        });
}

void Atar::Numero(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna)
{
    tieBox(
        s, guardia, caja, columna, [&s](const Valor &v) { return decimalText(s, v); },
        [&s](const QString &t) -> std::optional<Valor> {
            if (const auto n = Moneda::DeTexto(t, s.separadorDecimal))
                return *n;
            return t.trimmed().isEmpty() ? std::optional<Valor>(nullptr) : std::nullopt;
        });
}

void Atar::Hora(Sesion &s, const Guardia &guardia, QLineEdit *caja, std::string_view columna)
{
    tieBox(
        s, guardia, caja, columna, [](const Valor &v) { return v.toTime().toString(u"HH:mm"); },
        [](const QString &t) -> std::optional<Valor> {
            if (QString(t).remove(u':').trimmed().isEmpty())
                return Valor();
            const QTime time = QTime::fromString(t.trimmed(), u"H:mm"_s);
            return time.isValid() ? std::optional<Valor>(time) : std::nullopt;
        });
}
