#include "clients/frmpropietarios_client.h"

#include "clients/frmpropietarios_fields.h"
#include "clients/mail_domains.h"
#include "clients/panels.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Correo = 16,
    Si = 27,
    No = 28,
    Nombre = 2201,
    NoPuedeSerUnNumero = 2252,
    Encontrado = 2253,
    Direccion = 9486,
    Localidad = 9487,
    Region = 9488,
    CodigoPostal = 9489,
    CodigoDeArea = 9490,
    Telefono = 9491,
    Movil = 9492,
    Origen = 9493,
    ComoNosConocio = 9494,
    Ingreso = 9495,
    Notas = 9496,
    UltimaVisita = 9497,
    Debe = 9498,
    Informacion = 9499,
    Numero = 9514,
    Copiar = 9520,
    Copiado = 9521,
    EscribirCorreo = 9522,
};

constexpr int factsWidth = 188;

QList<Opcion> options(const std::vector<Entrada> &entradas)
{
    QList<Opcion> opciones;
    for (const Entrada &e : entradas)
        opciones.append({e.nom, e.id, false});
    return opciones;
}

} // namespace

PanelDeCliente::PanelDeCliente(Sesion &s, Atar::Guardia guardia, LineaDeAyuda *ayuda,
                               QWidget *parent)
    : QWidget(parent), m_s(s), m_guardia(std::move(guardia)), m_ayuda(ayuda)
{
    build();
    wire();
    Vaciar();
    Abrir(false);
}

void PanelDeCliente::build()
{
    const auto column = [this](const char *columna, const QString &nombre, int texto) {
        return CajaDeColumna(m_s, "clientes", columna, nombre, m_s(texto));
    };
    txtidc = named(new QLineEdit, u"txtidc"_s, m_s(Numero));
    txtidc->setReadOnly(true);
    txtidc->setFocusPolicy(Qt::ClickFocus);
    txtayn = column("ayn", u"txtayn"_s, Nombre);
    txtdir = column("dir", u"txtdir"_s, Direccion);
    cmbloc = named(new ListaConCompletado, u"cmbloc"_s, m_s(Localidad));
    cmbdep = named(new ListaConCompletado, u"cmbdep"_s, m_s(Region));
    cmbloc->lineEdit()->setMaxLength(m_s.clientes->Ancho("cllocalidad", "nom"));
    cmbdep->lineEdit()->setMaxLength(m_s.clientes->Ancho("cldepartamento", "nom"));
    txtcodp = column("codp2", u"txtcodp"_s, CodigoPostal);
    txtcodt = column("codt2", u"txtcodt"_s, CodigoDeArea);
    txttel = column("tel2", u"txttel"_s, Telefono);
    txttelc = column("telc2", u"txttelc"_s, Movil);
    txtemail = column("email", u"txtemail"_s, Correo);
    cmbmark = named(new QComboBox, u"cmbmark"_s, m_s(ComoNosConocio));
    cmbmark->setToolTip(m_s(ComoNosConocio));
    txtobs = CajaDeNotas(m_s, u"txtobs"_s, m_s(Notas));
    for (QComboBox *list :
         {static_cast<QComboBox *>(cmbloc), static_cast<QComboBox *>(cmbdep), cmbmark}) {
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(6);
    }

    auto *boxes = new QWidget;
    auto *grid = new RejillaDeCampos(boxes);
    grid->Fila(m_s(Nombre), txtayn, txtidc);
    grid->Fila(m_s(Direccion), txtdir);
    grid->Fila(m_s(Localidad), cmbloc, m_s(Region), cmbdep);
    grid->Fila(m_s(CodigoPostal), txtcodp, m_s(CodigoDeArea), txtcodt);
    grid->Fila(m_s(Telefono), txttel, m_s(Movil), txttelc);
    grid->Fila(m_s(Correo), txtemail);
    grid->Fila(m_s(Origen), cmbmark);
    grid->Fila(m_s(Notas), txtobs);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(Espacio::M);
    row->addWidget(boxes, 1);
    row->addWidget(buildFacts());
}

QWidget *PanelDeCliente::buildFacts()
{
    txtfeci = named(new QLabel, u"txtfeci"_s, m_s(Ingreso));
    txtUVisita = named(new QLabel, u"txtUVisita"_s, m_s(UltimaVisita));
    txtdebe = named(new QLabel, u"txtdebe"_s, m_s(Debe));
    txtinfoCliente = CajaDeInformacion(u"txtinfoCliente"_s, m_s(Informacion));

    auto *facts = new QWidget;
    facts->setFixedWidth(factsWidth);
    auto *column = new QVBoxLayout(facts);
    column->setContentsMargins({});
    column->setSpacing(Espacio::S);
    for (QLabel *label : {txtfeci, txtUVisita, txtdebe}) {
        label->setTextFormat(Qt::PlainText);
        column->addWidget(label);
    }
    column->addWidget(txtinfoCliente, 1);
    return facts;
}

void PanelDeCliente::wire()
{
    connect(cmbloc, &ListaConCompletado::tecleado, this, &PanelDeCliente::completeSubregion);
    connect(cmbdep, &ListaConCompletado::tecleado, this, &PanelDeCliente::completeRegion);
    connect(cmbloc, &ListaConCompletado::elegido, this, &PanelDeCliente::chooseSubregion);
    connect(cmbdep, &ListaConCompletado::elegido, this, &PanelDeCliente::takeRegion);
    connect(cmbloc, &ListaConCompletado::vaciado, this, [this] {
        m_traida.reset();
        txtcodp->clear();
        cmbdep->clearEditText();
        txtcodt->clear();
        m_ayuda->Limpiar();
    });
    connect(cmbdep, &ListaConCompletado::vaciado, this, [this] {
        txtcodt->clear();
        m_ayuda->Limpiar();
    });
    connect(txtemail, &QLineEdit::textEdited, this, &PanelDeCliente::completeMail);

    addCopy(txttel, u"accCopiarTel"_s);
    addCopy(txttelc, u"accCopiarCel"_s);
    addCopy(txtemail, u"accCopiarCorreo"_s);
    QAction *write = txtemail->addAction(Icono(u"correo"_s), QLineEdit::TrailingPosition);
    write->setObjectName(u"accEscribirCorreo"_s);
    write->setToolTip(m_s(EscribirCorreo));
    connect(write, &QAction::triggered, this, [this] { Q_EMIT escribirCorreo(txtemail->text()); });
    m_copias.append(write);

    AlCambiar(Cadena(), this, [this] { Q_EMIT tocado(); });
}

void PanelDeCliente::addCopy(QLineEdit *caja, const QString &nombre)
{
    QAction *copy = caja->addAction(Icono(u"copiar"_s), QLineEdit::TrailingPosition);
    copy->setObjectName(nombre);
    copy->setToolTip(m_s(Copiar));
    connect(copy, &QAction::triggered, this, [this, caja] {
        QGuiApplication::clipboard()->setText(caja->text());
        m_ayuda->Logro(m_s(Copiado) + u' ' + caja->text());
    });
    m_copias.append(copy);
}

void PanelDeCliente::CargarListas()
{
    cmbloc->Cargar(options(CargarLista(m_s, Lista::Subregion)));
    cmbdep->Cargar(options(CargarLista(m_s, Lista::Region)));
    const QVariant chosen = cmbmark->currentData();
    cmbmark->clear();
    cmbmark->addItem(QString(), 0);
    for (const Entrada &e : CargarLista(m_s, Lista::Marketing))
        cmbmark->addItem(e.nom, e.id);
    cmbmark->setCurrentIndex(std::max(0, cmbmark->findData(chosen)));
}

void PanelDeCliente::Mostrar(const FichaDeCliente &ficha)
{
    m_ficha = ficha;
    m_correoTecleado = ficha.email;
    m_traida.reset();
    txtidc->setText(ficha.idc ? QString::number(ficha.idc).rightJustified(5, u'0') : QString());
    const std::pair<QLineEdit *, const QString &> texts[] = {
        {txtayn, ficha.ayn},    {txtdir, ficha.dir},  {txtcodp, ficha.codp2},
        {txtcodt, ficha.codt2}, {txttel, ficha.tel2}, {txttelc, ficha.telc2},
        {txtemail, ficha.email}};
    for (const auto &[box, text] : texts) {
        box->setText(text);
        box->setCursorPosition(0);
    }
    cmbloc->setEditText(ficha.subregion);
    cmbdep->setEditText(ficha.region);
    cmbmark->setCurrentIndex(std::max(0, cmbmark->findData(ficha.mark)));
    txtobs->setPlainText(ficha.obs);
    for (QAction *action : std::as_const(m_copias))
        action->setVisible(!qobject_cast<QLineEdit *>(action->parent())->text().isEmpty());

    const auto fact = [this](QLabel *label, int caption, QDate day) {
        label->setText(day.isValid() ? m_s(caption) + u": "_s + TextoDeDia(day) : QString());
    };
    fact(txtfeci, Ingreso, ficha.feci);
    fact(txtUVisita, UltimaVisita, ficha.fecu);
    txtdebe->setText(ficha.idc ? m_s(Debe) + u": "_s + m_s(ficha.deuda ? Si : No) : QString());
    if (const QString look = ficha.deuda ? u"falla"_s : QString();
        txtdebe->property("clase").toString() != look) {
        txtdebe->setProperty("clase", look);
        txtdebe->style()->unpolish(txtdebe);
        txtdebe->style()->polish(txtdebe);
    }
    txtinfoCliente->clear();
    MostrarPrincipios(this);
}

void PanelDeCliente::Vaciar(int id)
{
    Mostrar({});
    if (id)
        txtidc->setText(QString::number(id).rightJustified(5, u'0'));
}

void PanelDeCliente::Informar()
{
    txtinfoCliente->setPlainText(m_ficha.idc ? InformacionDeCliente(m_s, m_ficha.idc) : QString());
}

void PanelDeCliente::Abrir(bool abierto) { AbrirCampos(Cadena(), abierto); }

FichaDeCliente PanelDeCliente::Ficha() const
{
    FichaDeCliente f = m_ficha;
    f.ayn = txtayn->text();
    f.dir = txtdir->text();
    f.subregion = cmbloc->currentText();
    f.codp2 = txtcodp->text();
    f.region = cmbdep->currentText();
    f.codt2 = txtcodt->text();
    f.tel2 = txttel->text();
    f.telc2 = txttelc->text();
    f.email = txtemail->text();
    f.mark = cmbmark->currentData().toInt();
    f.obs = txtobs->toPlainText();
    return f;
}

QVariantMap PanelDeCliente::Campos() const { return LeerCampos(Cadena()); }

void PanelDeCliente::PonerCampos(const QVariantMap &valores) { ::PonerCampos(Cadena(), valores); }

void PanelDeCliente::Enfocar(Campo campo)
{
    QWidget *box = txtayn;
    if (campo == Campo::Region)
        box = cmbdep;
    else if (campo == Campo::Subregion)
        box = cmbloc;
    box->setFocus(Qt::TabFocusReason);
}

QList<QWidget *> PanelDeCliente::Cadena() const
{
    return {txtayn, txtdir,  cmbloc,   cmbdep,  txtcodp, txtcodt,
            txttel, txttelc, txtemail, cmbmark, txtobs};
}

bool PanelDeCliente::Tecla(QObject *caja, const QKeyEvent &tecla)
{
    const bool enter = tecla.key() == Qt::Key_Return || tecla.key() == Qt::Key_Enter;
    if (caja == cmbloc && enter)
        return leaveSubregion();
    if (caja != txtemail)
        return false;
    if (enter)
        Q_EMIT correoEscrito(txtemail->text());
    else if (tecla.key() == Qt::Key_Down || tecla.key() == Qt::Key_Up)
        walkDomains(tecla.key() == Qt::Key_Down ? 1 : -1);
    return tecla.key() == Qt::Key_Down || tecla.key() == Qt::Key_Up;
}

// A known sub-region brings its region along, so ENTER passes that by.
bool PanelDeCliente::leaveSubregion()
{
    if (SinLetras(cmbloc->currentText())) {
        m_s.dialogos.Mensaje(m_s(NoPuedeSerUnNumero));
        cmbloc->setFocus();
        return true;
    }
    if (cmbloc->Id() == 0)
        return false;
    txtcodp->setFocus(Qt::TabFocusReason);
    txtcodp->selectAll();
    return true;
}

void PanelDeCliente::completeSubregion(const QString &texto)
{
    m_guardia([this, &texto] {
        const Completado found = Completar(m_s, Lista::Subregion, texto);
        if (found.hallada) {
            cmbloc->Proponer(found.hallada->id, found.hallada->nom);
            takeSubregion(*found.hallada);
        } else {
            dropSubregion();
        }
        m_ayuda->Decir(AvisoDeCompletado(m_s, Lista::Subregion, found));
    });
}

void PanelDeCliente::completeRegion(const QString &texto)
{
    m_guardia([this, &texto] {
        const Completado found = Completar(m_s, Lista::Region, texto);
        if (found.hallada) {
            cmbdep->Proponer(found.hallada->id, found.hallada->nom);
            txtcodt->setText(found.hallada->codigo);
        } else {
            txtcodt->clear();
        }
        m_ayuda->Decir(AvisoDeCompletado(m_s, Lista::Region, found));
    });
}

void PanelDeCliente::chooseSubregion(int id)
{
    m_guardia([this, id] {
        if (const auto entry = EntradaPorId(m_s, Lista::Subregion, id))
            takeSubregion(*entry);
        m_ayuda->Decir(m_s(Encontrado));
    });
}

void PanelDeCliente::takeSubregion(const Entrada &entrada)
{
    // A region that came with the offer before goes with it.
    if (!entrada.padre)
        dropSubregion();
    m_traida = entrada;
    txtcodp->setText(entrada.codigo);
    if (entrada.padre && entrada.padre != cmbdep->Id()) {
        cmbdep->SeleccionarItem(entrada.padre);
        if (const auto region = PadreDe(m_s, Lista::Subregion, entrada))
            txtcodt->setText(region->codigo);
    }
}

// The letters went on to another name: what came with the entry goes, unless it was typed over.
void PanelDeCliente::dropSubregion()
{
    const auto brought = std::exchange(m_traida, std::nullopt);
    if (!brought)
        return;
    if (txtcodp->text() == brought->codigo)
        txtcodp->clear();
    if (brought->padre && brought->padre == cmbdep->Id()) {
        cmbdep->clearEditText();
        txtcodt->clear();
    }
}

void PanelDeCliente::takeRegion(int id)
{
    m_guardia([this, id] {
        if (const auto region = EntradaPorId(m_s, Lista::Region, id))
            txtcodt->setText(region->codigo);
        m_ayuda->Decir(m_s(Encontrado));
    });
}

void PanelDeCliente::completeMail(const QString &texto)
{
    const bool grew = texto.size() > m_correoTecleado.size();
    m_correoTecleado = texto;
    if (!grew || txtemail->cursorPosition() != texto.size())
        return;
    m_guardia([this, &texto] {
        const QString domain = CompletarDominio(m_s, texto);
        const qsizetype typed = DominioDe(texto).size();
        if (domain.size() <= typed)
            return;
        txtemail->setText(texto + domain.mid(typed));
        txtemail->setSelection(int(txtemail->text().size()), int(typed - domain.size()));
    });
}

void PanelDeCliente::walkDomains(int paso)
{
    m_guardia([this, paso] {
        const QStringList known = DominiosConocidos(m_s);
        const QString text = txtemail->text();
        const qsizetype at = text.lastIndexOf(u'@');
        if (known.isEmpty() || at < 0 || txtemail->isReadOnly())
            return;
        const qsizetype now = known.indexOf(text.mid(at + 1));
        const qsizetype next = now < 0 ? 0 : (now + paso + known.size()) % known.size();
        txtemail->setText(text.left(at + 1) + known[next]);
        txtemail->setSelection(int(txtemail->text().size()), -int(known[next].size()));
    });
}
