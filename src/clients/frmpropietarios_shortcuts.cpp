#include "clients/frmpropietarios_shortcuts.h"

#include "clients/dialling.h"
#include "clients/registry.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/record_fields.h"
#include "ui/theme.h"

#include <QDesktopServices>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

enum class Needs { Nothing, Client, Patient };

} // namespace

struct AccessesBar::Access {
    QPushButton *AccessesBar::*button;
    QStringView name;
    int text;
    QStringView dibujo;
    QStringView form;
    Needs needs;
    int withoutPatient = text::ChooseRecord; // what is said without one
    QStringView key = {};                    // works in every language
};

const QList<AccessesBar::Access> &AccessesBar::accesses()
{
    using B = AccessesBar;
    using enum Needs;
    static const QList<Access> list = {
        {&B::cmdficha, u"cmdficha", text::RegistryShortcutsRecord, u"ficha", u"frmficha", Patient,
         text::ChooseRecord, u"Alt+F"},
        {&B::cmdvender, u"cmdvender", text::RegistryShortcutsSell, u"vender", u"frmventas", Client,
         text::ChooseRecord, u"Alt+V"},
        {&B::cmdobra, u"cmdobra", text::RegistryShortcutsPrepaid, u"obra", u"frmos", Client,
         text::ChooseRecord, u"Alt+O"},
        {&B::cmdHospedaje, u"cmdHospedaje", text::RegistryShortcutsBoarding, u"hospedar",
         u"frmHospedaje", Patient, text::ChoosePatientToBoard},
        {&B::cmdTurnos, u"cmdTurnos", text::RegistryShortcutsAppointments, u"turnos", u"frmTurnos",
         Patient, text::ChoosePatientToBook},
        {&B::cmddeuda, u"cmddeuda", text::RegistryShortcutsDebt, u"deuda", u"frmCtaCte", Client},
        {&B::cmdAvisos, u"cmdAvisos", text::RegistryShortcutsNotices, u"avisos",
         u"frmAvisosPlanificadas", Nothing},
        {&B::cmdMail, u"cmdMail", text::RegistryShortcutsMail, u"correo", u"", Client},
        {&B::cmdTel, u"cmdTel", text::RegistryShortcutsCall, u"telefono", u"", Client},
        {&B::cmdImprimir, u"cmdImprimir", text::RegistryShortcutsPrint, u"imprimir", u"frmlistados",
         Nothing},
    };
    return list;
}

AccessesBar::AccessesBar(Sesion &s, ui::FormRegistry &forms, ui::bind::Guard guard, OpenLink open,
                         ui::HelpLine *help, QWidget *parent)
    : QWidget(parent),
      m_s(s),
      m_forms(forms),
      m_guard(std::move(guard)),
      m_open(open ? std::move(open) : OpenLink(&QDesktopServices::openUrl)),
      m_help(help)
{
    build();
    buildMenu();
}

void AccessesBar::build()
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(0);
    for (const Access &access : accesses()) {
        const QString caption = m_s(access.text);
        auto *b = new QPushButton(ui::namedIcon(access.dibujo.toString()), {});
        b->setObjectName(access.name.toString());
        ui::setTitle(b, caption);
        b->setProperty("clase", u"barra"_s);
        b->setIconSize({20, 20});
        b->setAutoDefault(false);
        const QKeySequence key(access.key.toString());
        if (!key.isEmpty()) {
            b->setToolTip(b->accessibleName() + u" ("_s + key.toString(QKeySequence::NativeText)
                          + u')');
            if (QKeySequence::mnemonic(caption) != key)
                connect(new QShortcut(key, this), &QShortcut::activated, b, &QPushButton::click);
        }
        connect(b, &QPushButton::clicked, this, [this, &access] { take(access); });
        this->*access.button = b;
        row->addWidget(b);
    }
}

void AccessesBar::buildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(u"menuRapido"_s);
    m_menu->setAccessibleName(m_s(text::QuickAccess));
    m_menu->installEventFilter(this);
    m_title = m_menu->addAction(QString());
    m_title->setObjectName(u"menuTitulo"_s);
    m_title->setEnabled(false);
    m_menu->addSeparator();
    QPushButton *const buttons[] = {cmdficha, cmdvender, cmdobra, nullptr};
    for (size_t i = 0; i < m_entries.size(); ++i) {
        QPushButton *b = buttons[i];
        const QString number = QString::number(i + 1);
        const QString caption = b ? b->text() : u'&' + m_s(text::Exit);
        QAction *entry = m_entries[i] = m_menu->addAction(caption + u'\t' + number);
        entry->setObjectName(u"menu"_s + number);
        if (!b)
            continue;
        entry->setIcon(b->icon());
        connect(entry, &QAction::triggered, b, &QPushButton::click);
        connect(m_menu, &QMenu::aboutToShow, entry,
                [entry, b] { entry->setEnabled(b->isEnabled()); });
    }
}

void AccessesBar::update(bool free)
{
    for (const Access &access : accesses()) {
        const bool known = access.form.isEmpty() || m_forms.exists(access.form.toString());
        // Who has no patient yet is told so; what is not there at all cannot be pressed.
        const bool tells = access.withoutPatient != text::ChooseRecord && m_s.IdGlobal.idm == 0;
        (this->*access.button)->setEnabled(free && (known || tells));
    }
}

void AccessesBar::setBoarding(boarding::Stay stay)
{
    cmdHospedaje->setProperty("tag", boarding::labelOf(stay));
    cmdHospedaje->setIcon(ui::namedIcon(boarding::pictureOf(stay)));
}

void AccessesBar::take(const Access &access)
{
    if (access.needs != Needs::Nothing && m_s.IdGlobal.idc == 0)
        return m_s.dialogos.Mensaje(m_s(access.withoutPatient));
    if (access.needs == Needs::Patient && m_s.IdGlobal.idm == 0)
        return m_s.dialogos.Mensaje(m_s(access.withoutPatient));
    if (access.button == &AccessesBar::cmdTel)
        return telephone();
    m_guard([this, &access] {
        if (access.button == &AccessesBar::cmdMail)
            Mail(savedMail());
        else
            m_forms.open(access.form.toString());
    });
}

QString AccessesBar::savedMail()
{
    const auto client = readClient(m_s, m_s.IdGlobal.idc);
    return client ? client->email : QString();
}

void AccessesBar::Mail(const QString &addresses)
{
    const QString plain = addresses.simplified().remove(u' ');
    if (plain.isEmpty())
        return m_s.dialogos.Mensaje(m_s(text::ClientHasNoMail));
    QUrl link;
    link.setScheme(u"mailto"_s);
    link.setPath(plain);
    if (!m_open(link))
        m_help->faultOf(m_s(text::MailProgramFailed));
}

void AccessesBar::telephone()
{
    m_guard([this] {
        QStringList numbers;
        if (const auto client = readClient(m_s, m_s.IdGlobal.idc))
            for (const QString &phone : (client->tel2 + u',' + client->telc2).split(u','))
                if (const QString number = NumberToDial(phone); !number.isEmpty())
                    numbers << number;
        if (numbers.isEmpty())
            return m_s.dialogos.Mensaje(m_s(text::InvalidPhone));
        m_forms.open(u"frmTel"_s, {{u"numeros"_s, numbers}});
    });
}

void AccessesBar::openMenu(const QPoint &place, const QString &client)
{
    // An & of the name is no ALT key.
    m_title->setText(QString(client).replace(u'&', u"&&"_s));
    m_menu->popup(place);
    for (QAction *entry : m_entries)
        if (entry->isEnabled())
            return m_menu->setActiveAction(entry);
}

bool AccessesBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_menu && event->type() == QEvent::KeyPress) {
        const int digit = static_cast<QKeyEvent *>(event)->key() - Qt::Key_1;
        if (digit >= 0 && size_t(digit) < m_entries.size()) {
            QAction *entry = m_entries[size_t(digit)];
            if (entry->isEnabled()) {
                m_menu->close();
                entry->trigger();
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
