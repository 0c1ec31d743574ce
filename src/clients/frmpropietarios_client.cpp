#include "clients/frmpropietarios_client.h"

#include "clients/mail_domains.h"
#include "clients/panels.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/record_fields.h"
#include "ui/theme.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QStyle>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

constexpr int ClientFactsWidth = 188;

QList<store::Option> options(const std::vector<Entry> &entries)
{
    QList<store::Option> options;
    for (const Entry &e : entries)
        options.append({e.nom, e.id, false});
    return options;
}

} // namespace

ClientPanel::ClientPanel(Sesion &s, ui::bind::Guard guard, ui::HelpLine *help, QWidget *parent)
    : QWidget(parent), m_s(s), m_guard(std::move(guard)), m_help(help)
{
    build();
    wire();
    empty();
    open(false);
}

void ClientPanel::build()
{
    const auto column = [this](const char *field, const QString &name, int text) {
        return ui::columnBox(m_s, "clientes", field, name, m_s(text));
    };
    txtidc = named(new QLineEdit, u"txtidc"_s, m_s(text::RegistryClientNumber));
    txtidc->setReadOnly(true);
    txtidc->setFocusPolicy(Qt::ClickFocus);
    txtayn = column("ayn", u"txtayn"_s, text::Name);
    txtdir = column("dir", u"txtdir"_s, text::Address);
    cmbloc = named(new ui::ListWithCompleted, u"cmbloc"_s, m_s(text::RegistryClientSubregion));
    cmbdep = named(new ui::ListWithCompleted, u"cmbdep"_s, m_s(text::Region));
    cmbloc->lineEdit()->setMaxLength(m_s.clientes->widthOf("cllocalidad", "nom"));
    cmbdep->lineEdit()->setMaxLength(m_s.clientes->widthOf("cldepartamento", "nom"));
    txtcodp = column("codp2", u"txtcodp"_s, text::RegistryPostalCode);
    txtcodt = column("codt2", u"txtcodt"_s, text::RegistryClientAreaCode);
    txttel = column("tel2", u"txttel"_s, text::RegistryClientTelephone);
    txttelc = column("telc2", u"txttelc"_s, text::RegistryClientMobile);
    txtemail = column("email", u"txtemail"_s, text::Email);
    cmbmark = named(new QComboBox, u"cmbmark"_s, m_s(text::HowTheyFoundUs));
    cmbmark->setToolTip(m_s(text::HowTheyFoundUs));
    txtobs = ui::notesBox(m_s, u"txtobs"_s, m_s(text::Notes));
    for (QComboBox *list :
         {static_cast<QComboBox *>(cmbloc), static_cast<QComboBox *>(cmbdep), cmbmark}) {
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(6);
    }

    auto *boxes = new QWidget;
    auto *grid = new ui::FieldGrid(boxes);
    grid->Row(m_s(text::Name), txtayn, txtidc);
    grid->Row(m_s(text::Address), txtdir);
    grid->Row(m_s(text::RegistryClientSubregion), cmbloc, m_s(text::Region), cmbdep);
    grid->Row(m_s(text::RegistryPostalCode), txtcodp, m_s(text::RegistryClientAreaCode), txtcodt);
    grid->Row(m_s(text::RegistryClientTelephone), txttel, m_s(text::RegistryClientMobile), txttelc);
    grid->Row(m_s(text::Email), txtemail);
    grid->Row(m_s(text::RegistryClientOrigin), cmbmark);
    grid->Row(m_s(text::Notes), txtobs);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(ui::space::M);
    row->addWidget(boxes, 2);
    row->addWidget(buildFacts(), 1);
}

QWidget *ClientPanel::buildFacts()
{
    txtfeci = named(new QLabel, u"txtfeci"_s, m_s(text::ClientEntered));
    txtUVisita = named(new QLabel, u"txtUVisita"_s, m_s(text::LastVisit));
    txtdebe = named(new QLabel, u"txtdebe"_s, m_s(text::RegistryClientOwes));
    txtinfoCliente = ui::informationBox(u"txtinfoCliente"_s, m_s(text::RegistryClientInformation));

    auto *facts = new QWidget;
    facts->setMinimumWidth(ui::NarrowestFacts);
    facts->setMaximumWidth(ClientFactsWidth);
    auto *column = new QVBoxLayout(facts);
    column->setContentsMargins({});
    column->setSpacing(ui::space::S);
    for (QLabel *label : {txtfeci, txtUVisita, txtdebe}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        column->addWidget(label);
    }
    column->addWidget(txtinfoCliente, 1);
    return facts;
}

void ClientPanel::wire()
{
    connect(cmbloc, &ui::ListWithCompleted::typed, this, &ClientPanel::completeSubregion);
    connect(cmbdep, &ui::ListWithCompleted::typed, this, &ClientPanel::completeRegion);
    connect(cmbloc, &ui::ListWithCompleted::chosen, this, &ClientPanel::chooseSubregion);
    connect(cmbdep, &ui::ListWithCompleted::chosen, this, &ClientPanel::takeRegion);
    connect(cmbloc, &ui::ListWithCompleted::emptied, this, [this] {
        m_brought.reset();
        txtcodp->clear();
        cmbdep->clearEditText();
        txtcodt->clear();
        m_help->clean();
    });
    connect(cmbdep, &ui::ListWithCompleted::emptied, this, [this] {
        txtcodt->clear();
        m_help->clean();
    });
    connect(txtemail, &QLineEdit::textEdited, this, &ClientPanel::completeMail);

    addCopy(txttel, u"accCopiarTel"_s);
    addCopy(txttelc, u"accCopiarCel"_s);
    addCopy(txtemail, u"accCopiarCorreo"_s);
    QAction *write = txtemail->addAction(ui::namedIcon(u"correo"_s), QLineEdit::TrailingPosition);
    write->setObjectName(u"accEscribirCorreo"_s);
    write->setToolTip(m_s(text::WriteMailTip));
    connect(write, &QAction::triggered, this, [this] { Q_EMIT writeMail(txtemail->text()); });
    m_copies.append(write);

    ui::onChange(chainOf(), this, [this] { Q_EMIT touched(); });
}

void ClientPanel::addCopy(QLineEdit *box, const QString &name)
{
    QAction *copy = box->addAction(ui::namedIcon(u"copiar"_s), QLineEdit::TrailingPosition);
    copy->setObjectName(name);
    copy->setToolTip(m_s(text::RegistryClientCopy));
    connect(copy, &QAction::triggered, this, [this, box] {
        QGuiApplication::clipboard()->setText(box->text());
        m_help->success(m_s(text::RegistryClientCopied) + u' ' + box->text());
    });
    m_copies.append(copy);
}

void ClientPanel::loadLists()
{
    cmbloc->load(options(loadList(m_s, List::Subregion)));
    cmbdep->load(options(loadList(m_s, List::Region)));
    const QVariant chosen = cmbmark->currentData();
    cmbmark->clear();
    cmbmark->addItem(QString(), 0);
    for (const Entry &e : loadList(m_s, List::Marketing))
        cmbmark->addItem(e.nom, e.id);
    cmbmark->setCurrentIndex(std::max(0, cmbmark->findData(chosen)));
}

void ClientPanel::show(const ClientRecord &record)
{
    m_record = record;
    m_typedMail = record.email;
    m_brought.reset();
    txtidc->setText(record.idc ? QString::number(record.idc).rightJustified(5, u'0') : QString());
    const std::pair<QLineEdit *, const QString &> texts[] = {
        {txtayn, record.ayn},    {txtdir, record.dir},  {txtcodp, record.codp2},
        {txtcodt, record.codt2}, {txttel, record.tel2}, {txttelc, record.telc2},
        {txtemail, record.email}};
    for (const auto &[box, text] : texts) {
        box->setText(text);
        box->setCursorPosition(0);
    }
    cmbloc->setEditText(record.subregion);
    cmbdep->setEditText(record.region);
    cmbmark->setCurrentIndex(std::max(0, cmbmark->findData(record.mark)));
    txtobs->setPlainText(record.obs);
    for (QAction *action : std::as_const(m_copies))
        action->setVisible(!qobject_cast<QLineEdit *>(action->parent())->text().isEmpty());

    const auto fact = [this](QLabel *label, int caption, QDate day) {
        label->setText(day.isValid() ? m_s(caption) + u": "_s + store::dayText(day) : QString());
    };
    fact(txtfeci, text::ClientEntered, record.feci);
    fact(txtUVisita, text::LastVisit, record.fecu);
    txtdebe->setText(record.idc ? m_s(text::RegistryClientOwes) + u": "_s
                                      + m_s(record.deuda ? text::Yes : text::No)
                                : QString());
    if (const QString look = record.deuda ? u"falla"_s : QString();
        txtdebe->property("clase").toString() != look) {
        txtdebe->setProperty("clase", look);
        txtdebe->style()->unpolish(txtdebe);
        txtdebe->style()->polish(txtdebe);
    }
    txtinfoCliente->clear();
    ui::showBeginnings(this);
}

void ClientPanel::empty(int id)
{
    show({});
    if (id)
        txtidc->setText(QString::number(id).rightJustified(5, u'0'));
}

void ClientPanel::report()
{
    txtinfoCliente->setPlainText(m_record.idc ? clientInformation(m_s, m_record.idc) : QString());
}

void ClientPanel::open(bool open) { ui::openFields(chainOf(), open); }

ClientRecord ClientPanel::recordOf() const
{
    ClientRecord f = m_record;
    f.ayn = txtayn->text();
    f.dir = txtdir->text();
    f.subregion = cmbloc->currentText();
    f.codp2 = txtcodp->text();
    f.region = cmbdep->currentText();
    f.codt2 = txtcodt->text();
    f.tel2 = txttel->text();
    f.telc2 = txttelc->text();
    f.email = txtemail->text();
    f.mark = cmbmark->currentData().toInt();
    f.obs = txtobs->toPlainText();
    return f;
}

QVariantMap ClientPanel::fieldsOf() const { return ui::readFields(chainOf()); }

void ClientPanel::setFields(const QVariantMap &values) { ui::setFields(chainOf(), values); }

void ClientPanel::focus(Field field)
{
    QWidget *box = txtayn;
    if (field == Field::Region)
        box = cmbdep;
    else if (field == Field::Subregion)
        box = cmbloc;
    box->setFocus(Qt::TabFocusReason);
}

QList<QWidget *> ClientPanel::chainOf() const
{
    return {txtayn, txtdir,  cmbloc,   cmbdep,  txtcodp, txtcodt,
            txttel, txttelc, txtemail, cmbmark, txtobs};
}

bool ClientPanel::Key(QObject *box, const QKeyEvent &key)
{
    const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (box == cmbloc && enter)
        return leaveSubregion();
    if (box != txtemail)
        return false;
    if (enter)
        Q_EMIT writtenMail(txtemail->text());
    else if (key.key() == Qt::Key_Down || key.key() == Qt::Key_Up)
        walkDomains(key.key() == Qt::Key_Down ? 1 : -1);
    return key.key() == Qt::Key_Down || key.key() == Qt::Key_Up;
}

// A known sub-region brings its region along, so ENTER passes that by.
bool ClientPanel::leaveSubregion()
{
    if (withoutLetters(cmbloc->currentText())) {
        m_s.dialogos.Mensaje(m_s(text::SubregionIsNumber));
        cmbloc->setFocus();
        return true;
    }
    if (cmbloc->Id() == 0)
        return false;
    txtcodp->setFocus(Qt::TabFocusReason);
    txtcodp->selectAll();
    return true;
}

void ClientPanel::completeSubregion(const QString &text)
{
    m_guard([this, &text] {
        const Completed found = complete(m_s, List::Subregion, text);
        if (found.found) {
            cmbloc->propose(found.found->id, found.found->nom);
            takeSubregion(*found.found);
        } else {
            dropSubregion();
        }
        m_help->tell(completedNotice(m_s, List::Subregion, found));
    });
}

void ClientPanel::completeRegion(const QString &text)
{
    m_guard([this, &text] {
        const Completed found = complete(m_s, List::Region, text);
        if (found.found) {
            cmbdep->propose(found.found->id, found.found->nom);
            txtcodt->setText(found.found->code);
        } else {
            txtcodt->clear();
        }
        m_help->tell(completedNotice(m_s, List::Region, found));
    });
}

void ClientPanel::chooseSubregion(int id)
{
    m_guard([this, id] {
        if (const auto entry = entryById(m_s, List::Subregion, id))
            takeSubregion(*entry);
        m_help->tell(m_s(text::EntryFound));
    });
}

void ClientPanel::takeSubregion(const Entry &entry)
{
    // A region that came with the offer before goes with it.
    if (!entry.parent)
        dropSubregion();
    m_brought = entry;
    txtcodp->setText(entry.code);
    if (entry.parent && entry.parent != cmbdep->Id()) {
        cmbdep->SeleccionarItem(entry.parent);
        if (const auto region = parentOf(m_s, List::Subregion, entry))
            txtcodt->setText(region->code);
    }
}

// The letters went on to another name: what came with the entry goes, unless it was typed over.
void ClientPanel::dropSubregion()
{
    const auto brought = std::exchange(m_brought, std::nullopt);
    if (!brought)
        return;
    if (txtcodp->text() == brought->code)
        txtcodp->clear();
    if (brought->parent && brought->parent == cmbdep->Id()) {
        cmbdep->clearEditText();
        txtcodt->clear();
    }
}

void ClientPanel::takeRegion(int id)
{
    m_guard([this, id] {
        if (const auto region = entryById(m_s, List::Region, id))
            txtcodt->setText(region->code);
        m_help->tell(m_s(text::EntryFound));
    });
}

void ClientPanel::completeMail(const QString &text)
{
    const bool grew = text.size() > m_typedMail.size();
    m_typedMail = text;
    if (!grew || txtemail->cursorPosition() != text.size())
        return;
    m_guard([this, &text] {
        const QString domain = completeDomain(m_s, text);
        const qsizetype typed = domainOf(text).size();
        if (domain.size() <= typed)
            return;
        txtemail->setText(text + domain.mid(typed));
        txtemail->setSelection(int(txtemail->text().size()), int(typed - domain.size()));
    });
}

void ClientPanel::walkDomains(int step)
{
    m_guard([this, step] {
        const QStringList known = knownDomains(m_s);
        const QString text = txtemail->text();
        const qsizetype at = text.lastIndexOf(u'@');
        if (known.isEmpty() || at < 0 || txtemail->isReadOnly())
            return;
        const qsizetype now = known.indexOf(text.mid(at + 1));
        const qsizetype next = now < 0 ? 0 : (now + step + known.size()) % known.size();
        txtemail->setText(text.left(at + 1) + known[next]);
        txtemail->setSelection(int(txtemail->text().size()), -int(known[next].size()));
    });
}
