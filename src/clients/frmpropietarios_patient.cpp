#include "clients/frmpropietarios_patient.h"

#include "clients/frmpropietarios_fields.h"
#include "clients/frmpropietarios_photo.h"
#include "clients/panels.h"
#include "clients/photos.h"
#include "store/settings_row.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QImageReader>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Nombre = 2201,
    Edad_ = 2221,
    Machos = 2226, // the first of four
    Nada = 2231,
    Servicio = 2232,
    AyudaNada = 1408,
    AyudaServicio = 1409,
    Encontrado = 2253,
    AyudaFallecido = 5025,
    AyudaAutomatizacion = 5026,
    Notas = 9496,
    Raza = 9500,
    Especie_ = 9501,
    Pelaje = 9502,
    Sexo = 9503,
    Nacimiento = 9504,
    Peso = 9505,
    Senas = 9506,
    Microchip = 9507,
    Automatizacion = 9508,
    AutomatizacionEntera = 9533,
    Pedigri = 9509,
    Reproductor = 9510,
    Fallecido = 9511,
    Foto = 9512,
    Informacion = 9513,
    Numero = 9514,
    InvitacionDeFoto = 9524,
    ArchivosDeFoto = 9525,
    NoEsImagen = 9526,
    QuitarLaFoto = 9527,
};

constexpr int factsWidth = 172;
constexpr int sexes = 4;

void fill(QComboBox *list, const std::vector<Entrada> &entradas)
{
    const QVariant chosen = list->currentData();
    list->clear();
    list->addItem(QString(), 0);
    for (const Entrada &e : entradas)
        list->addItem(e.nom, e.id);
    list->setCurrentIndex(std::max(0, list->findData(chosen)));
}

void choose(QComboBox *list, int id) { list->setCurrentIndex(std::max(0, list->findData(id))); }

} // namespace

PanelDePaciente::PanelDePaciente(Sesion &s, Atar::Guardia guardia, LineaDeAyuda *ayuda,
                                 QWidget *parent)
    : QWidget(parent), m_s(s), m_guardia(std::move(guardia)), m_ayuda(ayuda)
{
    build();
    wire();
    Vaciar();
    Abrir(false);
}

void PanelDePaciente::build()
{
    const auto column = [this](const char *columna, const QString &nombre, int texto) {
        return CajaDeColumna(m_s, "mascotas", columna, nombre, m_s(texto));
    };
    const auto list = [this](const QString &nombre, int texto) {
        return named(new QComboBox, nombre, m_s(texto));
    };
    txtidm = named(new QLineEdit, u"txtidm"_s, m_s(Numero));
    txtidm->setReadOnly(true);
    txtidm->setFocusPolicy(Qt::ClickFocus);
    txtnom = column("nom", u"txtnom"_s, Nombre);
    cmbraza = named(new ListaConCompletado, u"cmbraza"_s, m_s(Raza));
    cmbraza->lineEdit()->setMaxLength(m_s.clientes->Ancho("mlrazas", "nom"));
    cmbespecie = list(u"cmbespecie"_s, Especie_);
    cmbpel = list(u"cmbpel"_s, Pelaje);
    cmbsex = list(u"cmbsex"_s, Sexo);
    for (int i = 0; i < sexes; ++i)
        cmbsex->addItem(m_s(Machos + i), i);
    Msknac = named(new CajaDeFecha(m_s), u"Msknac"_s, m_s(Nacimiento));
    lblEdad = named(new QLabel, u"lblEdad"_s, {});
    txtpes = named(new CajaDeNumero(m_s), u"txtpes"_s, m_s(Peso));
    txtpes->setMaxLength(7); // no animal weighs more than 9999.99
    txtcar = column("car", u"txtcar"_s, Senas);
    txtChip = column("Chip", u"txtChip"_s, Microchip);
    cmbser = list(u"cmbser"_s, AutomatizacionEntera);
    cmbser->addItem(m_s(Nada), 0);
    cmbser->addItem(m_s(Servicio), 1);
    cmbser->setToolTip(m_s(AyudaAutomatizacion) + u'\n' + m_s(AyudaNada) + u'\n'
                       + m_s(AyudaServicio));
    const auto check = [this](const QString &nombre, int texto) {
        return named(new QCheckBox(m_s(texto)), nombre, m_s(texto));
    };
    chkped = check(u"chkped"_s, Pedigri);
    chkrep = check(u"chkrep"_s, Reproductor);
    chkdec = check(u"chkdec"_s, Fallecido);
    chkdec->setToolTip(m_s(AyudaFallecido));
    txtobsmas = CajaDeNotas(m_s, u"txtobsmas"_s, m_s(Notas));
    for (QComboBox *box : {static_cast<QComboBox *>(cmbraza), cmbespecie, cmbpel, cmbsex, cmbser}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(6);
    }

    auto *unit =
        new QLabel(m_s.configuracion["KgLbs"].toInt() == UnidadDePeso::Libras ? u"lb"_s : u"kg"_s);
    unit->setProperty("clase", u"suave"_s);
    auto *checks = new QHBoxLayout;
    checks->setSpacing(Espacio::L);
    for (QCheckBox *box : {chkped, chkrep, chkdec})
        checks->addWidget(box);
    checks->addStretch();

    auto *boxes = new QWidget;
    auto *grid = new RejillaDeCampos(boxes);
    grid->Fila(m_s(Nombre), txtnom, txtidm);
    grid->Fila(m_s(Raza), cmbraza, m_s(Especie_), cmbespecie);
    grid->Fila(m_s(Pelaje), cmbpel, m_s(Sexo), cmbsex);
    grid->Fila(m_s(Nacimiento), Msknac, m_s(Peso), besides(txtpes, unit));
    grid->Fila(m_s(Senas), txtcar);
    grid->Fila(m_s(Microchip), txtChip, m_s(Automatizacion), cmbser);
    grid->addLayout(checks, grid->rowCount(), 1, 1, 3);
    grid->Fila(m_s(Notas), txtobsmas);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(Espacio::M);
    row->addWidget(boxes, 1);
    row->addWidget(buildFacts());
}

QWidget *PanelDePaciente::besides(QWidget *caja, QLabel *detras)
{
    auto *pair = new QWidget;
    auto *row = new QHBoxLayout(pair);
    row->setContentsMargins({});
    row->setSpacing(Espacio::S);
    row->addWidget(caja, 1);
    row->addWidget(detras);
    pair->setFocusProxy(caja);
    return pair;
}

QWidget *PanelDePaciente::buildFacts()
{
    PicMascota = named(new FotoDeMascota(m_s(InvitacionDeFoto)), u"PicMascota"_s, m_s(Foto));
    txtinfomas = CajaDeInformacion(u"txtinfomas"_s, m_s(Informacion));
    auto *facts = new QWidget;
    facts->setFixedWidth(factsWidth);
    auto *column = new QVBoxLayout(facts);
    column->setContentsMargins({});
    column->setSpacing(Espacio::S);
    column->addWidget(PicMascota);
    column->addWidget(lblEdad);
    column->addWidget(txtinfomas, 1);
    return facts;
}

void PanelDePaciente::wire()
{
    connect(cmbraza, &ListaConCompletado::tecleado, this, &PanelDePaciente::completeBreed);
    connect(cmbraza, &ListaConCompletado::elegido, this, &PanelDePaciente::chooseBreed);
    connect(cmbraza, &ListaConCompletado::vaciado, this, [this] {
        m_traida.reset();
        choose(cmbespecie, 0);
        m_ayuda->Limpiar();
    });
    connect(cmbespecie, &QComboBox::activated, this, &PanelDePaciente::changeSpecies);
    connect(Msknac, &QLineEdit::textChanged, this, &PanelDePaciente::tellAge);

    connect(PicMascota, &FotoDeMascota::pedida, this, &PanelDePaciente::choosePhoto);
    connect(PicMascota, &FotoDeMascota::archivoRecibido, this, &PanelDePaciente::takeFile);
    connect(PicMascota, &FotoDeMascota::recibida, this, &PanelDePaciente::takePicture);
    connect(PicMascota, &FotoDeMascota::quitada, this, &PanelDePaciente::dropPhoto);

    AlCambiar(Cadena(), this, [this] { Q_EMIT tocado(); });
}

void PanelDePaciente::CargarListas()
{
    QList<Opcion> breeds;
    for (const Entrada &e : CargarLista(m_s, Lista::Raza))
        breeds.append({e.nom, e.id, false});
    cmbraza->Cargar(breeds);
    fill(cmbespecie, CargarLista(m_s, Lista::Especie));
    fill(cmbpel, CargarLista(m_s, Lista::Pelaje));
}

void PanelDePaciente::Mostrar(const FichaDePaciente &ficha)
{
    m_ficha = ficha;
    m_traida.reset();
    txtidm->setText(ficha.idm ? QString::number(ficha.idm).rightJustified(5, u'0') : QString());
    txtnom->setText(ficha.nom);
    cmbraza->setEditText(ficha.raza);
    choose(cmbespecie, ficha.esp);
    choose(cmbpel, ficha.pel);
    cmbsex->setCurrentIndex(ficha.sex >= 0 && ficha.sex < sexes ? ficha.sex : 0);
    Msknac->PonerDia(ficha.fecn);
    txtpes->PonerNumero(ficha.pes != 0 ? std::optional(Moneda::Redondear(ficha.pes))
                                       : std::nullopt);
    txtcar->setText(ficha.car);
    txtChip->setText(ficha.Chip);
    cmbser->setCurrentIndex(ficha.servicio);
    chkped->setChecked(ficha.ped);
    chkrep->setChecked(ficha.rep);
    chkdec->setChecked(ficha.dec);
    txtobsmas->setPlainText(ficha.obs);
    for (QLineEdit *box : {txtnom, txtcar, txtChip})
        box->setCursorPosition(0);
    txtinfomas->clear();
    PicMascota->Mostrar({});
    tellAge();
    MostrarPrincipios(this);
}

void PanelDePaciente::Vaciar(int id)
{
    Mostrar({});
    if (id)
        txtidm->setText(QString::number(id).rightJustified(5, u'0'));
    else
        cmbsex->setCurrentIndex(-1);
}

void PanelDePaciente::Informar()
{
    txtinfomas->setPlainText(m_ficha.idm ? InformacionDePaciente(m_s, m_ficha.idm) : QString());
    showPhoto();
}

void PanelDePaciente::Abrir(bool abierto) { AbrirCampos(Cadena(), abierto); }

void PanelDePaciente::PermitirFoto(bool si) { PicMascota->Permitir(si); }

FichaDePaciente PanelDePaciente::Ficha() const
{
    FichaDePaciente f = m_ficha;
    f.nom = txtnom->text();
    f.esp = cmbespecie->currentData().toInt();
    f.raza = cmbraza->currentText();
    f.pel = cmbpel->currentData().toInt();
    f.car = txtcar->text();
    f.Chip = txtChip->text();
    f.fecn = Msknac->Dia();
    const auto weight = txtpes->Numero();
    f.pes = weight ? weight->ADoble() : 0;
    f.sex = std::max(0, cmbsex->currentIndex());
    f.ped = chkped->isChecked();
    f.rep = chkrep->isChecked();
    f.dec = chkdec->isChecked();
    f.servicio = cmbser->currentIndex() > 0;
    f.obs = txtobsmas->toPlainText();
    return f;
}

QString PanelDePaciente::Especie() const { return cmbespecie->currentText(); }

bool PanelDePaciente::NacimientoValido() const { return Msknac->Valida(); }

QVariantMap PanelDePaciente::Campos() const { return LeerCampos(Cadena()); }

void PanelDePaciente::PonerCampos(const QVariantMap &valores) { ::PonerCampos(Cadena(), valores); }

void PanelDePaciente::Enfocar(Campo campo)
{
    QWidget *box = campo == Campo::Nacimiento ? static_cast<QWidget *>(Msknac) : txtnom;
    box->setFocus(Qt::TabFocusReason);
}

QList<QWidget *> PanelDePaciente::Cadena() const
{
    return {txtnom, cmbraza, cmbespecie, cmbpel, cmbsex, Msknac, txtpes,
            txtcar, txtChip, cmbser,     chkped, chkrep, chkdec, txtobsmas};
}

void PanelDePaciente::completeBreed(const QString &texto)
{
    m_guardia([this, &texto] {
        const Completado found = Completar(m_s, Lista::Raza, texto);
        if (found.hallada) {
            cmbraza->Proponer(found.hallada->id, found.hallada->nom);
            takeBreed(*found.hallada);
        } else if (const auto brought = std::exchange(m_traida, std::nullopt);
                   brought && cmbespecie->currentData() == brought->padre) {
            // The letters went on to another name.
            choose(cmbespecie, 0);
        }
        m_ayuda->Decir(AvisoDeCompletado(m_s, Lista::Raza, found));
    });
}

void PanelDePaciente::chooseBreed(int id)
{
    m_guardia([this, id] {
        if (const auto breed = EntradaPorId(m_s, Lista::Raza, id))
            takeBreed(*breed);
        m_ayuda->Decir(m_s(Encontrado));
    });
}

void PanelDePaciente::takeBreed(const Entrada &entrada)
{
    m_traida = entrada;
    choose(cmbespecie, entrada.padre);
}

void PanelDePaciente::changeSpecies()
{
    if (const int breed = cmbraza->Id())
        m_guardia(
            [this, breed] { CambiarEspecieDeRaza(m_s, breed, cmbespecie->currentData().toInt()); });
}

void PanelDePaciente::tellAge()
{
    const QString age = Edad(m_s, Msknac->Dia());
    lblEdad->setText(m_s(Edad_) + u": "_s + age);
    lblEdad->setVisible(!age.isEmpty());
}

void PanelDePaciente::choosePhoto()
{
    const auto file = m_s.dialogos.ElegirArchivo(
        m_s(Foto), m_s(ArchivosDeFoto) + u" (*.bmp *.jpg *.jpeg *.png *.gif *.webp)"_s);
    if (file)
        takeFile(*file);
}

void PanelDePaciente::takeFile(const QString &archivo)
{
    QImageReader reader(archivo);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QImage picture = reader.read();
    if (picture.isNull())
        m_ayuda->Fallo(m_s(NoEsImagen) + u' ' + QFileInfo(archivo).fileName());
    else
        takePicture(picture);
}

void PanelDePaciente::takePicture(const QImage &imagen)
{
    if (imagen.isNull() || !m_ficha.idm)
        return;
    m_guardia([this, &imagen] {
        GuardarFoto(m_s, m_ficha.idm, imagen);
        m_ficha.fot = true;
        showPhoto();
    });
}

void PanelDePaciente::dropPhoto()
{
    if (!m_s.dialogos.Pregunta(m_s(QuitarLaFoto)))
        return;
    m_guardia([this] {
        QuitarFoto(m_s, m_ficha.idm);
        m_ficha.fot = false;
        showPhoto();
    });
}

void PanelDePaciente::showPhoto()
{
    PicMascota->Mostrar(m_ficha.idm && m_ficha.fot ? ArchivoDeFoto(m_s, m_ficha.idm) : QString());
}
