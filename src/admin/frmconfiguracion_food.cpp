#include "admin/frmconfiguracion_rows.h"
#include "clients/reference_lists.h"
#include "clinical/food.h"
#include "ui/boxes.h"
#include "ui/calm_list.h"
#include "ui/form_base.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Alimento = 2617,
    CaninoChico = 2632,
    CaninoMediano = 2633,
    CaninoGrande = 2634,
    Especie = 9657,
    Avisar = 9698,
    Descuento = 9699,
    Cantidad = 9700,
    SinEspecies = 9701,
};

constexpr int canine = 1;

/// One level: its row, and what it holds.
struct Level {
    QLabel *caption = nullptr;
    QWidget *row = nullptr;
    CajaDeNumero *txtdetali = nullptr;
    QString stored;
};

class Food : public QWidget
{
public:
    explicit Food(const ContextoDePagina &c) : m_c(c)
    {
        build();
        QObject::connect(cmbAliEsp, &QComboBox::currentIndexChanged, this,
                         [this] { m_c.guarded([this] { load(); }); });
        for (size_t i = 0; i < m_levels.size(); ++i) {
            const auto task = [this, i] { store(i); };
            QObject::connect(m_levels[i].txtdetali, &QLineEdit::editingFinished, this, task);
            Atar::AlDejar(m_levels[i].txtdetali, task);
        }
        AlMostrar(this, [this] { m_c.guarded([this] { refresh(); }); });
        refresh();
    }

private:
    void build()
    {
        const Sesion &s = m_c.s;
        m_rows = Parte::Seccion(Parte::Columna(this), s(Alimento), s(Avisar));
        cmbAliEsp = new ListaCalma;
        cmbAliEsp->setObjectName(u"cmbAliEsp"_s);
        cmbAliEsp->setMinimumWidth(Parte::AnchoDePalabra);
        Parte::Fila(m_rows, s(Especie), cmbAliEsp);
        AvisarAlEntrar(m_c, cmbAliEsp, Descuento);
        for (size_t i = 0; i < m_levels.size(); ++i) {
            Level &level = m_levels[i];
            level.txtdetali = new CajaDeNumero(s);
            level.txtdetali->setObjectName(i == 0 ? u"txtdetali"_s : u"txtdetali%1"_s.arg(i + 1));
            level.txtdetali->setFixedWidth(Parte::AnchoDeCifra);
            level.row = new QWidget;
            auto *inner = new QHBoxLayout(level.row);
            inner->setContentsMargins(0, 0, 0, 0);
            inner->addWidget(level.txtdetali);
            inner->addWidget(new QLabel(u"g"_s)); // as stocks are counted, whatever KgLbs says
            Parte::Fila(m_rows, {}, level.row);
            level.caption = qobject_cast<QLabel *>(m_rows->labelForField(level.row));
            level.caption->setBuddy(level.txtdetali);
            AvisarAlEntrar(m_c, level.txtdetali, Descuento);
        }
        m_none = Parte::Nota(s(SinEspecies));
        m_rows->addRow(m_none);
        m_c.cadenaDeEnter(
            {cmbAliEsp, m_levels[0].txtdetali, m_levels[1].txtdetali, m_levels[2].txtdetali});
    }

    // Species may have changed on other pages; the choice stays.
    void refresh()
    {
        const int before = cmbAliEsp->count() > 0 ? species() : canine;
        const QSignalBlocker quiet(cmbAliEsp);
        cmbAliEsp->clear();
        for (const Entrada &e : CargarLista(m_c.s, Lista::Especie))
            cmbAliEsp->addItem(e.nom, e.id);
        cmbAliEsp->setCurrentIndex(std::max(cmbAliEsp->findData(before), 0));
        load();
    }

    int species() const { return cmbAliEsp->currentData().toInt(); }

    void load()
    {
        const Sesion &s = m_c.s;
        const bool dogs = TieneTresNiveles(species());
        const int captions[] = {dogs ? CaninoChico : Cantidad, CaninoMediano, CaninoGrande};
        const bool any = cmbAliEsp->count() > 0;
        m_rows->setRowVisible(m_none, !any);
        cmbAliEsp->setEnabled(any);
        for (size_t i = 0; i < m_levels.size(); ++i) {
            Level &level = m_levels[i];
            const bool used = any && (dogs || i == 0);
            m_rows->setRowVisible(level.row, used);
            level.caption->setText(s(captions[i]));
            level.txtdetali->setAccessibleName(s(captions[i]));
            if (used)
                show(i);
        }
    }

    void show(size_t i)
    {
        const Valor value = NivelDeAlimento(m_c.s, species(), int(i));
        CajaDeNumero *box = m_levels[i].txtdetali;
        box->PonerNumero(value.EsNulo() ? std::nullopt : std::optional(value.toMoneda()));
        box->setModified(false);
        m_levels[i].stored = box->text();
    }

    void store(size_t i)
    {
        CajaDeNumero *box = m_levels[i].txtdetali;
        if (!box->isModified())
            return;
        const auto typed = box->Numero();
        const Valor level = typed ? Valor(typed->ADoble()) : Valor();
        box->setModified(false); // a message over the form leaves the box once more
        if (m_c.guarded([&] { GuardarNivelDeAlimento(m_c.s, species(), int(i), level); }))
            m_levels[i].stored = box->text();
        else
            box->setText(m_levels[i].stored);
    }

    ContextoDePagina m_c;
    QComboBox *cmbAliEsp = nullptr;
    std::array<Level, 3> m_levels;
    QFormLayout *m_rows = nullptr;
    QLabel *m_none = nullptr;
};

} // namespace

QWidget *PaginaDeAlimento(const ContextoDePagina &c) { return new Food(c); }
