#include "startup/frmregistroinicial.h"

#include "startup/first_run.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QFormLayout>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    PidaUnNombre = 2259,
    ContrasenasDistintas = 5030,
    RecuerdeLaContrasena = 5031,
    Bienvenida = 9130,
    Explicacion = 9131,
    NombreDeLaVeterinaria = 9132,
    Direccion = 9133,
    Telefonos = 9134,
    NombreDeUsuario = 9135,
    Contrasena = 9136,
    RepetirContrasena = 9137,
    Continuar = 9138,
    SalirSinCompletar = 9139,
    TomaElDelUsuario = 9140,
    SinContrasena = 9141,
};

void markFault(QLineEdit *box, bool fault)
{
    box->setProperty("falla", fault);
    box->style()->unpolish(box);
    box->style()->polish(box);
}

} // namespace

frmRegistroInicial::frmRegistroInicial(Sesion &s, QWidget *parent)
    : FormBase(s, u"frmRegistroInicial"_s, parent)
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
    mark->setPixmap(Icono(u"kelvara"_s).pixmap(QSize(56, 56), devicePixelRatioF()));
    auto *title = new QLabel(m_s(Bienvenida));
    title->setProperty("clase", u"titulo"_s);
    auto *explanation = new QLabel(m_s(Explicacion));
    explanation->setProperty("clase", u"suave"_s);
    explanation->setWordWrap(true);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(Espacio::XS);
    titles->addWidget(title);
    titles->addWidget(explanation);
    auto *head = new QHBoxLayout;
    head->setSpacing(Espacio::L);
    head->addWidget(mark, 0, Qt::AlignTop);
    head->addLayout(titles, 1);

    auto *form = new QFormLayout;
    form->setHorizontalSpacing(Espacio::L);
    form->setVerticalSpacing(Espacio::M);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    txtNombreVeterinaria = addBox(form, u"txtNombreVeterinaria"_s, NombreDeLaVeterinaria);
    txtDireccionVeterinaria = addBox(form, u"txtDireccionVeterinaria"_s, Direccion);
    txtTelefonosVeterinaria = addBox(form, u"txtTelefonosVeterinaria"_s, Telefonos);
    auto *pause = new QWidget;
    pause->setFixedHeight(Espacio::XS);
    form->addRow(pause);
    txtNombreUsuario = addBox(form, u"txtNombreUsuario"_s, NombreDeUsuario);
    txtContraseñaUsuario = addBox(form, u"txtContraseñaUsuario"_s, Contrasena);
    txtContraseñaUsuario2 = addBox(form, u"txtContraseñaUsuario2"_s, RepetirContrasena);
    txtNombreVeterinaria->setPlaceholderText(m_s(TomaElDelUsuario));
    txtContraseñaUsuario->setPlaceholderText(m_s(SinContrasena));
    for (QLineEdit *box : {txtNombreUsuario, txtContraseñaUsuario, txtContraseñaUsuario2})
        box->setMaxLength(50);
    for (QLineEdit *box : {txtContraseñaUsuario, txtContraseñaUsuario2})
        box->setEchoMode(QLineEdit::Password);

    lblAviso = named(new QLabel, u"lblAviso"_s, {});
    lblAviso->setProperty("clase", u"falla"_s);
    lblAviso->setWordWrap(true);
    cmdContinuar = named(new QPushButton(m_s(Continuar)), u"cmdContinuar"_s, m_s(Continuar));
    cmdContinuar->setDefault(true);
    auto *foot = new QHBoxLayout;
    foot->addWidget(lblAviso, 1);
    foot->addWidget(cmdContinuar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::XL, Espacio::XL, Espacio::XL, Espacio::L);
    all->setSpacing(Espacio::XL);
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
    const DatosPrimeraVez typed{txtNombreVeterinaria->text(),    txtDireccionVeterinaria->text(),
                                txtTelefonosVeterinaria->text(), txtNombreUsuario->text(),
                                txtContraseñaUsuario->text(),    txtContraseñaUsuario2->text()};
    if (const int fault = ValidarPrimeraVez(typed))
        return showFault(fault);
    if (!typed.contrasena.isEmpty())
        m_s.dialogos.Mensaje(m_s(RecuerdeLaContrasena));
    if (guarded([this, &typed] { RegistrarPrimeraVez(m_s, typed); }))
        accept();
}

void frmRegistroInicial::showFault(int text)
{
    lblAviso->setText(text ? m_s(text) : QString());
    lblAviso->setAccessibleName(lblAviso->text());
    markFault(txtNombreUsuario, text == PidaUnNombre);
    markFault(txtContraseñaUsuario, text == ContrasenasDistintas);
    markFault(txtContraseñaUsuario2, text == ContrasenasDistintas);
    QLineEdit *box = text == PidaUnNombre           ? txtNombreUsuario
                     : text == ContrasenasDistintas ? txtContraseñaUsuario
                                                    : nullptr;
    if (box) {
        box->setFocus();
        box->selectAll();
    }
}

void frmRegistroInicial::reject()
{
    if (m_s.dialogos.Pregunta(m_s(SalirSinCompletar)))
        FormBase::reject();
}
