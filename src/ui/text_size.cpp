#include "ui/text_size.h"

#include "store/settings_row.h"

#include <QSettings>
#include <algorithm>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr const char *ScaleVariable = "QT_SCALE_FACTOR";
const QString SizeKey = u"pantalla/tamano"_s;

int sizeIn(const QString &file)
{
    const int percent = QSettings(file, QSettings::IniFormat).value(SizeKey).toInt();
    return std::ranges::find(TextSizes, percent) == TextSizes.end() ? TextSizes.front() : percent;
}

} // namespace

int ui::textSize(const Sesion &s) { return sizeIn(store::machineFile(s)); }

void ui::saveTextSize(const Sesion &s, int percent)
{
    store::saveMachineSetting(s, SizeKey, QString::number(percent));
}

void ui::applyTextSize(const QString &programFolder)
{
    const int percent = sizeIn(store::machineFileIn(programFolder));
    if (percent != TextSizes.front() && !qEnvironmentVariableIsSet(ScaleVariable))
        qputenv(ScaleVariable, QByteArray::number(percent / 100.0));
}
