#include "clients/frmpropietarios_fields.h"

#include "ui/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Renglones = 9528 };

constexpr int columns = 4; // caption, box, caption, box
constexpr int codeWidth = 68;
const QString titleKey = u"teclaDelTitulo"_s;

} // namespace

RejillaDeCampos::RejillaDeCampos(QWidget *dueno) : QGridLayout(dueno)
{
    setContentsMargins({});
    setHorizontalSpacing(Espacio::S);
    setVerticalSpacing(Espacio::XS + 1);
    for (const int boxColumn : {1, 3})
        setColumnStretch(boxColumn, 1);
}

QLabel *RejillaDeCampos::caption(const QString &titulo, QWidget *caja)
{
    auto *label = new QLabel(titulo);
    label->setProperty("clase", u"suave"_s);
    label->setBuddy(caja);
    return label;
}

void RejillaDeCampos::Fila(const QString &titulo, QWidget *caja, QWidget *codigo)
{
    const int row = rowCount();
    const bool tall = qobject_cast<QPlainTextEdit *>(caja);
    addWidget(caption(titulo, caja), row, 0, tall ? Qt::AlignTop : Qt::Alignment());
    if (codigo) {
        auto *line = new QHBoxLayout;
        line->setSpacing(Espacio::S);
        line->addWidget(caja, 1);
        line->addWidget(codigo);
        codigo->setFixedWidth(codeWidth);
        addLayout(line, row, 1, 1, columns - 1);
    } else {
        addWidget(caja, row, 1, 1, columns - 1);
    }
    if (tall)
        setRowStretch(row, 1);
}

void RejillaDeCampos::Fila(const QString &titulo, QWidget *caja, const QString &titulo2,
                           QWidget *caja2)
{
    const int row = rowCount();
    addWidget(caption(titulo, caja), row, 0);
    addWidget(caja, row, 1);
    addWidget(caption(titulo2, caja2), row, 2);
    addWidget(caja2, row, 3);
}

QVariantMap LeerCampos(const QList<QWidget *> &campos)
{
    QVariantMap valores;
    for (QWidget *w : campos) {
        QVariant &v = valores[w->objectName()];
        if (const auto *linea = qobject_cast<QLineEdit *>(w))
            v = linea->text();
        else if (const auto *notas = qobject_cast<QPlainTextEdit *>(w))
            v = notas->toPlainText();
        else if (const auto *casilla = qobject_cast<QCheckBox *>(w))
            v = casilla->isChecked();
        else if (const auto *lista = qobject_cast<QComboBox *>(w))
            v = lista->isEditable() ? QVariant(lista->currentText()) : lista->currentData();
    }
    return valores;
}

void PonerCampos(const QList<QWidget *> &campos, const QVariantMap &valores)
{
    for (QWidget *w : campos) {
        const QVariant v = valores.value(w->objectName());
        if (!v.isValid())
            continue;
        if (auto *linea = qobject_cast<QLineEdit *>(w))
            linea->setText(v.toString());
        else if (auto *notas = qobject_cast<QPlainTextEdit *>(w))
            notas->setPlainText(v.toString());
        else if (auto *casilla = qobject_cast<QCheckBox *>(w))
            casilla->setChecked(v.toBool());
        else if (auto *lista = qobject_cast<QComboBox *>(w)) {
            if (lista->isEditable())
                lista->setEditText(v.toString());
            else
                lista->setCurrentIndex(lista->findData(v.toInt()));
        }
    }
}

void MostrarPrincipios(const QWidget *panel)
{
    for (QLineEdit *linea : panel->findChildren<QLineEdit *>())
        linea->home(false);
}

void AbrirCampos(const QList<QWidget *> &campos, bool abiertos)
{
    const auto policy = abiertos ? Qt::StrongFocus : Qt::ClickFocus;
    for (QWidget *w : campos) {
        if (auto *linea = qobject_cast<QLineEdit *>(w)) {
            linea->setReadOnly(!abiertos);
            linea->setFocusPolicy(policy);
        } else if (auto *notas = qobject_cast<QPlainTextEdit *>(w)) {
            notas->setReadOnly(!abiertos);
            notas->setFocusPolicy(policy);
            // Unlike a line, it does not dress anew by itself.
            notas->style()->unpolish(notas);
            notas->style()->polish(notas);
        } else {
            w->setEnabled(abiertos);
        }
    }
}

void AlCambiar(const QList<QWidget *> &campos, QObject *contexto, const std::function<void()> &que)
{
    for (QWidget *w : campos) {
        if (auto *linea = qobject_cast<QLineEdit *>(w))
            QObject::connect(linea, &QLineEdit::textChanged, contexto, que);
        else if (auto *notas = qobject_cast<QPlainTextEdit *>(w))
            QObject::connect(notas, &QPlainTextEdit::textChanged, contexto, que);
        else if (auto *casilla = qobject_cast<QCheckBox *>(w))
            QObject::connect(casilla, &QCheckBox::toggled, contexto, que);
        else if (auto *lista = qobject_cast<QComboBox *>(w))
            QObject::connect(lista, &QComboBox::currentTextChanged, contexto, que);
    }
}

QPlainTextEdit *CajaDeNotas(const Sesion &s, const QString &nombre, const QString &accesible)
{
    auto *notas = named(new QPlainTextEdit, nombre, accesible);
    notas->setTabChangesFocus(true);
    notas->setToolTip(s(Renglones));
    notas->setMinimumHeight(44);
    notas->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    return notas;
}

QPlainTextEdit *CajaDeInformacion(const QString &nombre, const QString &accesible)
{
    auto *info = named(new QPlainTextEdit, nombre, accesible);
    info->setProperty("clase", u"informacion"_s);
    info->setReadOnly(true);
    info->setTabChangesFocus(true);
    info->setFocusPolicy(Qt::ClickFocus);
    info->setMinimumHeight(60);
    info->document()->setDocumentMargin(0);
    info->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    return info;
}

QLineEdit *CajaDeColumna(const Sesion &s, std::string_view tabla, std::string_view columna,
                         const QString &nombre, const QString &accesible)
{
    auto *caja = named(new QLineEdit, nombre, accesible);
    if (const int ancho = s.clientes->Ancho(tabla, columna); ancho > 0)
        caja->setMaxLength(ancho);
    // What it takes, not what it is long: the grid gives it the room there is.
    caja->setMinimumWidth(40);
    return caja;
}

void PonerTitulo(QPushButton *boton, const QString &titulo)
{
    if (boton->text() == titulo)
        return;
    boton->setText(titulo);
    boton->setAccessibleName(spoken(titulo));
    boton->setShortcut({});
    auto *key = boton->findChild<QShortcut *>(titleKey);
    if (!key) {
        key = new QShortcut(boton);
        key->setObjectName(titleKey);
        QObject::connect(key, &QShortcut::activated, boton, &QPushButton::click);
    }
    key->setKey(QKeySequence::mnemonic(titulo));
}

QString EstiloDeFicha()
{
    return uR"(
QLineEdit, QPlainTextEdit { padding: 3px 7px; }
QLineEdit:focus, QPlainTextEdit:focus { padding: 2px 6px; }
QComboBox { padding: 3px 24px 3px 7px; }
QComboBox:focus { padding: 2px 23px 2px 6px; }
QComboBox:!editable { padding-left: 9px; }
QComboBox:!editable:focus { padding-left: 8px; }
QComboBox:disabled { padding-right: 7px; }
QComboBox QLineEdit, QComboBox QLineEdit:focus { padding: 0; border: 0; }
QLineEdit:read-only, QPlainTextEdit:read-only { background: transparent; border-color: palette(mid); }
QComboBox:disabled { background: transparent; border-color: palette(mid); color: palette(window-text); }
QComboBox QLineEdit:disabled { background: transparent; color: palette(window-text); }
QComboBox::drop-down:disabled { width: 0; border: 0; }
QComboBox::down-arrow:disabled { image: none; }
QCheckBox:disabled { color: palette(window-text); }
QPlainTextEdit[clase="informacion"] { background: transparent; border: 0; padding: 0; }
QPushButton { padding: 4px 12px; min-width: 0; }
QPushButton:focus { padding: 3px 11px; }
QPushButton[clase="barra"] { background: transparent; border-color: transparent; padding: 5px 9px; }
QPushButton[clase="barra"]:focus { border-color: palette(highlight); padding: 4px 8px; }
QPushButton[clase="barra"]:hover:enabled { border-color: palette(highlight); }
)"_s;
}
