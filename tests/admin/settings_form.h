// The settings form, used as a user does: with keys, sent to the focused control.
#pragma once

#include "admin/admin_forms.h"
#include "admin/frmconfiguracion.h"
#include "support/clinic.h"
#include "ui/form_registry.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace admin;

/// A clinic with the settings form.
class SettingsForm : public Clinic
{
protected:
    explicit SettingsForm(store::Language language = store::Language::English) : Clinic(language)
    {
        s.programFolder = program.path() + u'/';
        registerAdminForms(s, forms);
    }

    /// Opens the form on a page, or on the last one shown.
    void open(const QString &page = {})
    {
        using namespace Qt::StringLiterals;
        const QVariantMap parameters{{u"pagina"_s, page}};
        ASSERT_TRUE(forms.open(u"frmConfiguracion"_s, page.isEmpty() ? QVariantMap() : parameters));
        form = qobject_cast<frmConfiguracion *>(forms.load(u"frmConfiguracion"_s));
        ASSERT_TRUE(form && QTest::qWaitForWindowActive(form));
    }
    void close()
    {
        press(Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ASSERT_FALSE(form);
    }
    template <typename W>
    W *the(const QString &name)
    {
        auto *w = form->findChild<W *>(name);
        EXPECT_TRUE(w) << "no control " << name.toStdString();
        return w;
    }
    QString text(const QString &box) { return the<QLineEdit>(box)->text(); }
    QString hint() { return the<QLabel>(QStringLiteral("Ayu"))->text(); }

    void press(Qt::Key k, Qt::KeyboardModifiers m = {})
    {
        QWidget *at = form->focusWidget() ? form->focusWidget() : form.data();
        QTest::keyClick(at, k, m);
    }
    void pressIn(QWidget *control, Qt::Key k)
    {
        control->setFocus();
        press(k);
    }
    /// Replaces the text of the box, which keeps the focus.
    void fill(const QString &box, const QString &what)
    {
        the<QLineEdit>(box)->selectAll();
        pressIn(the<QLineEdit>(box), Qt::Key_Delete);
        QTest::keyClicks(the<QLineEdit>(box), what);
    }
    void type(const QString &box, const QString &what)
    {
        fill(box, what);
        press(Qt::Key_Return);
    }
    /// Columns of the settings row, separated by '|'.
    QString stored(std::string_view columns)
    {
        return allRows(*s.morvane, "select " + std::string(columns) + " from configuracion")
            .trimmed();
    }

    QTemporaryDir program;
    ui::FormRegistry forms;
    QPointer<frmConfiguracion> form;
};
