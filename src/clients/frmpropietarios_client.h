// The data of one client: shown, or open for typing.
#pragma once

#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "ui/bound.h"
#include "ui/form_base.h"

namespace ui
{

class HelpLine;
class ListWithCompleted;

} // namespace ui

class QAction;
class QComboBox;
class QPlainTextEdit;

namespace clients
{

class ClientPanel : public QWidget
{
    Q_OBJECT
public:
    /// @param guard runs what can fail, for the form that the panel stands on
    ClientPanel(Sesion &s, ui::bind::Guard guard, ui::HelpLine *help, QWidget *parent = nullptr);

    /// Reads the lists behind the boxes; needed again after one of them grew.
    void loadLists();
    void show(const ClientRecord &record);
    /// Empty boxes, with the id that a new client would get, or 0 for none.
    void empty(int id = 0);
    /// What is told beside the boxes; apart, because it takes several queries.
    void report();
    void open(bool open);

    /// What was shown, with what the boxes say now.
    ClientRecord recordOf() const;
    QVariantMap fieldsOf() const;
    void setFields(const QVariantMap &values);
    void focus(Field field);
    /// The boxes in the order of ENTER.
    QList<QWidget *> chainOf() const;
    /// A key in one of the boxes that is more than typing. @return whether it was used up
    bool Key(QObject *box, const QKeyEvent &key);

Q_SIGNALS:
    void touched();
    /// The user has typed these addresses and goes on.
    void writtenMail(const QString &addresses);
    /// The user wants to write to these addresses.
    void writeMail(const QString &addresses);

private:
    void build();
    QWidget *buildFacts();
    void wire();
    void addCopy(QLineEdit *box, const QString &name);

    void completeSubregion(const QString &text);
    void completeRegion(const QString &text);
    void chooseSubregion(int id);
    void takeSubregion(const Entry &entry);
    void dropSubregion();
    void takeRegion(int id);
    void completeMail(const QString &text);
    void walkDomains(int step);
    bool leaveSubregion();

    Sesion &m_s;
    ui::bind::Guard m_guard;
    ui::HelpLine *m_help;
    ClientRecord m_record;
    QString m_typedMail;            // without what completion put behind it
    std::optional<Entry> m_brought; // the sub-region that filled the dependent boxes
    QList<QAction *> m_copies;

    QLineEdit *txtidc, *txtayn, *txtdir, *txtcodp, *txtcodt, *txttel, *txttelc, *txtemail;
    ui::ListWithCompleted *cmbloc, *cmbdep;
    QComboBox *cmbmark;
    QPlainTextEdit *txtobs, *txtinfoCliente;
    QLabel *txtfeci, *txtUVisita, *txtdebe;
};

} // namespace clients
