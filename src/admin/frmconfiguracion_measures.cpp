#include "admin/frmconfiguracion_rows.h"
#include "admin/measures.h"
#include "columns/configuracion.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/texts.h"

#include <QCheckBox>
#include <QFormLayout>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr int nothing = 4;
constexpr int Yes = 1;
constexpr int No = 2;

ui::OptionsGroup *ask(const PageContext &c, QFormLayout *section, std::string_view column,
                      int title, const QList<std::pair<int, int>> &options, int hint)
{
    return optionsRow(c, section, {QString::fromLatin1(column), c.s(title), options, hint});
}

void tieMeasure(const PageContext &c, ui::OptionsGroup *group, std::string_view column)
{
    ui::bind::Options(c.s, c.guarded, group, column);
    if (group->Value() == 0) // never set means off
        group->setValue(nothing);
}

// A question whose stored number is not that of its option.
void tieYesNo(const PageContext &c, ui::OptionsGroup *group, bool stored,
              const std::function<void(bool)> &store)
{
    group->setValue(stored ? Yes : No);
    QObject::connect(group, &ui::OptionsGroup::chosen, group, [=](int option) {
        if (!c.guarded([&] { store(option == Yes); }))
            group->setValue(option == Yes ? No : Yes);
    });
}

} // namespace

QWidget *admin::measuresPage(const PageContext &c)
{
    Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = parts::Column(page);

    auto *doses = parts::sectionOf(column, s(text::DosesSection));
    tieMeasure(c,
               ask(c, doses, setting::MedidasRevac, text::DoseRemindersQuestion,
                   {{1, text::SendReminderMail},
                    {2, text::PrintReminderLetter},
                    {3, text::MailOrLetter},
                    {nothing, text::Nothing}},
                   text::DoseRemindersNote),
               setting::MedidasRevac);
    wholeNumberRow(c, doses, setting::tiempovencimiento, text::DaysBeforeReminder, 3,
                   text::DaysBeforeNote);
    auto *second = checkboxRow(c, doses, u"MedidasRevacDescont"_s, text::SecondExpiryMail,
                               text::SecondExpiryNote);
    second->setChecked(remembersSecondExpiry(s));
    QObject::connect(second, &QCheckBox::clicked, second, [=, &s](bool on) {
        if (!c.guarded([&] { saveRemembersSecondExpiry(s, on); }))
            second->setChecked(!on);
    });

    auto *birthdays = parts::sectionOf(column, s(text::BirthdaySection));
    tieMeasure(c,
               ask(c, birthdays, setting::MedidasCumple, text::BirthdayQuestion,
                   {{1, text::SendBirthdayMail},
                    {2, text::PrintBirthdayLetter},
                    {3, text::MailOrLetter},
                    {nothing, text::Nothing}},
                   text::BirthdayNote),
               setting::MedidasCumple);

    auto *debts = parts::sectionOf(column, s(text::DebtSection));
    auto *debtors = ask(c, debts, setting::MedidasDeudores, text::DebtorsQuestion,
                        {{Yes, text::SendThreeReminders}, {No, text::Nothing}}, text::DebtNote);
    debts->addRow(parts::noteOf(s(text::ReminderSequence)));
    tieYesNo(c, debtors, remembersDebts(s), [&s](bool on) { saveRemembersDebts(s, on); });
    wholeNumberRow(c, debts, setting::diasdeudores, text::DaysUntilFirstReminder, 3,
                   text::DebtDaysNote);

    auto *food = parts::sectionOf(column, s(text::Food));
    tieYesNo(c,
             ask(c, food, setting::alimentomail, text::FoodQuestion,
                 {{Yes, text::SendMonthlyOffer}, {No, text::Nothing}}, text::FoodOfferNote),
             s.configuracion[setting::alimentomail].toBool(),
             [&s](bool on) { store::saveSetting(s, setting::alimentomail, on); });
    return page;
}
