#include "admin/admin_forms.h"

#include "admin/frmconfiguracion.h"
#include "texts/texts.h"
#include "ui/form_registry.h"

using namespace admin;
using namespace Qt::StringLiterals;

void admin::registerAdminForms(Sesion &s, ui::FormRegistry &forms)
{
    forms.enrol(u"frmConfiguracion"_s, [&s, &forms]() -> ui::FormBase * {
        if (s.user.isCommon()) {
            s.dialogos.Mensaje(s(text::FeatureNotAvailable));
            return nullptr;
        }
        return new frmConfiguracion(s, forms);
    });
}
