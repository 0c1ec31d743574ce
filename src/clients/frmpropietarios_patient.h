// The data of one patient: shown, or open for typing.
#pragma once

#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "ui/bound.h"
#include "ui/form_base.h"

namespace ui
{

class DayBox;
class NumberBox;

} // namespace ui

namespace clients
{

class PatientPhoto;

} // namespace clients

namespace ui
{

class HelpLine;
class ListWithCompleted;

} // namespace ui

class QCheckBox;
class QComboBox;
class QImage;
class QPlainTextEdit;

namespace clients
{

class PatientPanel : public QWidget
{
    Q_OBJECT
public:
    /// @param guard runs what can fail, for the form that the panel stands on
    PatientPanel(Sesion &s, ui::bind::Guard guard, ui::HelpLine *help, QWidget *parent = nullptr);

    /// Reads the lists behind the boxes; needed again after one of them grew.
    void loadLists();
    void show(const PatientRecord &record);
    /// Empty boxes, with the id that a new patient would get, or 0 for none.
    void empty(int id = 0);
    /// The photograph and what is told beside the boxes; apart, because it takes several queries.
    void report();
    void open(bool open);
    /// Whether a photograph is taken for the patient shown.
    void allowPhoto(bool si);

    /// What was shown, with what the boxes say now.
    PatientRecord recordOf() const;
    /// The name in the species box.
    QString speciesOf() const;
    /// Whether the birth date is empty or a day.
    bool validBirth() const;
    QVariantMap fieldsOf() const;
    void setFields(const QVariantMap &values);
    void focus(Field field);
    /// A breed that the user has put to another species, which the whole clinic's list takes over
    /// when the patient is saved.
    struct BreedSpecies {
        int breed = 0;
        int esp = 0;
    };
    std::optional<BreedSpecies> breedSpecies() const { return m_breedSpecies; }
    /// The boxes in the order of ENTER.
    QList<QWidget *> chainOf() const;

Q_SIGNALS:
    void touched();

private:
    void build();
    QWidget *buildFacts();
    void wire();
    QWidget *besides(QWidget *box, QLabel *behind);

    void completeBreed(const QString &text);
    void chooseBreed(int id);
    void takeBreed(const Entry &entry);
    void changeSpecies();
    void tellAge();
    void choosePhoto();
    void takeFile(const QString &file);
    void takePicture(const QImage &image);
    void dropPhoto();
    void showPhoto();

    Sesion &m_s;
    ui::bind::Guard m_guard;
    ui::HelpLine *m_help;
    PatientRecord m_record;
    std::optional<BreedSpecies> m_breedSpecies;
    std::optional<Entry> m_brought; // the breed that chose the species

    QLineEdit *txtidm, *txtnom, *txtcar, *txtChip;
    ui::ListWithCompleted *cmbraza;
    QComboBox *cmbespecie, *cmbpel, *cmbsex, *cmbser;
    ui::DayBox *Msknac;
    ui::NumberBox *txtpes;
    QCheckBox *chkped, *chkrep, *chkdec;
    QPlainTextEdit *txtobsmas, *txtinfomas;
    QLabel *lblEdad;
    PatientPhoto *PicMascota;
};

} // namespace clients
