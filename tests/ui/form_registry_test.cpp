#include "support/clinic.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"

using namespace Qt::StringLiterals;

namespace
{

struct Formulario : FormBase {
    Formulario(Sesion &s, int &builds, QVariantMap &last) : FormBase(s, u"frmx"_s), m_last(last)
    {
        ++builds;
    }
    void opened(const QVariantMap &parameters) override { m_last = parameters; }
    QVariantMap &m_last;
};

class Registro : public Clinica
{
protected:
    Registro()
    {
        forms.Registrar(u"frmx"_s, [this] { return new Formulario(s, builds, last); });
    }
    int builds = 0;
    QVariantMap last;
    Formularios forms;
};

} // namespace

TEST_F(Registro, AFormIsBuiltOnceAndToldEachTimeWhatItIsOpenedWith)
{
    FormBase *form = forms.Cargar(u"frmx"_s);
    EXPECT_FALSE(form->isVisible()) << "loading is not showing";

    EXPECT_TRUE(forms.Abrir(u"frmx"_s, {{u"rapido"_s, 3}}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(last.value(u"rapido"_s), 3);

    form->close();
    EXPECT_TRUE(forms.Abrir(u"frmx"_s));
    EXPECT_TRUE(last.isEmpty());
    EXPECT_EQ(builds, 1);

    delete form;
    EXPECT_TRUE(forms.Abrir(u"frmx"_s));
    EXPECT_EQ(builds, 2) << "a form that was thrown away is built anew";
}

TEST_F(Registro, WhatIsNotThereIsNotOpened)
{
    EXPECT_FALSE(forms.Existe(u"frmventas"_s));
    EXPECT_FALSE(forms.Abrir(u"frmventas"_s));
    EXPECT_EQ(forms.Cargar(u"frmventas"_s), nullptr);
    EXPECT_FALSE(forms.Existe(u"frmventas"_s));
}
