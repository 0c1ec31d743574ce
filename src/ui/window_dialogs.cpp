#include "ui/window_dialogs.h"

#include "ui/form_base.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace
{

constexpr int textWidth = 460;
constexpr int entryWidth = 320;
constexpr int optionsWorthAFilter = 12;

/// Numbers of the captions.
enum Texto { Si = 27, No = 28, Aceptar = 9110, Cancelar = 9111, Filtro = 9112, SinOpciones = 9113 };

/// One modal box: what it says above, an optional body, buttons below.
class Caja : public QDialog
{
public:
    explicit Caja(const QString &title) : QDialog(QApplication::activeWindow())
    {
        setObjectName(u"CajaDeDialogo"_s);
        setWindowTitle(title);
        setWindowModality(Qt::ApplicationModal);
        m_layout = new QVBoxLayout(this);
        m_layout->setContentsMargins(Espacio::XL, Espacio::XL, Espacio::XL, Espacio::L);
        m_layout->setSpacing(Espacio::L);
    }

    void say(const QString &text, const QString &picture = {})
    {
        auto *row = new QHBoxLayout;
        row->setSpacing(Espacio::L);
        if (!picture.isEmpty()) {
            auto *image = new QLabel;
            image->setPixmap(Icono(picture).pixmap(QSize(40, 40), devicePixelRatioF()));
            row->addWidget(image, 0, Qt::AlignTop);
        }
        row->addWidget(textControl(text), 1);
        m_layout->addLayout(row);
        setAccessibleDescription(text);
    }

    void body(QWidget *widget) { m_layout->addWidget(widget, 1); }

    /// The first button is what ENTER presses; the last what ESC does.
    void buttons(const QString &yes, const QString &no = {})
    {
        auto *row = new QHBoxLayout;
        row->setSpacing(Espacio::S);
        row->addStretch();
        m_accept = button(row, u"cmdAceptar"_s, yes, &QDialog::accept);
        m_accept->setDefault(true);
        if (!no.isEmpty())
            button(row, u"cmdCancelar"_s, no, &QDialog::reject);
        m_layout->addLayout(row);
    }

    /// The first letter of a button is enough where nothing can be typed.
    void answerByLetter()
    {
        for (auto *b : findChildren<QPushButton *>())
            QObject::connect(new QShortcut(QKeySequence(b->accessibleName().left(1)), this),
                             &QShortcut::activated, b, [b] { b->click(); });
    }

    QPushButton *acceptButton() const { return m_accept; }

private:
    QPushButton *button(QHBoxLayout *row, const QString &name, const QString &caption,
                        void (QDialog::*slot)())
    {
        auto *b = named(new QPushButton(u'&' + caption), name, caption);
        connect(b, &QPushButton::clicked, this, slot);
        row->addWidget(b);
        return b;
    }

    QWidget *textControl(const QString &text)
    {
        auto *label = named(new QLabel(text), u"lblTexto"_s, text);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setFocusPolicy(Qt::NoFocus);
        label->ensurePolished();
        const int natural = label->fontMetrics().size(0, text).width() + Espacio::XS;
        label->setMinimumWidth(std::min(textWidth, natural));
        const int height = label->heightForWidth(textWidth);
        if (height <= screen()->availableGeometry().height() / 2) {
            label->setMinimumHeight(label->heightForWidth(label->minimumWidth()));
            return label;
        }
        delete label;
        auto *pages = named(new QPlainTextEdit(text), u"lblTexto"_s, text);
        pages->setReadOnly(true);
        pages->setTabChangesFocus(true);
        pages->setMinimumSize(textWidth, screen()->availableGeometry().height() / 3);
        return pages;
    }

    QVBoxLayout *m_layout = nullptr;
    QPushButton *m_accept = nullptr;
};

QStandardItemModel *modelOf(const QStringList &columns, const QList<Opcion> &options, bool several,
                            QObject *parent)
{
    auto *model = new QStandardItemModel(parent);
    model->setHorizontalHeaderLabels(columns);
    for (const Opcion &option : options) {
        QList<QStandardItem *> row;
        for (const QString &cell : option.texto.split(u'\t')) {
            row.append(new QStandardItem(cell));
            row.last()->setEditable(false);
        }
        if (several) {
            row.first()->setCheckable(true);
            row.first()->setCheckState(option.marcada ? Qt::Checked : Qt::Unchecked);
        }
        model->appendRow(row);
    }
    return model;
}

QTableView *tableOf(QAbstractItemModel *model, const QString &title)
{
    auto *table = named(new QTableView, u"Grilla"_s, title);
    table->setModel(model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->resizeColumnsToContents();
    int width = 2 * Espacio::XL;
    for (int c = 0; c < model->columnCount(); ++c)
        width += table->columnWidth(c);
    const int height = table->verticalHeader()->defaultSectionSize() * (model->rowCount() + 2);
    table->setMinimumSize(std::clamp(width, 360, 720), std::clamp(height, 160, 420));
    return table;
}

/// ENTER on the table accepts, the space bar marks the row, letters go to the filter.
class TeclasDeLista : public QObject
{
public:
    TeclasDeLista(Caja &box, QTableView &table, QLineEdit *filter)
        : QObject(&box), m_box(box), m_table(table), m_filter(filter)
    {
        table.installEventFilter(this);
        if (filter)
            filter->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            m_box.acceptButton()->click();
            return true;
        }
        if (watched == m_filter && (key.key() == Qt::Key_Down || key.key() == Qt::Key_Up)) {
            m_table.setFocus();
            QApplication::sendEvent(&m_table, event);
            return true;
        }
        if (watched == &m_table && key.key() == Qt::Key_Space && mark())
            return true;
        if (watched == &m_table && m_filter && !key.text().isEmpty()
            && key.text().at(0).isPrint()) {
            m_filter->setFocus();
            m_filter->insert(key.text());
            return true;
        }
        return false;
    }

private:
    bool mark()
    {
        const QModelIndex cell = m_table.currentIndex().siblingAtColumn(0);
        if (!(cell.flags() & Qt::ItemIsUserCheckable))
            return false;
        const bool on = cell.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        m_table.model()->setData(cell, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        return true;
    }

    Caja &m_box;
    QTableView &m_table;
    QLineEdit *m_filter;
};

std::optional<QString> askText(const Textos &texts, const QString &title, const QString &text,
                               const QString &initial, QLineEdit::EchoMode echo)
{
    Caja box(title);
    box.say(text);
    auto *entry = named(new QLineEdit(initial), u"txtTexto"_s, text);
    entry->setEchoMode(echo);
    entry->setMinimumWidth(entryWidth);
    entry->selectAll();
    box.body(entry);
    box.buttons(texts(Aceptar), texts(Cancelar));
    entry->setFocus();
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    return entry->text();
}

} // namespace

bool DialogosDeVentana::HayUnaAbierta()
{
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && modal->objectName() == u"CajaDeDialogo";
}

void DialogosDeVentana::Mensaje(const QString &texto)
{
    Caja box(u"Kelvara"_s);
    box.say(texto, u"mensaje"_s);
    box.buttons(m_textos(Aceptar));
    box.exec();
}

bool DialogosDeVentana::Pregunta(const QString &texto)
{
    Caja box(u"Kelvara"_s);
    box.say(texto, u"pregunta"_s);
    box.buttons(m_textos(Si), m_textos(No));
    box.answerByLetter();
    return box.exec() == QDialog::Accepted;
}

bool DialogosDeVentana::Confirmar(const QString &texto)
{
    Caja box(u"Kelvara"_s);
    box.say(texto, u"pregunta"_s);
    box.buttons(m_textos(Aceptar), m_textos(Cancelar));
    return box.exec() == QDialog::Accepted;
}

std::optional<QString> DialogosDeVentana::PedirTexto(const QString &titulo, const QString &texto,
                                                     const QString &inicial)
{
    return askText(m_textos, titulo, texto, inicial, QLineEdit::Normal);
}

std::optional<QString> DialogosDeVentana::PedirContrasena(const QString &titulo,
                                                          const QString &texto)
{
    return askText(m_textos, titulo, texto, {}, QLineEdit::Password);
}

std::optional<QList<Opcion>> DialogosDeVentana::Seleccionar(const QString &titulo,
                                                            const QStringList &columnas,
                                                            const QList<Opcion> &opciones,
                                                            bool varias)
{
    Caja box(titulo);
    box.say(opciones.isEmpty() ? m_textos(SinOpciones) : titulo);

    auto *model = modelOf(columnas, opciones, varias, &box);
    auto *shown = new QSortFilterProxyModel(&box);
    shown->setSourceModel(model);
    shown->setFilterKeyColumn(-1);
    shown->setFilterCaseSensitivity(Qt::CaseInsensitive);

    QLineEdit *filter = nullptr;
    QTableView *table = tableOf(shown, titulo);
    if (opciones.size() > optionsWorthAFilter) {
        filter = named(new QLineEdit, u"txtFiltro"_s, m_textos(Filtro));
        filter->setPlaceholderText(m_textos(Filtro));
        filter->setClearButtonEnabled(true);
        box.body(filter);
        QObject::connect(filter, &QLineEdit::textChanged, shown, [shown, table](const QString &t) {
            shown->setFilterFixedString(t);
            table->selectRow(0);
        });
    }
    box.body(table);
    box.buttons(m_textos(Aceptar), m_textos(Cancelar));
    box.acceptButton()->setDisabled(opciones.isEmpty());
    new TeclasDeLista(box, *table, filter);
    if (!varias)
        QObject::connect(table, &QTableView::doubleClicked, &box, &QDialog::accept);

    qsizetype first = 0;
    for (qsizetype i = 0; i < opciones.size() && !varias; ++i)
        if (opciones[i].marcada)
            first = i;
    table->selectRow(int(first));
    table->setFocus();
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;

    QList<Opcion> chosen;
    const int current = shown->mapToSource(table->currentIndex()).row();
    for (int i = 0; i < opciones.size(); ++i) {
        if (varias ? model->item(i)->checkState() == Qt::Checked : i == current) {
            chosen.append(opciones[i]);
            chosen.last().marcada = true;
        }
    }
    if (!varias && chosen.isEmpty())
        return std::nullopt;
    return chosen;
}

std::optional<QString> DialogosDeVentana::ElegirArchivo(const QString &titulo,
                                                        const QString &filtro)
{
    const QString file =
        QFileDialog::getOpenFileName(QApplication::activeWindow(), titulo, {}, filtro);
    if (file.isEmpty())
        return std::nullopt;
    return file;
}

std::optional<QString> DialogosDeVentana::GuardarArchivo(const QString &titulo,
                                                         const QString &propuesto,
                                                         const QString &filtro)
{
    const QString file =
        QFileDialog::getSaveFileName(QApplication::activeWindow(), titulo, propuesto, filtro);
    if (file.isEmpty())
        return std::nullopt;
    return file;
}
