#include "ui/bound.h"

#include "store/settings_row.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QButtonGroup>
#include <QCheckBox>
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

    void showStored() const
    {
        guard([this] {
            if (s.configuracion.AbsolutePosition() < 0)
                s.configuracion.MoveFirst();
            show(s.configuracion[column]);
        });
    }
    /// What is stored is what is shown after, whether it was written or not.
    void write(const Valor &value) const
    {
        guard([&] { GuardarAjuste(s, column, value); });
        showStored();
    }
};

/// Tells when a box goes off the screen with its form: what was typed there counts as well.
class AlOcultar : public QObject
{
public:
    AlOcultar(QLineEdit *box, std::function<void()> task) : QObject(box), m_task(std::move(task))
    {
        box->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // A form that is being destroyed is no form any more and has no guard.
        if (event->type() == QEvent::Hide
            && qobject_cast<FormBase *>(static_cast<QWidget *>(watched)->window()))
            m_task();
        return false;
    }

private:
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
            tie.showStored();
    };
    tie.showStored();
    QObject::connect(box, &QLineEdit::editingFinished, box, commit);
    new AlOcultar(box, commit);
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
        auto *option =
            named(new QRadioButton(caption), u"opt%1"_s.arg(number), QString(caption).remove(u'&'));
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
