#include "support/clinic.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

struct Form : FormBase {
    Form(Sesion &s, int &builds, QVariantMap &last) : FormBase(s, u"frmx"_s), m_last(last)
    {
        ++builds;
    }
    void opened(const QVariantMap &parameters) override { m_last = parameters; }
    QVariantMap &m_last;
};

class Registry : public Clinic
{
protected:
    Registry()
    {
        forms.enrol(u"frmx"_s, [this] { return new Form(s, builds, last); });
    }
    int builds = 0;
    QVariantMap last;
    FormRegistry forms;
};

} // namespace

TEST_F(Registry, AFormIsBuiltOnceAndToldEachTimeWhatItIsOpenedWith)
{
    FormBase *form = forms.load(u"frmx"_s);
    EXPECT_FALSE(form->isVisible()) << "loading is not showing";

    EXPECT_TRUE(forms.open(u"frmx"_s, {{u"rapido"_s, 3}}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(last.value(u"rapido"_s), 3);

    form->close();
    EXPECT_TRUE(forms.open(u"frmx"_s));
    EXPECT_TRUE(last.isEmpty());
    EXPECT_EQ(builds, 1);

    delete form;
    EXPECT_TRUE(forms.open(u"frmx"_s));
    EXPECT_EQ(builds, 2) << "a form that was thrown away is built anew";
}

TEST_F(Registry, WhatIsNotThereIsNotOpened)
{
    EXPECT_FALSE(forms.exists(u"frmventas"_s));
    EXPECT_FALSE(forms.open(u"frmventas"_s));
    EXPECT_EQ(forms.load(u"frmventas"_s), nullptr);
    EXPECT_FALSE(forms.exists(u"frmventas"_s));
}
