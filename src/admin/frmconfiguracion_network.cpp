#include "admin/frmconfiguracion_pages.h"
#include "admin/network_path.h"
#include "columns/configuracion.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/form_registry.h"

#include <QCheckBox>
#include <QFormLayout>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

} // namespace

QWidget *admin::networkPage(const PageContext &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = parts::Column(page);

    QFormLayout *network = parts::sectionOf(column, c.s(text::SharedFolder), c.s(text::FolderNote));
    auto *folder = new QLabel(c.s(text::DataFolder) + u": "_s + c.s.dataFolder);
    folder->setTextFormat(Qt::PlainText);
    folder->setWordWrap(true);
    QPushButton *connectTo = parts::buttonOf(c.s(text::SettingsNetworkConnect), u"cmdRed"_s);
    network->addRow(folder);
    network->addRow(connectTo);
    QObject::connect(connectTo, &QPushButton::clicked, page,
                     [c] { c.guarded([&c] { connectTerminal(c.s); }); });

    QFormLayout *data =
        parts::sectionOf(column, c.s(text::SettingsNetworkData), c.s(text::ImportNote));
    QPushButton *import = parts::buttonOf(c.s(text::SettingsNetworkImport), u"cmdImportar"_s);
    import->setEnabled(c.forms.exists(u"frmImportar"_s));
    if (!import->isEnabled())
        import->setToolTip(c.s(text::NotInThisVersion));
    data->addRow(import);
    QObject::connect(import, &QPushButton::clicked, page,
                     [c] { c.guarded([&c] { c.forms.open(u"frmImportar"_s); }); });

    QFormLayout *news = parts::sectionOf(column, c.s(text::SettingsNetworkNews));
    auto *receive = named(new QCheckBox(c.s(text::ReceiveNews)), u"RecibirNotificaciones"_s,
                          c.s(text::ReceiveNews));
    ui::bind::Checkbox(c.s, c.guarded, receive, setting::RecibirNotificaciones);
    news->addRow(receive);
    return page;
}
