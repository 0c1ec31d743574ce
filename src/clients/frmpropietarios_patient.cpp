#include "clients/frmpropietarios_patient.h"

#include "clients/frmpropietarios_photo.h"
#include "clients/panels.h"
#include "clients/photos.h"
#include "columns/configuracion.h"
#include "store/settings_row.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/day_box.h"
#include "ui/help_line.h"
#include "ui/record_fields.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QImageReader>
#include <QPlainTextEdit>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

constexpr int PatientFactsWidth = 172;
constexpr int Sexes = 4;

void fill(QComboBox *list, const std::vector<Entry> &entries)
{
    const QVariant chosen = list->currentData();
    list->clear();
    list->addItem(QString(), 0);
    for (const Entry &e : entries)
        list->addItem(e.nom, e.id);
    list->setCurrentIndex(std::max(0, list->findData(chosen)));
}

void choose(QComboBox *list, int id) { list->setCurrentIndex(std::max(0, list->findData(id))); }

} // namespace

PatientPanel::PatientPanel(Sesion &s, ui::bind::Guard guard, ui::HelpLine *help, QWidget *parent)
    : QWidget(parent), m_s(s), m_guard(std::move(guard)), m_help(help)
{
    build();
    wire();
    empty();
    open(false);
}

void PatientPanel::build()
{
    const auto column = [this](const char *field, const QString &name, int text) {
        return ui::columnBox(m_s, "mascotas", field, name, m_s(text));
    };
    const auto list = [this](const QString &name, int text) {
        return named(new QComboBox, name, m_s(text));
    };
    txtidm = named(new QLineEdit, u"txtidm"_s, m_s(text::RegistryClientNumber));
    txtidm->setReadOnly(true);
    txtidm->setFocusPolicy(Qt::ClickFocus);
    txtnom = column("nom", u"txtnom"_s, text::Name);
    cmbraza = named(new ui::ListWithCompleted, u"cmbraza"_s, m_s(text::Breed));
    cmbraza->lineEdit()->setMaxLength(m_s.clientes->widthOf("mlrazas", "nom"));
    cmbespecie = list(u"cmbespecie"_s, text::Species);
    cmbpel = list(u"cmbpel"_s, text::RegistryPatientCoat);
    cmbsex = list(u"cmbsex"_s, text::RegistryPatientSex);
    for (int i = 0; i < Sexes; ++i)
        cmbsex->addItem(m_s(text::Males + i), i);
    Msknac = named(new ui::DayBox(m_s, store::Lean::Behind, ui::DayBox::Need::Optional),
                   u"Msknac"_s, m_s(text::RegistryPatientBirth));
    lblEdad = named(new QLabel, u"lblEdad"_s, {});
    txtpes = named(new ui::NumberBox(m_s), u"txtpes"_s, m_s(text::RegistryPatientWeight));
    txtpes->setMaxLength(7); // no animal weighs more than 9999.99
    txtcar = column("car", u"txtcar"_s, text::PatientMarks);
    txtChip = column("Chip", u"txtChip"_s, text::RegistryPatientMicrochip);
    cmbser = list(u"cmbser"_s, text::Automation);
    cmbser->addItem(m_s(text::Nothing), 0);
    cmbser->addItem(m_s(text::Service), 1);
    cmbser->setToolTip(m_s(text::AutomationHelp) + u'\n' + m_s(text::NothingHelp) + u'\n'
                       + m_s(text::ServiceHelp));
    const auto check = [this](const QString &name, int text) {
        return named(new QCheckBox(m_s(text)), name, m_s(text));
    };
    chkped = check(u"chkped"_s, text::Pedigree);
    chkrep = check(u"chkrep"_s, text::BreedingAnimal);
    chkdec = check(u"chkdec"_s, text::RegistryPatientDeceased);
    chkdec->setToolTip(m_s(text::DeceasedHelp));
    txtobsmas = ui::notesBox(m_s, u"txtobsmas"_s, m_s(text::Notes));
    for (QComboBox *box : {static_cast<QComboBox *>(cmbraza), cmbespecie, cmbpel, cmbsex, cmbser}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(6);
    }

    auto *unit = new QLabel(
        m_s.configuracion[setting::KgLbs].toInt() == store::weightUnit::Libras ? u"lb"_s : u"kg"_s);
    unit->setProperty("clase", u"suave"_s);
    auto *checks = new QHBoxLayout;
    checks->setSpacing(ui::space::L);
    for (QCheckBox *box : {chkped, chkrep, chkdec})
        checks->addWidget(box);
    checks->addStretch();

    auto *boxes = new QWidget;
    auto *grid = new ui::FieldGrid(boxes);
    grid->Row(m_s(text::Name), txtnom, txtidm);
    grid->Row(m_s(text::Breed), cmbraza, m_s(text::Species), cmbespecie);
    grid->Row(m_s(text::RegistryPatientCoat), cmbpel, m_s(text::RegistryPatientSex), cmbsex);
    grid->Row(m_s(text::RegistryPatientBirth), Msknac, m_s(text::RegistryPatientWeight),
              besides(txtpes, unit));
    grid->Row(m_s(text::PatientMarks), txtcar);
    grid->Row(m_s(text::RegistryPatientMicrochip), txtChip, m_s(text::RegistryPatientAutomation),
              cmbser);
    grid->addLayout(checks, grid->rowCount(), 1, 1, 3);
    grid->Row(m_s(text::Notes), txtobsmas);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(ui::space::M);
    row->addWidget(boxes, 2);
    row->addWidget(buildFacts(), 1);
}

QWidget *PatientPanel::besides(QWidget *box, QLabel *behind)
{
    auto *pair = new QWidget;
    auto *row = new QHBoxLayout(pair);
    row->setContentsMargins({});
    row->setSpacing(ui::space::S);
    row->addWidget(box, 1);
    row->addWidget(behind);
    pair->setFocusProxy(box);
    return pair;
}

QWidget *PatientPanel::buildFacts()
{
    PicMascota = named(new PatientPhoto(m_s(text::PhotoInvitation)), u"PicMascota"_s,
                       m_s(text::RegistryPatientPhoto));
    txtinfomas = ui::informationBox(u"txtinfomas"_s, m_s(text::RegistryPatientInformation));
    auto *facts = new QWidget;
    facts->setMinimumWidth(ui::NarrowestFacts);
    facts->setMaximumWidth(PatientFactsWidth);
    auto *column = new QVBoxLayout(facts);
    column->setContentsMargins({});
    column->setSpacing(ui::space::S);
    column->addWidget(PicMascota);
    column->addWidget(lblEdad);
    column->addWidget(txtinfomas, 1);
    return facts;
}

void PatientPanel::wire()
{
    connect(cmbraza, &ui::ListWithCompleted::typed, this, &PatientPanel::completeBreed);
    connect(cmbraza, &ui::ListWithCompleted::chosen, this, &PatientPanel::chooseBreed);
    connect(cmbraza, &ui::ListWithCompleted::emptied, this, [this] {
        m_brought.reset();
        choose(cmbespecie, 0);
        m_help->clean();
    });
    connect(cmbespecie, &QComboBox::activated, this, &PatientPanel::changeSpecies);
    connect(Msknac, &QLineEdit::textChanged, this, &PatientPanel::tellAge);

    connect(PicMascota, &PatientPhoto::requested, this, &PatientPanel::choosePhoto);
    connect(PicMascota, &PatientPhoto::receivedFile, this, &PatientPanel::takeFile);
    connect(PicMascota, &PatientPhoto::received, this, &PatientPanel::takePicture);
    connect(PicMascota, &PatientPhoto::removed, this, &PatientPanel::dropPhoto);

    ui::onChange(chainOf(), this, [this] { Q_EMIT touched(); });
}

void PatientPanel::loadLists()
{
    QList<store::Option> breeds;
    for (const Entry &e : loadList(m_s, List::Breed))
        breeds.append({e.nom, e.id, false});
    cmbraza->load(breeds);
    fill(cmbespecie, loadList(m_s, List::Species));
    fill(cmbpel, loadList(m_s, List::Coat));
}

void PatientPanel::show(const PatientRecord &record)
{
    m_record = record;
    m_brought.reset();
    m_breedSpecies.reset();
    txtidm->setText(record.idm ? QString::number(record.idm).rightJustified(5, u'0') : QString());
    txtnom->setText(record.nom);
    cmbraza->setEditText(record.breed);
    choose(cmbespecie, record.esp);
    choose(cmbpel, record.pel);
    cmbsex->setCurrentIndex(record.sex >= 0 && record.sex < Sexes ? record.sex : 0);
    Msknac->setDay(record.fecn);
    txtpes->setNumber(record.pes != 0 ? std::optional(Moneda::round(record.pes)) : std::nullopt);
    txtcar->setText(record.car);
    txtChip->setText(record.Chip);
    cmbser->setCurrentIndex(record.service);
    chkped->setChecked(record.ped);
    chkrep->setChecked(record.rep);
    chkdec->setChecked(record.dec);
    txtobsmas->setPlainText(record.obs);
    for (QLineEdit *box : {txtnom, txtcar, txtChip})
        box->setCursorPosition(0);
    txtinfomas->clear();
    PicMascota->show({});
    tellAge();
    ui::showBeginnings(this);
}

void PatientPanel::empty(int id)
{
    show({});
    if (id)
        txtidm->setText(QString::number(id).rightJustified(5, u'0'));
    else
        cmbsex->setCurrentIndex(-1);
}

void PatientPanel::report()
{
    txtinfomas->setPlainText(m_record.idm ? patientInformation(m_s, m_record.idm) : QString());
    showPhoto();
}

void PatientPanel::open(bool open) { ui::openFields(chainOf(), open); }

void PatientPanel::allowPhoto(bool si) { PicMascota->allow(si); }

PatientRecord PatientPanel::recordOf() const
{
    PatientRecord f = m_record;
    f.nom = txtnom->text();
    f.esp = cmbespecie->currentData().toInt();
    f.breed = cmbraza->currentText();
    f.pel = cmbpel->currentData().toInt();
    f.car = txtcar->text();
    f.Chip = txtChip->text();
    f.fecn = Msknac->day();
    const auto weight = txtpes->numberOf();
    f.pes = weight ? weight->toDouble() : 0;
    f.sex = std::max(0, cmbsex->currentIndex());
    f.ped = chkped->isChecked();
    f.rep = chkrep->isChecked();
    f.dec = chkdec->isChecked();
    f.service = cmbser->currentIndex() > 0;
    f.obs = txtobsmas->toPlainText();
    return f;
}

QString PatientPanel::speciesOf() const { return cmbespecie->currentText(); }

bool PatientPanel::validBirth() const { return Msknac->isAcceptable(); }

QVariantMap PatientPanel::fieldsOf() const { return ui::readFields(chainOf()); }

void PatientPanel::setFields(const QVariantMap &values) { ui::setFields(chainOf(), values); }

void PatientPanel::focus(Field field)
{
    QWidget *box = field == Field::Birth ? static_cast<QWidget *>(Msknac) : txtnom;
    box->setFocus(Qt::TabFocusReason);
}

QList<QWidget *> PatientPanel::chainOf() const
{
    return {txtnom, cmbraza, cmbespecie, cmbpel, cmbsex, Msknac, txtpes,
            txtcar, txtChip, cmbser,     chkped, chkrep, chkdec, txtobsmas};
}

void PatientPanel::completeBreed(const QString &text)
{
    m_guard([this, &text] {
        const Completed found = complete(m_s, List::Breed, text);
        if (found.found) {
            cmbraza->propose(found.found->id, found.found->nom);
            takeBreed(*found.found);
        } else if (const auto brought = std::exchange(m_brought, std::nullopt);
                   brought && cmbespecie->currentData() == brought->parent) {
            // The letters went on to another name.
            choose(cmbespecie, 0);
        }
        m_help->tell(completedNotice(m_s, List::Breed, found));
    });
}

void PatientPanel::chooseBreed(int id)
{
    m_guard([this, id] {
        if (const auto breed = entryById(m_s, List::Breed, id))
            takeBreed(*breed);
        m_help->tell(m_s(text::EntryFound));
    });
}

void PatientPanel::takeBreed(const Entry &entry)
{
    m_brought = entry;
    choose(cmbespecie, entry.parent);
}

void PatientPanel::changeSpecies()
{
    if (const int breed = cmbraza->Id())
        m_breedSpecies = {breed, cmbespecie->currentData().toInt()};
}

void PatientPanel::tellAge()
{
    const QString age = ageOf(m_s, Msknac->day());
    lblEdad->setText(m_s(text::Age) + u": "_s + age);
    lblEdad->setVisible(!age.isEmpty());
}

void PatientPanel::choosePhoto()
{
    const auto file = m_s.dialogos.ElegirArchivo(
        m_s(text::RegistryPatientPhoto),
        m_s(text::PhotoFiles) + u" (*.bmp *.jpg *.jpeg *.png *.gif *.webp)"_s);
    if (file)
        takeFile(*file);
}

void PatientPanel::takeFile(const QString &file)
{
    QImageReader reader(file);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QImage picture = reader.read();
    if (picture.isNull())
        m_help->faultOf(m_s(text::PhotoUnreadable) + u' ' + QFileInfo(file).fileName());
    else
        takePicture(picture);
}

void PatientPanel::takePicture(const QImage &image)
{
    if (image.isNull() || !m_record.idm)
        return;
    m_guard([this, &image] {
        savePhoto(m_s, m_record.idm, image);
        m_record.fot = true;
        showPhoto();
    });
}

void PatientPanel::dropPhoto()
{
    if (!m_s.dialogos.askBeforeLoss(m_s(text::RemovePhotoQuestion)))
        return;
    m_guard([this] {
        removePhoto(m_s, m_record.idm);
        m_record.fot = false;
        showPhoto();
    });
}

void PatientPanel::showPhoto()
{
    PicMascota->show(m_record.idm && m_record.fot ? photoFile(m_s, m_record.idm) : QString());
}
