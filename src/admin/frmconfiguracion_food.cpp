#include "admin/frmconfiguracion_rows.h"
#include "clients/reference_lists.h"
#include "clinical/food.h"
#include "texts/admin.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/calm_list.h"
#include "ui/form_base.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <array>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr int Canine = 1;

/// One food level: its row of controls and what is stored.
struct Level {
    QLabel *caption = nullptr;
    QWidget *row = nullptr;
    ui::NumberBox *txtdetali = nullptr;
    QString stored;
};

class Food : public QWidget
{
public:
    explicit Food(const PageContext &c) : m_c(c)
    {
        build();
        QObject::connect(cmbAliEsp, &QComboBox::currentIndexChanged, this,
                         [this] { m_c.guarded([this] { load(); }); });
        for (size_t i = 0; i < m_levels.size(); ++i) {
            const auto task = [this, i] { store(i); };
            QObject::connect(m_levels[i].txtdetali, &QLineEdit::editingFinished, this, task);
            ui::bind::onLeaving(m_levels[i].txtdetali, task);
        }
        onShow(this, [this] { m_c.guarded([this] { refresh(); }); });
        refresh();
    }

private:
    void build()
    {
        const Sesion &s = m_c.s;
        m_rows =
            parts::sectionOf(parts::Column(this), s(text::FoodQuestion), s(text::FoodWarnNote));
        cmbAliEsp = new ui::CalmList;
        cmbAliEsp->setObjectName(u"cmbAliEsp"_s);
        cmbAliEsp->setMinimumWidth(parts::WordWidth);
        parts::Row(m_rows, s(text::Species), cmbAliEsp);
        warnOnEntering(m_c, cmbAliEsp, text::FoodDiscountNote);
        for (size_t i = 0; i < m_levels.size(); ++i) {
            Level &level = m_levels[i];
            level.txtdetali = new ui::NumberBox(s);
            level.txtdetali->setObjectName(i == 0 ? u"txtdetali"_s : u"txtdetali%1"_s.arg(i + 1));
            level.txtdetali->setFixedWidth(parts::FigureWidth);
            level.row = new QWidget;
            auto *inner = new QHBoxLayout(level.row);
            inner->setContentsMargins(0, 0, 0, 0);
            inner->addWidget(level.txtdetali);
            inner->addWidget(new QLabel(u"g"_s)); // as stocks are, whatever KgLbs says
            parts::Row(m_rows, {}, level.row);
            level.caption = qobject_cast<QLabel *>(m_rows->labelForField(level.row));
            level.caption->setBuddy(level.txtdetali);
            warnOnEntering(m_c, level.txtdetali, text::FoodDiscountNote);
        }
        m_none = parts::noteOf(s(text::NoSpeciesYet));
        m_rows->addRow(m_none);
        m_c.enterChain(
            {cmbAliEsp, m_levels[0].txtdetali, m_levels[1].txtdetali, m_levels[2].txtdetali});
    }

    // Species may have changed on other pages; keeps the choice.
    void refresh()
    {
        const int before = cmbAliEsp->count() > 0 ? species() : Canine;
        const QSignalBlocker quiet(cmbAliEsp);
        cmbAliEsp->clear();
        for (const clients::Entry &e : clients::loadList(m_c.s, clients::List::Species))
            cmbAliEsp->addItem(e.nom, e.id);
        cmbAliEsp->setCurrentIndex(std::max(cmbAliEsp->findData(before), 0));
        load();
    }

    int species() const { return cmbAliEsp->currentData().toInt(); }

    void load()
    {
        const Sesion &s = m_c.s;
        const bool dogs = clinical::hasThreeLevels(species());
        const int captions[] = {dogs ? text::SmallDog : text::FoodQuantity, text::MediumDog,
                                text::LargeDog};
        const bool any = cmbAliEsp->count() > 0;
        m_rows->setRowVisible(m_none, !any);
        cmbAliEsp->setEnabled(any);
        for (size_t i = 0; i < m_levels.size(); ++i) {
            Level &level = m_levels[i];
            const bool used = any && (dogs || i == 0);
            m_rows->setRowVisible(level.row, used);
            level.caption->setText(s(captions[i]));
            level.txtdetali->setAccessibleName(s(captions[i]));
            if (used)
                show(i);
        }
    }

    void show(size_t i)
    {
        const store::Value value = clinical::foodLevel(m_c.s, species(), int(i));
        ui::NumberBox *box = m_levels[i].txtdetali;
        box->setNumber(value.isNull() ? std::nullopt : std::optional(value.toMoneda()));
        box->setModified(false);
        m_levels[i].stored = box->text();
    }

    void store(size_t i)
    {
        ui::NumberBox *box = m_levels[i].txtdetali;
        if (!box->isModified())
            return;
        const auto typed = box->numberOf();
        const store::Value level = typed ? store::Value(typed->toDouble()) : store::Value();
        box->setModified(false); // a message from the guard makes the box lose the focus again
        if (m_c.guarded([&] { clinical::saveFoodLevel(m_c.s, species(), int(i), level); }))
            m_levels[i].stored = box->text();
        else
            box->setText(m_levels[i].stored);
    }

    PageContext m_c;
    QComboBox *cmbAliEsp = nullptr;
    std::array<Level, 3> m_levels;
    QFormLayout *m_rows = nullptr;
    QLabel *m_none = nullptr;
};

} // namespace

QWidget *admin::foodPage(const PageContext &c) { return new Food(c); }
