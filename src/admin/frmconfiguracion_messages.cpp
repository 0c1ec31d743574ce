#include "admin/frmconfiguracion_rows.h"
#include "clients/reference_lists.h"
#include "messages/templates.h"
#include "store/lookups.h"
#include "store/settings_row.h"
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

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Cliente = 14,
    Nombre = 2201,
    AyudaDeTags = 2638,
    Mensaje = 9703,
    TextoDelMensaje = 9704,
    InsertarDato = 9705,
    PrimerTag = 9706, // one caption for each of Tags()
    AsiLoRecibe = 9716,
    OtroCliente = 9717,
    PidaCliente = 9718,
    NoHayEseCliente = 9719,
    NoHayClientes = 9720,
    NoHayTexto = 9721,
};

constexpr int textHeight = 120; // of each text at least

QLabel *captionOf(const QString &text, QWidget *control)
{
    auto *label = new QLabel(text);
    label->setBuddy(control);
    return label;
}

class Messages : public QWidget
{
public:
    explicit Messages(const ContextoDePagina &c) : m_c(c)
    {
        build();
        wire();
        load(0);
    }

private:
    void build()
    {
        const Sesion &s = m_c.s;
        cmbAMensaje = named(new ListaCalma, u"cmbAMensaje"_s, s(Mensaje));
        cmbAMensaje->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        cmbAMensaje->setMinimumContentsLength(40);
        for (const Plantilla &p : Plantillas())
            cmbAMensaje->addItem(s(p.titulo));
        m_help = Parte::Nota({});
        m_help->setMinimumHeight(2 * m_help->fontMetrics().lineSpacing());
        m_help->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        RTxtMen = named(new QPlainTextEdit, u"RTxtMen"_s, s(TextoDelMensaje));
        RTxtMen->setTabChangesFocus(true);
        RTxtMen->setMinimumHeight(textHeight);
        RTxtMen->setToolTip(s(AyudaDeTags));
        cmdTag = Parte::Boton(s(InsertarDato), u"cmdTag"_s);
        cmdTag->setMenu(menuOfTags());
        m_whom = new QLabel;
        m_whom->setTextFormat(Qt::PlainText);
        cmdOtro = Parte::Boton(s(OtroCliente), u"cmdOtro"_s);
        txtVista = named(new QPlainTextEdit, u"txtVista"_s, s(AsiLoRecibe));
        txtVista->setReadOnly(true);
        txtVista->setTabChangesFocus(true);
        txtVista->setMinimumHeight(textHeight);

        auto *choice = new QVBoxLayout;
        choice->setSpacing(Espacio::XS);
        choice->addWidget(captionOf(s(Mensaje), cmbAMensaje));
        choice->addWidget(cmbAMensaje);
        choice->addWidget(m_help);
        auto *column = Parte::Columna(this);
        column->setSpacing(Espacio::M);
        column->addLayout(choice);
        column->addLayout(headed(captionOf(s(TextoDelMensaje), RTxtMen), cmdTag, RTxtMen), 1);
        column->addLayout(headed(m_whom, cmdOtro, txtVista), 1);
        setTabOrder(cmbAMensaje, RTxtMen); // the text before the button above it
        setTabOrder(RTxtMen, cmdTag);
    }

    static QLayout *headed(QWidget *caption, QWidget *button, QWidget *text)
    {
        auto *head = new QHBoxLayout;
        head->addWidget(caption, 1, Qt::AlignBottom);
        head->addWidget(button);
        auto *all = new QVBoxLayout;
        all->setSpacing(Espacio::XS);
        all->addLayout(head);
        all->addWidget(text, 1);
        return all;
    }

    QMenu *menuOfTags()
    {
        auto *menu = new QMenu(this);
        for (int i = 0; i < Tags().size(); ++i) {
            const QString tag = u'<' + Tags()[i] + u'>';
            menu->addAction(m_c.s(PrimerTag + i) + u'\t' + tag, this, [this, tag] {
                RTxtMen->insertPlainText(tag);
                RTxtMen->setFocus();
            });
        }
        return menu;
    }

    void wire()
    {
        AvisarAlEntrar(m_c, RTxtMen, AyudaDeTags);
        Atar::AlDejar(RTxtMen, [this] { store(); });
        connect(RTxtMen, &QPlainTextEdit::textChanged, this, [this] { preview(); });
        connect(cmbAMensaje, &QComboBox::currentIndexChanged, this, [this](int entry) {
            if (store())
                return load(entry);
            const QSignalBlocker quiet(cmbAMensaje);
            cmbAMensaje->setCurrentIndex(m_entry);
        });
        connect(cmdOtro, &QPushButton::clicked, this,
                [this] { m_c.guarded([this] { pickClient(); }); });
        AlMostrar(this, [this] { preview(); });
    }

    const char *columnShown() const { return Plantillas()[size_t(m_entry)].columna; }

    void load(int entry)
    {
        m_entry = entry;
        m_help->setText(m_c.s(Plantillas()[size_t(entry)].ayuda));
        m_c.guarded([this] { RTxtMen->setPlainText(m_c.s.configuracion[columnShown()].toText()); });
        RTxtMen->document()->setModified(false);
        preview();
    }

    // What could not be stored stays in the box and is tried again.
    bool store()
    {
        if (RTxtMen->document()->isModified() && !m_c.guarded([this] {
                GuardarAjuste(m_c.s, columnShown(), RTxtMen->toPlainText());
            }))
            return false;
        RTxtMen->document()->setModified(false);
        return true;
    }

    void pickClient()
    {
        Sesion &s = m_c.s;
        const auto name = s.dialogos.PedirTexto(spoken(s(OtroCliente)), s(PidaCliente));
        if (!name)
            return;
        QList<Opcion> found;
        Recordset r = s.clientes->OpenSnapshot(
            "select top 200 idc, ayn from clientes where ayn like ? order by ayn",
            PatronDePrefijo(name->trimmed()));
        for (; !r.EOF_(); r.MoveNext())
            found.append({r["ayn"].toText(), r["idc"].toInt()});
        if (found.isEmpty())
            return s.dialogos.Mensaje(s(NoHayEseCliente));
        if (found.size() > 1) {
            const auto chosen = s.dialogos.Seleccionar(s(Cliente), {s(Nombre)}, found);
            if (!chosen || chosen->isEmpty())
                return;
            found = *chosen;
        }
        m_idc = found.first().valor;
        preview();
    }

    void preview()
    {
        m_c.guarded([this] {
            Sesion &s = m_c.s;
            const auto example = EjemploDeMensaje(s, m_idc);
            m_whom->setText(example ? s(AsiLoRecibe) + u' ' + nameOf(*example) : QString());
            cmdOtro->setEnabled(example.has_value());
            txtVista->setPlaceholderText(s(example ? NoHayTexto : NoHayClientes));
            QScrollBar *bar = txtVista->verticalScrollBar();
            const int place = bar->value();
            txtVista->setPlainText(example ? RellenarTags(s, RTxtMen->toPlainText(), example->idc,
                                                          example->idm, example->ida)
                                           : QString());
            // What is being written stays in sight.
            bar->setValue(RTxtMen->textCursor().atEnd() ? bar->maximum() : place);
        });
    }

    QString nameOf(const Ejemplo &example)
    {
        QString name = LeerCampo(m_c.s, "clientes", "clientes", example.idc, "ayn");
        const QString pet = LeerCampo(m_c.s, "clientes", "mascotas", example.idm, "nom");
        return pet.isEmpty() ? name : name + u" ("_s + pet + u')';
    }

    ContextoDePagina m_c;
    int m_entry = 0;
    int m_idc = 0; // picked here; 0 is the session's client
    QComboBox *cmbAMensaje = nullptr;
    QLabel *m_help = nullptr;
    QPlainTextEdit *RTxtMen = nullptr;
    QPushButton *cmdTag = nullptr;
    QLabel *m_whom = nullptr;
    QPushButton *cmdOtro = nullptr;
    QPlainTextEdit *txtVista = nullptr;
};

} // namespace

QWidget *PaginaDeMensajes(const ContextoDePagina &c) { return new Messages(c); }
