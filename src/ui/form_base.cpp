#include "ui/form_base.h"

#include "store/lookups.h"
#include "store/opening.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace
{

bool isEnter(const QKeyEvent &key)
{
    return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
           && !(key.modifiers() & ~Qt::KeypadModifier);
}

void tellFailure(Sesion &s, int number, const QString &description, const QString &source)
{
    // A log that cannot be written must not hide what happened.
    try {
        RegistrarError(s, number, description, source);
    } catch (const std::exception &) {
        s.dialogos.Mensaje(description);
    }
}

} // namespace

FormBase::FormBase(Sesion &s, const QString &name, QWidget *parent) : QDialog(parent), m_s(s)
{
    setObjectName(name);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void FormBase::opened(const QVariantMap &) {}

bool FormBase::guarded(const std::function<void()> &task)
{
    try {
        task();
        return true;
    } catch (const ErrorDeAlmacen &e) {
        // The user can act on a full or protected disk; the log lies on that same disk.
        if (e.EsDelMedio())
            m_s.dialogos.Mensaje(TextoDeError(m_s, e));
        else
            tellFailure(m_s, e.numero, e.descripcion, objectName());
    } catch (const std::bad_alloc &) {
        tellFailure(m_s, ErrorNum::SinMemoria, u"Out of memory"_s, objectName());
    } catch (const std::exception &e) {
        tellFailure(m_s, ErrorNum::Interno, QString::fromUtf8(e.what()), objectName());
    } catch (...) {
        tellFailure(m_s, ErrorNum::Interno, u"Unknown failure"_s, objectName());
    }
    return false;
}

void FormBase::enterChain(const QList<QWidget *> &boxes)
{
    for (int i = 0; i + 1 < boxes.size(); ++i) {
        m_nextBox.insert(boxes[i], boxes[i + 1]);
        boxes[i]->installEventFilter(this);
        setTabOrder(boxes[i], boxes[i + 1]);
    }
}

void FormBase::refuseApostrophe(const QList<QLineEdit *> &boxes)
{
    for (QLineEdit *box : boxes) {
        box->setProperty("refusesApostrophe", true);
        box->installEventFilter(this);
        connect(box, &QLineEdit::textEdited, box, [box](const QString &text) {
            if (!text.contains(u'\''))
                return;
            const int cursor = box->cursorPosition();
            box->setText(QuitarApostrofes(text));
            box->setCursorPosition(cursor);
        });
    }
}

bool FormBase::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);

    if (key.text() == u"'" && watched->property("refusesApostrophe").toBool()) {
        int code = u'\'';
        FiltrarApostrofe(m_s, code);
        if (code == 0)
            return true;
    }
    if (isEnter(key) && m_nextBox.contains(watched)) {
        QWidget *next = m_nextBox.value(watched);
        while (next && !(next->isEnabled() && next->isVisibleTo(this)))
            next = m_nextBox.value(next);
        if (next) {
            next->setFocus(Qt::TabFocusReason);
            if (auto *box = qobject_cast<QLineEdit *>(next))
                box->selectAll();
        }
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FormBase::keyPressEvent(QKeyEvent *event)
{
    // Not QDialog's way, where ENTER in any box would press some button.
    if (isEnter(*event)) {
        if (auto *button = qobject_cast<QAbstractButton *>(focusWidget()))
            button->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

QString FormBase::iniFile() const
{
    // Without a program folder nothing is remembered: an unnamed file is never written.
    return m_s.carpetaDePrograma.isEmpty() ? QString() : m_s.carpetaDePrograma + u"kelvara.ini"_s;
}

QString FormBase::headerKey(const QHeaderView *header) const
{
    return objectName() + u'/' + header->parent()->objectName();
}

void FormBase::rememberSize(QSize first)
{
    m_remembersSize = true;
    const QSettings ini(iniFile(), QSettings::IniFormat);
    if (restoreGeometry(ini.value(objectName() + u"/geometry"_s).toByteArray()))
        return;
    resize(screen() ? first.boundedTo(screen()->availableSize()) : first);
}

void FormBase::rememberColumns(QHeaderView *header)
{
    m_headers.append(header);
    const QSettings ini(iniFile(), QSettings::IniFormat);
    header->restoreState(ini.value(headerKey(header)).toByteArray());
}

void FormBase::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous() && (m_remembersSize || !m_headers.isEmpty())) {
        QSettings ini(iniFile(), QSettings::IniFormat);
        if (m_remembersSize)
            ini.setValue(objectName() + u"/geometry"_s, saveGeometry());
        for (const auto &header : std::as_const(m_headers))
            if (header)
                ini.setValue(headerKey(header), header->saveState());
    }
    QDialog::hideEvent(event);
}
