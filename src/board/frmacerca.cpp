#include "board/frmacerca.h"

#include "board/version_text.h"
#include "ui/form_registry.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Usuario_ = 33,
    AcercaDe = 9108,
    Aceptar = 9110,
    Lema = 9116,
    Version = 9117,
    Carpeta = 9118,
    Clinica = 9119,
    Licencias = 9120,
};

} // namespace

frmAcerca::frmAcerca(Sesion &s, QWidget *parent) : FormBase(s, u"frmAcerca"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(AcercaDe));
    build();
}

void frmAcerca::build()
{
    auto *mark = new QLabel;
    mark->setPixmap(Icono(u"kelvara"_s).pixmap(QSize(72, 72), devicePixelRatioF()));
    auto *name = new QLabel(u"Kelvara"_s);
    name->setProperty("clase", u"titulo"_s);
    auto *motto = new QLabel(m_s(Lema));
    motto->setProperty("clase", u"suave"_s);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(Espacio::XS);
    titles->addStretch();
    titles->addWidget(name);
    titles->addWidget(motto);
    titles->addStretch();
    auto *head = new QHBoxLayout;
    head->setSpacing(Espacio::L);
    head->addWidget(mark);
    head->addLayout(titles, 1);

    auto *facts = new QFormLayout;
    facts->setHorizontalSpacing(Espacio::L);
    facts->setVerticalSpacing(Espacio::S);
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
    fact(m_s(Version), u"lblVersion"_s, TextoDeVersion(m_s.configuracion["Ver"].toInt()));
    fact(m_s(Clinica), u"lblClinica"_s, m_s.clinica.nom);
    fact(m_s(Usuario_), u"lblUsuario"_s, m_s.usuario.nom);
    fact(m_s(Carpeta), u"lblCarpeta"_s, m_s.carpetaDeDatos);
    fact(u"Qt"_s, u"lblQt"_s, QString::fromLatin1(qVersion()));

    auto *licences = new QLabel(m_s(Licencias));
    licences->setProperty("clase", u"suave"_s);
    licences->setWordWrap(true);

    auto *close = named(new QPushButton(m_s(Aceptar)), u"cmdAceptar"_s, m_s(Aceptar));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::XL, Espacio::XL, Espacio::XL, Espacio::L);
    all->setSpacing(Espacio::L);
    all->addLayout(head);
    all->addLayout(facts);
    all->addWidget(licences);
    all->addStretch();
    all->addWidget(close, 0, Qt::AlignRight);
    setMinimumWidth(480);
    close->setFocus();
}

void RegistrarFormulariosDeTablero(Sesion &s, Formularios &formularios)
{
    formularios.Registrar(u"frmAcerca"_s, [&s] { return new frmAcerca(s); });
}
