#include "admin/clinic_data.h"
#include "admin/frmconfiguracion_pages.h"
#include "admin/letterhead.h"
#include "messages/mail_account.h"
#include "ui/bound.h"
#include "ui/help_line.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Datos = 9562,
    NotaDeDatos,
    Nombre,
    Propietario,
    Direccion,
    Telefonos,
    Membrete = 9568,
    NotaDeMembrete,
    ImprimirMembrete,
    ElegirImagen,
    SinImagen,
    MembreteCambiado = 9574,
    Usuario_ = 33,
    Cuenta = 9585,
    NotaDeCuenta,
    ModificarCuenta,
    SinCuenta,
};

constexpr QSize previewSize(480, 120);

struct Casilla {
    QStringView nombre;
    int titulo;
    DatoDeClinica dato;
    QString DatosDeClinica::*campo;
};

constexpr Casilla boxes[] = {
    {u"txtNom", Nombre, DatoDeClinica::Nombre, &DatosDeClinica::nom},
    {u"txtPro", Propietario, DatoDeClinica::Propietario, &DatosDeClinica::pro},
    {u"txtDir", Direccion, DatoDeClinica::Direccion, &DatosDeClinica::dir},
    {u"txtTel", Telefonos, DatoDeClinica::Telefonos, &DatosDeClinica::tel},
};

void addData(const ContextoDePagina &c, QVBoxLayout *column)
{
    QFormLayout *rows = Parte::Seccion(column, c.s(Datos), c.s(NotaDeDatos));
    QList<QLineEdit *> made;
    for (const Casilla &box : boxes) {
        auto *edit = new QLineEdit(c.s.clinica.*box.campo);
        edit->setObjectName(box.nombre.toString());
        edit->setMaxLength(AnchoDeDato(c.s, box.dato));
        edit->setMinimumWidth(Parte::AnchoDeTexto);
        Parte::Fila(rows, c.s(box.titulo), edit);
        made << edit;
        QObject::connect(edit, &QLineEdit::editingFinished, edit, [c, box, edit] {
            if (edit->text() == c.s.clinica.*box.campo)
                return;
            c.guarded([&] { GuardarDatoDeClinica(c.s, box.dato, edit->text()); });
            edit->setText(c.s.clinica.*box.campo);
        });
    }
    c.sinApostrofes(made);
    c.cadenaDeEnter({made.begin(), made.end()});
}

void showAccount(Sesion &s, QLabel *account)
{
    const QString user = LeerCuentaDeCorreo(s).usuario;
    account->setText(user.isEmpty() ? s(SinCuenta) : s(Usuario_) + u": "_s + user);
    account->setAccessibleName(account->text());
}

void addAccount(const ContextoDePagina &c, QVBoxLayout *column)
{
    QFormLayout *rows = Parte::Seccion(column, c.s(Cuenta), c.s(NotaDeCuenta));
    auto *account = named(new QLabel, u"lblUsuarioMail"_s, {});
    account->setTextFormat(Qt::PlainText);
    account->setWordWrap(true);
    QPushButton *change = Parte::Boton(c.s(ModificarCuenta), u"cmdModMail"_s);
    showAccount(c.s, account);
    rows->addRow(account);
    rows->addRow(change);
    QObject::connect(change, &QPushButton::clicked, account, [c, account] {
        c.guarded([&] {
            if (ModificarCuentaDeCorreo(c.s))
                showAccount(c.s, account);
        });
    });
}

void showPreview(const ContextoDePagina &c, QLabel *preview)
{
    QImageReader reader(RutaDeEncabezado(c.s));
    reader.setDecideFormatFromContent(true);
    const qreal scale = preview->devicePixelRatioF();
    if (reader.size().isValid())
        reader.setScaledSize(reader.size().scaled(previewSize * scale, Qt::KeepAspectRatio));
    QPixmap picture = QPixmap::fromImage(reader.read());
    if (picture.isNull()) {
        preview->setText(c.s(SinImagen));
        return;
    }
    picture.setDevicePixelRatio(scale);
    preview->setPixmap(picture);
}

void addLetterhead(const ContextoDePagina &c, QVBoxLayout *column)
{
    QFormLayout *rows = Parte::Seccion(column, c.s(Membrete), c.s(NotaDeMembrete));
    auto *preview = named(new QLabel, u"imgEncabezado"_s, c.s(Membrete));
    preview->setFrameShape(QFrame::StyledPanel);
    preview->setMinimumSize(previewSize);
    preview->setAlignment(Qt::AlignCenter);
    preview->setWordWrap(true);
    preview->setProperty("clase", u"suave"_s);
    showPreview(c, preview);

    QPushButton *choose = Parte::Boton(c.s(ElegirImagen), u"cmdObtenerEncabezado"_s);
    auto *print = named(new QCheckBox(c.s(ImprimirMembrete)), u"chkenc"_s, c.s(ImprimirMembrete));
    Atar::Casilla(c.s, c.guarded, print, "encabezado");
    rows->addRow(preview);
    rows->addRow(choose);
    rows->addRow(print);
    QObject::connect(choose, &QPushButton::clicked, preview, [c, preview] {
        c.guarded([&] {
            if (!ObtenerEncabezado(c.s))
                return;
            showPreview(c, preview);
            c.ayuda->Logro(c.s(MembreteCambiado));
        });
    });
}

} // namespace

QWidget *PaginaDeClinica(const ContextoDePagina &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = Parte::Columna(page);
    addData(c, column);
    addAccount(c, column);
    addLetterhead(c, column);
    return page;
}
