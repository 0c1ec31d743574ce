#include "store/declared_type.h"

#include "store/jet/text.h"

#include <charconv>

using namespace store;

namespace
{

struct TypeName {
    ColumnType type;
    const char *name;
};

constexpr TypeName Names[] = {
    {ColumnType::Counter, "COUNTER"},   {ColumnType::Byte, "BYTE"},
    {ColumnType::Smallint, "SMALLINT"}, {ColumnType::Long, "LONG"},
    {ColumnType::Single, "SINGLE"},     {ColumnType::Double, "DOUBLE"},
    {ColumnType::Currency, "CURRENCY"}, {ColumnType::Date, "DATE"},
    {ColumnType::Time, "TIME"},         {ColumnType::YesNo, "YESNO"},
    {ColumnType::Memo, "MEMO"},
};

constexpr int WidestText = 255;

} // namespace

std::string store::declaredType(const jet::Column &column)
{
    if (column.type == ColumnType::Text)
        return "TEXT(" + std::to_string(column.width ? column.width : WidestText) + ")";
    for (const TypeName &n : Names)
        if (n.type == column.type)
            return n.name;
    return "MEMO";
}

jet::Column store::readDeclaredType(const std::string &name, const std::string &type)
{
    jet::Column c;
    c.name = name;
    const std::string folded = jet::fold(type);
    if (folded.starts_with("text")) {
        c.type = ColumnType::Text;
        c.width = WidestText;
        if (const size_t p = folded.find('('); p != std::string::npos)
            std::from_chars(folded.data() + p + 1, folded.data() + folded.size(), c.width);
        return c;
    }
    for (const TypeName &n : Names)
        if (jet::fold(n.name) == folded)
            c.type = n.type;
    return c;
}
