#include "board/frmacerca.h"

#include "board/frmerrores.h"
#include "board/version_text.h"
#include "columns/configuracion.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QFormLayout>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

} // namespace

frmAcerca::frmAcerca(Sesion &s, QWidget *parent) : ui::FormBase(s, u"frmAcerca"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(text::AboutTitle));
    build();
}

void frmAcerca::build()
{
    auto *mark = new QLabel;
    mark->setPixmap(ui::namedIcon(u"kelvara"_s).pixmap(QSize(72, 72), devicePixelRatioF()));
    auto *name = new QLabel(u"Kelvara"_s);
    name->setProperty("clase", u"titulo"_s);
    auto *motto = new QLabel(m_s(text::AboutMotto));
    motto->setProperty("clase", u"suave"_s);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(ui::space::XS);
    titles->addStretch();
    titles->addWidget(name);
    titles->addWidget(motto);
    titles->addStretch();
    auto *head = new QHBoxLayout;
    head->setSpacing(ui::space::L);
    head->addWidget(mark);
    head->addLayout(titles, 1);

    auto *facts = new QFormLayout;
    facts->setHorizontalSpacing(ui::space::L);
    facts->setVerticalSpacing(ui::space::S);
    facts->setLabelAlignment(Qt::AlignLeft);
    const auto fact = [facts](const QString &label, const QString &objectName,
                              const QString &text) {
        auto *value = named(new QLabel(text), objectName, label + u": "_s + text);
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setWordWrap(true);
        auto *caption = new QLabel(label);
        caption->setProperty("clase", u"suave"_s);
        facts->addRow(caption, value);
    };
    fact(m_s(text::AboutVersion), u"lblVersion"_s,
         versionText(m_s.configuracion[setting::Ver].toInt()));
    fact(m_s(text::SettingsClinic), u"lblClinica"_s, m_s.clinic.nom);
    fact(m_s(text::User), u"lblUsuario"_s, m_s.user.nom);
    fact(m_s(text::DataFolder), u"lblCarpeta"_s, m_s.dataFolder);
    fact(u"Qt"_s, u"lblQt"_s, QString::fromLatin1(qVersion()));

    auto *licences = new QLabel(m_s(text::AboutLicences));
    licences->setProperty("clase", u"suave"_s);
    licences->setWordWrap(true);

    auto *close = named(new QPushButton(m_s(text::Ok)), u"cmdAceptar"_s, m_s(text::Ok));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::XL, ui::space::XL, ui::space::XL, ui::space::L);
    all->setSpacing(ui::space::L);
    all->addLayout(head);
    all->addLayout(facts);
    all->addWidget(licences);
    all->addStretch();
    all->addWidget(close, 0, Qt::AlignRight);
    setMinimumWidth(480);
    close->setFocus();
}

void board::registerBoardForms(Sesion &s, ui::FormRegistry &forms)
{
    forms.enrol(u"frmAcerca"_s, [&s] { return new frmAcerca(s); });
    forms.enrol(u"frmErrores"_s, [&s] { return new frmErrores(s); });
}
