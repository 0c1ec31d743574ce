#include "startup/frmregistroinicial.h"

#include "startup/first_run.h"
#include "texts/texts.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QFormLayout>
#include <QStyle>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

void markFault(QLineEdit *box, bool fault)
{
    box->setProperty("falla", fault);
    box->style()->unpolish(box);
    box->style()->polish(box);
}

} // namespace

frmRegistroInicial::frmRegistroInicial(Sesion &s, QWidget *parent)
    : ui::FormBase(s, u"frmRegistroInicial"_s, parent)
{
    setWindowTitle(u"Kelvara"_s);
    build();
    wire();
}

QLineEdit *frmRegistroInicial::addBox(QFormLayout *form, const QString &name, int caption)
{
    auto *box = named(new QLineEdit, name, m_s(caption));
    box->setMaxLength(100);
    auto *label = new QLabel(m_s(caption));
    label->setBuddy(box);
    form->addRow(label, box);
    return box;
}

void frmRegistroInicial::build()
{
    auto *mark = new QLabel;
    mark->setPixmap(ui::namedIcon(u"kelvara"_s).pixmap(QSize(56, 56), devicePixelRatioF()));
    auto *title = new QLabel(m_s(text::FirstRunWelcome));
    title->setProperty("clase", u"titulo"_s);
    auto *explanation = new QLabel(m_s(text::FirstRunIntroduction));
    explanation->setProperty("clase", u"suave"_s);
    explanation->setWordWrap(true);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(ui::space::XS);
    titles->addWidget(title);
    titles->addWidget(explanation);
    auto *head = new QHBoxLayout;
    head->setSpacing(ui::space::L);
    head->addWidget(mark, 0, Qt::AlignTop);
    head->addLayout(titles, 1);

    auto *form = new QFormLayout;
    form->setHorizontalSpacing(ui::space::L);
    form->setVerticalSpacing(ui::space::M);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    txtNombreVeterinaria = addBox(form, u"txtNombreVeterinaria"_s, text::ClinicName);
    txtDireccionVeterinaria = addBox(form, u"txtDireccionVeterinaria"_s, text::Address);
    txtTelefonosVeterinaria = addBox(form, u"txtTelefonosVeterinaria"_s, text::FirstRunTelephones);
    auto *pause = new QWidget;
    pause->setFixedHeight(ui::space::XS);
    form->addRow(pause);
    txtNombreUsuario = addBox(form, u"txtNombreUsuario"_s, text::UserName);
    txtContraseñaUsuario = addBox(form, u"txtContraseñaUsuario"_s, text::FirstRunPassword);
    txtContraseñaUsuario2 = addBox(form, u"txtContraseñaUsuario2"_s, text::RepeatPassword);
    txtNombreVeterinaria->setPlaceholderText(m_s(text::PasswordDefaultsToUser));
    txtContraseñaUsuario->setPlaceholderText(m_s(text::OptionalHint));
    for (QLineEdit *box : {txtNombreUsuario, txtContraseñaUsuario, txtContraseñaUsuario2})
        box->setMaxLength(50);
    for (QLineEdit *box : {txtContraseñaUsuario, txtContraseñaUsuario2})
        box->setEchoMode(QLineEdit::Password);

    lblAviso = named(new QLabel, u"lblAviso"_s, {});
    lblAviso->setProperty("clase", u"falla"_s);
    lblAviso->setWordWrap(true);
    cmdContinuar =
        named(new QPushButton(m_s(text::FirstRunGoOn)), u"cmdContinuar"_s, m_s(text::FirstRunGoOn));
    cmdContinuar->setDefault(true);
    auto *foot = new QHBoxLayout;
    foot->addWidget(lblAviso, 1);
    foot->addWidget(cmdContinuar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::XL, ui::space::XL, ui::space::XL, ui::space::L);
    all->setSpacing(ui::space::XL);
    all->addLayout(head);
    all->addLayout(form);
    all->addLayout(foot);
    setMinimumWidth(600);
    txtNombreVeterinaria->setFocus();
}

void frmRegistroInicial::wire()
{
    const QList<QLineEdit *> boxes{txtNombreVeterinaria,    txtDireccionVeterinaria,
                                   txtTelefonosVeterinaria, txtNombreUsuario,
                                   txtContraseñaUsuario,    txtContraseñaUsuario2};
    enterChain(QList<QWidget *>(boxes.begin(), boxes.end()) << cmdContinuar);
    refuseApostrophe(boxes);
    for (QLineEdit *box : boxes)
        connect(box, &QLineEdit::textChanged, this, [this] { showFault(0); });
    connect(cmdContinuar, &QPushButton::clicked, this, &frmRegistroInicial::confirm);
}

void frmRegistroInicial::confirm()
{
    const FirstRunData typed{txtNombreVeterinaria->text(),    txtDireccionVeterinaria->text(),
                             txtTelefonosVeterinaria->text(), txtNombreUsuario->text(),
                             txtContraseñaUsuario->text(),    txtContraseñaUsuario2->text()};
    if (const int fault = validateFirstRun(typed))
        return showFault(fault);
    if (!typed.password.isEmpty())
        m_s.dialogos.Mensaje(m_s(text::RememberPasswordAdvice));
    if (guarded([this, &typed] { registerFirstRun(m_s, typed); }))
        accept();
}

void frmRegistroInicial::showFault(int text)
{
    lblAviso->setText(text ? m_s(text) : QString());
    lblAviso->setAccessibleName(lblAviso->text());
    markFault(txtNombreUsuario, text == text::PleaseEnterName);
    markFault(txtContraseñaUsuario, text == text::PasswordsDoNotMatch);
    markFault(txtContraseñaUsuario2, text == text::PasswordsDoNotMatch);
    QLineEdit *box = text == text::PleaseEnterName       ? txtNombreUsuario
                     : text == text::PasswordsDoNotMatch ? txtContraseñaUsuario
                                                         : nullptr;
    if (box) {
        box->setFocus();
        box->selectAll();
    }
}

void frmRegistroInicial::reject()
{
    if (m_s.dialogos.Pregunta(m_s(text::LeaveFirstRunQuestion)))
        ui::FormBase::reject();
}
