#include "admin/frmconfiguracion_rows.h"
#include "clients/reference_lists.h"
#include "messages/templates.h"
#include "store/lookups.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/calm_list.h"
#include "ui/form_base.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr int TextHeight = 120; // minimum for each text

QLabel *captionOf(const QString &text, QWidget *control)
{
    auto *label = new QLabel(text);
    label->setBuddy(control);
    return label;
}

class Messages : public QWidget
{
public:
    explicit Messages(const PageContext &c) : m_c(c)
    {
        build();
        wire();
        load(0);
    }

private:
    void build()
    {
        const Sesion &s = m_c.s;
        cmbAMensaje = named(new ui::CalmList, u"cmbAMensaje"_s, s(text::MessageCaption));
        cmbAMensaje->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        cmbAMensaje->setMinimumContentsLength(40);
        for (const messages::Template &p : messages::templates())
            cmbAMensaje->addItem(s(p.title));
        m_help = parts::noteOf({});
        m_help->setMinimumHeight(2 * m_help->fontMetrics().lineSpacing());
        m_help->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        RTxtMen = named(new QPlainTextEdit, u"RTxtMen"_s, s(text::MessageTextCaption));
        RTxtMen->setTabChangesFocus(true);
        RTxtMen->setMinimumHeight(TextHeight);
        RTxtMen->setToolTip(s(text::TagsHelp));
        cmdTag = parts::buttonOf(s(text::InsertTagButton), u"cmdTag"_s);
        cmdTag->setMenu(menuOfTags());
        m_whom = new QLabel;
        m_whom->setTextFormat(Qt::PlainText);
        cmdOtro = parts::buttonOf(s(text::AnotherClient), u"cmdOtro"_s);
        txtVista = named(new QPlainTextEdit, u"txtVista"_s, s(text::AsReceivedBy));
        txtVista->setReadOnly(true);
        txtVista->setTabChangesFocus(true);
        txtVista->setMinimumHeight(TextHeight);

        auto *choice = new QVBoxLayout;
        choice->setSpacing(ui::space::XS);
        choice->addWidget(captionOf(s(text::MessageCaption), cmbAMensaje));
        choice->addWidget(cmbAMensaje);
        choice->addWidget(m_help);
        auto *column = parts::Column(this);
        column->setSpacing(ui::space::M);
        column->addLayout(choice);
        column->addLayout(headed(captionOf(s(text::MessageTextCaption), RTxtMen), cmdTag, RTxtMen),
                          1);
        column->addLayout(headed(m_whom, cmdOtro, txtVista), 1);
        setTabOrder(cmbAMensaje, RTxtMen); // the text comes before the button above it
        setTabOrder(RTxtMen, cmdTag);
    }

    static QLayout *headed(QWidget *caption, QWidget *button, QWidget *text)
    {
        auto *head = new QHBoxLayout;
        head->addWidget(caption, 1, Qt::AlignBottom);
        head->addWidget(button);
        auto *all = new QVBoxLayout;
        all->setSpacing(ui::space::XS);
        all->addLayout(head);
        all->addWidget(text, 1);
        return all;
    }

    QMenu *menuOfTags()
    {
        auto *menu = new QMenu(this);
        for (int i = 0; i < messages::tags().size(); ++i) {
            const QString tag = u'<' + messages::tags()[i] + u'>';
            menu->addAction(m_c.s(text::FirstTagName + i) + u'\t' + tag, this, [this, tag] {
                RTxtMen->insertPlainText(tag);
                RTxtMen->setFocus();
            });
        }
        return menu;
    }

    void wire()
    {
        warnOnEntering(m_c, RTxtMen, text::TagsHelp);
        ui::bind::onLeaving(RTxtMen, [this] { store(); });
        connect(RTxtMen, &QPlainTextEdit::textChanged, this, [this] { preview(); });
        connect(cmbAMensaje, &QComboBox::currentIndexChanged, this, [this](int entry) {
            if (store())
                return load(entry);
            const QSignalBlocker quiet(cmbAMensaje);
            cmbAMensaje->setCurrentIndex(m_entry);
        });
        connect(cmdOtro, &QPushButton::clicked, this,
                [this] { m_c.guarded([this] { pickClient(); }); });
        onShow(this, [this] { preview(); });
    }

    std::string_view columnShown() const { return messages::templates()[size_t(m_entry)].column; }

    void load(int entry)
    {
        m_entry = entry;
        m_help->setText(m_c.s(messages::templates()[size_t(entry)].help));
        m_c.guarded([this] { RTxtMen->setPlainText(m_c.s.configuracion[columnShown()].toText()); });
        RTxtMen->document()->setModified(false);
        preview();
    }

    // Text that could not be stored stays in the box and is tried again.
    bool store()
    {
        if (RTxtMen->document()->isModified() && !m_c.guarded([this] {
                store::saveSetting(m_c.s, columnShown(), RTxtMen->toPlainText());
            }))
            return false;
        RTxtMen->document()->setModified(false);
        return true;
    }

    void pickClient()
    {
        Sesion &s = m_c.s;
        const auto name =
            s.dialogos.PedirTexto(ui::spoken(s(text::AnotherClient)), s(text::AskClientName));
        if (!name)
            return;
        QList<store::Option> found;
        Recordset r = s.clientes->OpenSnapshot(
            "select top 200 idc, ayn from clientes where ayn like ? order by ayn",
            clients::prefixPattern(name->trimmed()));
        for (; !r.EOF_(); r.MoveNext())
            found.append({r["ayn"].toText(), r["idc"].toInt()});
        if (found.isEmpty())
            return s.dialogos.Mensaje(s(text::NoSuchClient));
        if (found.size() > 1) {
            const auto chosen = s.dialogos.Seleccionar(s(text::Client), {s(text::Name)}, found);
            if (!chosen || chosen->isEmpty())
                return;
            found = *chosen;
        }
        m_idc = found.first().value;
        preview();
    }

    void preview()
    {
        m_c.guarded([this] {
            Sesion &s = m_c.s;
            const auto example = messages::messageExample(s, m_idc);
            m_whom->setText(example ? s(text::AsReceivedBy) + u' ' + nameOf(*example) : QString());
            cmdOtro->setEnabled(example.has_value());
            txtVista->setPlaceholderText(
                s(example ? text::NoTextForPreview : text::NoClientsForPreview));
            QScrollBar *bar = txtVista->verticalScrollBar();
            const int place = bar->value();
            txtVista->setPlainText(example
                                       ? messages::fillTags(s, RTxtMen->toPlainText(), example->idc,
                                                            example->idm, example->ida)
                                       : QString());
            // Keep the part being written in view.
            bar->setValue(RTxtMen->textCursor().atEnd() ? bar->maximum() : place);
        });
    }

    QString nameOf(const messages::Example &example)
    {
        QString name = LeerCampo(m_c.s, "clientes", "clientes", example.idc, "ayn");
        const QString pet = LeerCampo(m_c.s, "clientes", "mascotas", example.idm, "nom");
        return pet.isEmpty() ? name : name + u" ("_s + pet + u')';
    }

    PageContext m_c;
    int m_entry = 0;
    int m_idc = 0; // client picked here; 0 for the session's
    QComboBox *cmbAMensaje = nullptr;
    QLabel *m_help = nullptr;
    QPlainTextEdit *RTxtMen = nullptr;
    QPushButton *cmdTag = nullptr;
    QLabel *m_whom = nullptr;
    QPushButton *cmdOtro = nullptr;
    QPlainTextEdit *txtVista = nullptr;
};

} // namespace

QWidget *admin::messagesPage(const PageContext &c) { return new Messages(c); }
