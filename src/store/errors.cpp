#include "store/errors.h"

using namespace store;

StoreError::StoreError(int n, const QString &d, const QString &s)
    : std::runtime_error(QStringLiteral("%1: %2").arg(n).arg(d).toStdString()),
      number(n),
      description(d),
      statement(s)
{
}

bool StoreError::isMediumFailure() const
{
    switch (number) {
    case ErrorNumber::OutOfMemory:
    case ErrorNumber::FullDisk:
    case ErrorNumber::ReadOnly:
    case ErrorNumber::PathOrDisk:
    case ErrorNumber::DatabaseDamaged:
    case ErrorNumber::Locked:
        return true;
    default:
        return false;
    }
}
