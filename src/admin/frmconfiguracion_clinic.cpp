#include "admin/clinic_data.h"
#include "admin/frmconfiguracion_pages.h"
#include "admin/letterhead.h"
#include "columns/configuracion.h"
#include "messages/mail_account.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/help_line.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QImageReader>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize previewSize(480, 120);

struct Checkbox {
    QStringView name;
    int title;
    ClinicDatum datum;
    QString store::ClinicData::*field;
};

constexpr Checkbox Boxes[] = {
    {u"txtNom", text::SettingsClinicName, ClinicDatum::Name, &store::ClinicData::nom},
    {u"txtPro", text::SettingsClinicOwner, ClinicDatum::Owner, &store::ClinicData::pro},
    {u"txtDir", text::SettingsClinicAddress, ClinicDatum::Address, &store::ClinicData::dir},
    {u"txtTel", text::SettingsClinicTelephones, ClinicDatum::Telephones, &store::ClinicData::tel},
};

void addData(const PageContext &c, QVBoxLayout *column)
{
    QFormLayout *rows =
        parts::sectionOf(column, c.s(text::SettingsClinicData), c.s(text::DataNote));
    QList<QLineEdit *> made;
    for (const Checkbox &box : Boxes) {
        auto *edit = new QLineEdit(c.s.clinic.*box.field);
        edit->setObjectName(box.name.toString());
        edit->setMaxLength(datumWidth(c.s, box.datum));
        edit->setMinimumWidth(parts::TextWidth);
        parts::Row(rows, c.s(box.title), edit);
        made << edit;
        QObject::connect(edit, &QLineEdit::editingFinished, edit, [c, box, edit] {
            if (edit->text() == c.s.clinic.*box.field)
                return;
            c.guarded([&] { saveClinicDatum(c.s, box.datum, edit->text()); });
            edit->setText(c.s.clinic.*box.field);
        });
    }
    c.withoutApostrophes(made);
    c.enterChain({made.begin(), made.end()});
}

void showAccount(Sesion &s, QLabel *account)
{
    const QString user = messages::readMailAccount(s).user;
    account->setText(user.isEmpty() ? s(text::NoMailAccountYet) : s(text::User) + u": "_s + user);
    account->setAccessibleName(account->text());
}

void addAccount(const PageContext &c, QVBoxLayout *column)
{
    QFormLayout *rows =
        parts::sectionOf(column, c.s(text::SettingsClinicAccount), c.s(text::AccountNote));
    auto *account = named(new QLabel, u"lblUsuarioMail"_s, {});
    account->setTextFormat(Qt::PlainText);
    account->setWordWrap(true);
    QPushButton *change = parts::buttonOf(c.s(text::ModifyAccount), u"cmdModMail"_s);
    showAccount(c.s, account);
    rows->addRow(account);
    rows->addRow(change);
    QObject::connect(change, &QPushButton::clicked, account, [c, account] {
        c.guarded([&] {
            if (messages::modifyMailAccount(c.s))
                showAccount(c.s, account);
        });
    });
}

void showPreview(const PageContext &c, QLabel *preview)
{
    QImageReader reader(headerPath(c.s));
    reader.setDecideFormatFromContent(true);
    const qreal scale = preview->devicePixelRatioF();
    if (reader.size().isValid())
        reader.setScaledSize(reader.size().scaled(previewSize * scale, Qt::KeepAspectRatio));
    QPixmap picture = QPixmap::fromImage(reader.read());
    if (picture.isNull()) {
        preview->setText(c.s(text::NoLetterheadYet));
        return;
    }
    picture.setDevicePixelRatio(scale);
    preview->setPixmap(picture);
}

void addLetterhead(const PageContext &c, QVBoxLayout *column)
{
    QFormLayout *rows =
        parts::sectionOf(column, c.s(text::SettingsClinicLetterhead), c.s(text::LetterheadNote));
    auto *preview = named(new QLabel, u"imgEncabezado"_s, c.s(text::SettingsClinicLetterhead));
    preview->setFrameShape(QFrame::StyledPanel);
    preview->setMinimumSize(previewSize);
    preview->setAlignment(Qt::AlignCenter);
    preview->setWordWrap(true);
    preview->setProperty("clase", u"suave"_s);
    showPreview(c, preview);

    QPushButton *choose = parts::buttonOf(c.s(text::ChooseImage), u"cmdObtenerEncabezado"_s);
    auto *print =
        named(new QCheckBox(c.s(text::PrintLetterhead)), u"chkenc"_s, c.s(text::PrintLetterhead));
    ui::bind::Checkbox(c.s, c.guarded, print, setting::encabezado);
    rows->addRow(preview);
    rows->addRow(choose);
    rows->addRow(print);
    QObject::connect(choose, &QPushButton::clicked, preview, [c, preview] {
        c.guarded([&] {
            if (!getHeader(c.s))
                return;
            showPreview(c, preview);
            c.help->success(c.s(text::LetterheadChanged));
        });
    });
}

} // namespace

QWidget *admin::clinicPage(const PageContext &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = parts::Column(page);
    addData(c, column);
    addAccount(c, column);
    addLetterhead(c, column);
    return page;
}
