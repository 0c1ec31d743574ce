#include "ui/window_dialogs.h"

#include "texts/texts.h"
#include "texts/ui.h"
#include "ui/form_base.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr int SmallestButton = 96; // "No" is as easy to hit as "Cancel"
constexpr int TextWidth = 460;
constexpr int EntryWidth = 320;
constexpr int OptionsWorthAFilter = 12;
constexpr int FirstResult = 2; // after QDialog's own results

int pauseMs = 300;

/// A modal dialog: text on top, an optional body, buttons below.
class Box : public QDialog
{
public:
    explicit Box(const QString &title) : QDialog(QApplication::activeWindow())
    {
        qApp->installEventFilter(this);
        setObjectName(u"CajaDeDialogo"_s);
        setWindowTitle(title);
        setWindowModality(Qt::ApplicationModal);
        m_layout = new QVBoxLayout(this);
        m_layout->setContentsMargins(space::XL, space::XL, space::XL, space::L);
        m_layout->setSpacing(space::L);
    }

    void say(const QString &text, const QString &picture = {})
    {
        auto *row = new QHBoxLayout;
        row->setSpacing(space::L);
        if (!picture.isEmpty()) {
            auto *image = new QLabel;
            image->setPixmap(namedIcon(picture).pixmap(QSize(40, 40), devicePixelRatioF()));
            row->addWidget(image, 0, Qt::AlignTop);
        }
        row->addWidget(textControl(text), 1);
        m_layout->addLayout(row);
        setAccessibleDescription(text);
    }

    void body(QWidget *widget) { m_layout->addWidget(widget, 1); }

    /// ENTER presses the first button, ESC the last.
    void buttons(const QString &yes, const QString &no = {})
    {
        auto *row = new QHBoxLayout;
        row->setSpacing(space::S);
        row->addStretch();
        m_accept = button(row, u"cmdAceptar"_s, yes, &QDialog::accept);
        m_accept->setDefault(true);
        if (!no.isEmpty())
            button(row, u"cmdCancelar"_s, no, &QDialog::reject);
        m_layout->addLayout(row);
    }

    /// Makes ENTER press the last button instead of the first.
    void standOnNo()
    {
        auto *no = findChild<QPushButton *>(u"cmdCancelar"_s);
        m_accept->setAutoDefault(false);
        m_accept->setDefault(false);
        no->setDefault(true);
        no->setFocus();
    }

    /// Adds a button that ends the dialog with a result of its own.
    /// @param letter index in the caption of the letter that presses it together with ALT
    void anotherButton(const QString &name, const QString &caption, int result,
                       qsizetype letter = 0)
    {
        auto *row = qobject_cast<QHBoxLayout *>(m_layout->itemAt(m_layout->count() - 1)->layout());
        auto *b = named(new QPushButton(QString(caption).insert(letter, u'&')), name, caption);
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, [this, result] { done(result); });
        row->addWidget(b);
    }

    /// Lets the first letter of a button press it, in dialogs where nothing can be typed.
    void answerByLetter()
    {
        for (auto *b : findChildren<QPushButton *>())
            QObject::connect(new QShortcut(QKeySequence(b->accessibleName().left(1)), this),
                             &QShortcut::activated, b, [b] { b->click(); });
    }

    QPushButton *acceptButton() const { return m_accept; }

protected:
    void showEvent(QShowEvent *event) override
    {
        m_shown.start();
        QDialog::showEvent(event);
    }

    // Keys meant for the form behind must not answer the dialog.
    bool eventFilter(QObject *, QEvent *event) override
    {
        const auto type = event->type();
        const bool key = type == QEvent::KeyPress || type == QEvent::ShortcutOverride;
        if (!key || !m_shown.isValid() || m_shown.elapsed() >= pauseMs)
            return false;
        event->accept();
        return true;
    }

private:
    QPushButton *button(QHBoxLayout *row, const QString &name, const QString &caption,
                        void (QDialog::*slot)())
    {
        auto *b = named(new QPushButton(u'&' + caption), name, caption);
        b->setMinimumWidth(SmallestButton);
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
        const int natural = label->fontMetrics().size(0, text).width() + space::XS;
        label->setMinimumWidth(std::min(TextWidth, natural));
        const int height = label->heightForWidth(TextWidth);
        if (height <= screen()->availableGeometry().height() / 2) {
            label->setMinimumHeight(label->heightForWidth(label->minimumWidth()));
            return label;
        }
        delete label;
        auto *pages = named(new QPlainTextEdit(text), u"lblTexto"_s, text);
        pages->setReadOnly(true);
        pages->setTabChangesFocus(true);
        pages->setMinimumSize(TextWidth, screen()->availableGeometry().height() / 3);
        return pages;
    }

    QVBoxLayout *m_layout = nullptr;
    QPushButton *m_accept = nullptr;
    QElapsedTimer m_shown;
};

QStandardItemModel *modelOf(const QStringList &columns, const QList<store::Option> &options,
                            bool several, QObject *parent)
{
    auto *model = new QStandardItemModel(parent);
    model->setHorizontalHeaderLabels(columns);
    for (const store::Option &option : options) {
        QList<QStandardItem *> row;
        for (const QString &cell : option.text.split(u'\t')) {
            row.append(new QStandardItem(cell));
            row.last()->setEditable(false);
        }
        if (several) {
            row.first()->setCheckable(true);
            row.first()->setCheckState(option.marked ? Qt::Checked : Qt::Unchecked);
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
    int width = 2 * space::XL;
    for (int c = 0; c < model->columnCount(); ++c)
        width += table->columnWidth(c);
    const int height = table->verticalHeader()->defaultSectionSize() * (model->rowCount() + 2);
    table->setMinimumSize(std::clamp(width, 360, 720), std::clamp(height, 160, 420));
    return table;
}

/// ENTER on the table accepts, SPACE checks the row, letters go to the filter.
class ListKeys : public QObject
{
public:
    ListKeys(Box &box, QTableView &table, QLineEdit *filter)
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

    Box &m_box;
    QTableView &m_table;
    QLineEdit *m_filter;
};

std::optional<QString> askText(const store::Texts &texts, const QString &title, const QString &text,
                               const QString &initial, QLineEdit::EchoMode echo)
{
    Box box(title);
    box.say(text);
    auto *entry = named(new QLineEdit(initial), u"txtTexto"_s, text);
    entry->setEchoMode(echo);
    entry->setMinimumWidth(EntryWidth);
    entry->selectAll();
    box.body(entry);
    box.buttons(texts(text::Ok), texts(text::Cancel));
    entry->setFocus();
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    return entry->text();
}

} // namespace

bool WindowDialogs::isOneOpen()
{
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && modal->objectName() == u"CajaDeDialogo";
}

int WindowDialogs::setPause(int ms) { return std::exchange(pauseMs, ms); }

void WindowDialogs::Mensaje(const QString &text)
{
    Box box(u"Kelvara"_s);
    box.say(text, u"mensaje"_s);
    box.buttons(m_texts(text::Ok));
    box.exec();
}

bool WindowDialogs::Pregunta(const QString &text)
{
    Box box(u"Kelvara"_s);
    box.say(text, u"pregunta"_s);
    box.buttons(m_texts(text::Yes), m_texts(text::No));
    box.answerByLetter();
    return box.exec() == QDialog::Accepted;
}

bool WindowDialogs::askBeforeLoss(const QString &text)
{
    Box box(u"Kelvara"_s);
    box.say(text, u"pregunta"_s);
    box.buttons(m_texts(text::Yes), m_texts(text::No));
    box.standOnNo();
    box.answerByLetter();
    return box.exec() == QDialog::Accepted;
}

store::Answer WindowDialogs::askOfSeries(const QString &text)
{
    constexpr int All = FirstResult, None = FirstResult + 1;
    Box box(u"Kelvara"_s);
    box.say(text, u"pregunta"_s);
    box.buttons(m_texts(text::Yes), m_texts(text::No));
    box.anotherButton(u"cmdTodas"_s, m_texts(text::AllOfThem), All);
    const QString none = m_texts(text::NoneOfThem); // shares its first letter with No
    box.anotherButton(u"cmdNinguna"_s, none, None, none.size() - 1);
    switch (box.exec()) {
    case QDialog::Accepted:
        return store::Answer::Yes;
    case All:
        return store::Answer::All;
    case None:
        return store::Answer::None;
    default:
        return store::Answer::No;
    }
}

bool WindowDialogs::decide(const QString &text, const QString &yes, const QString &no)
{
    Box box(u"Kelvara"_s);
    box.say(text, u"pregunta"_s);
    box.buttons(yes);
    box.anotherButton(u"cmdDescartar"_s, no, FirstResult);
    box.answerByLetter();
    return box.exec() != FirstResult; // ESC counts as the first button, which loses nothing
}

bool WindowDialogs::confirm(const QString &text)
{
    Box box(u"Kelvara"_s);
    box.say(text, u"pregunta"_s);
    box.buttons(m_texts(text::Ok), m_texts(text::Cancel));
    return box.exec() == QDialog::Accepted;
}

std::optional<QString> WindowDialogs::PedirTexto(const QString &title, const QString &text,
                                                 const QString &initial)
{
    return askText(m_texts, title, text, initial, QLineEdit::Normal);
}

std::optional<QString> WindowDialogs::askPassword(const QString &title, const QString &text)
{
    return askText(m_texts, title, text, {}, QLineEdit::Password);
}

std::optional<QList<store::Option>> WindowDialogs::Seleccionar(const QString &title,
                                                               const QStringList &columns,
                                                               const QList<store::Option> &options,
                                                               bool several)
{
    Box box(title);
    box.say(options.isEmpty() ? m_texts(text::NothingToChooseFrom) : title);

    auto *model = modelOf(columns, options, several, &box);
    auto *shown = new QSortFilterProxyModel(&box);
    shown->setSourceModel(model);
    shown->setFilterKeyColumn(-1);
    shown->setFilterCaseSensitivity(Qt::CaseInsensitive);

    QLineEdit *filter = nullptr;
    QTableView *table = tableOf(shown, title);
    if (options.size() > OptionsWorthAFilter) {
        filter = named(new QLineEdit, u"txtFiltro"_s, m_texts(text::TypeToFilter));
        filter->setPlaceholderText(m_texts(text::TypeToFilter));
        filter->setClearButtonEnabled(true);
        box.body(filter);
        QObject::connect(filter, &QLineEdit::textChanged, shown, [shown, table](const QString &t) {
            shown->setFilterFixedString(t);
            table->selectRow(0);
        });
    }
    box.body(table);
    box.buttons(m_texts(text::Ok), m_texts(text::Cancel));
    box.acceptButton()->setDisabled(options.isEmpty());
    new ListKeys(box, *table, filter);
    if (!several)
        QObject::connect(table, &QTableView::doubleClicked, &box, &QDialog::accept);

    qsizetype first = 0;
    for (qsizetype i = 0; i < options.size() && !several; ++i)
        if (options[i].marked)
            first = i;
    table->selectRow(int(first));
    table->setFocus();
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;

    QList<store::Option> chosen;
    const int current = shown->mapToSource(table->currentIndex()).row();
    for (int i = 0; i < options.size(); ++i) {
        if (several ? model->item(i)->checkState() == Qt::Checked : i == current) {
            chosen.append(options[i]);
            chosen.last().marked = true;
        }
    }
    if (!several && chosen.isEmpty())
        return std::nullopt;
    return chosen;
}

std::optional<QString> WindowDialogs::ElegirArchivo(const QString &title, const QString &filter)
{
    const QString file =
        QFileDialog::getOpenFileName(QApplication::activeWindow(), title, {}, filter);
    if (file.isEmpty())
        return std::nullopt;
    return file;
}

std::optional<QString> WindowDialogs::saveFile(const QString &title, const QString &proposed,
                                               const QString &filter)
{
    const QString file =
        QFileDialog::getSaveFileName(QApplication::activeWindow(), title, proposed, filter);
    if (file.isEmpty())
        return std::nullopt;
    return file;
}
