// The optional news line, read from a file beside the user's data.
#pragma once

#include "store/session.h"

namespace startup
{

struct NewsItem {
    QDate until; // last day on which it is shown
    QString text;
};

/// Reads one record of two fields, separated by a comma or a line break: a day (2026-11-30, also
/// between # signs, or in the short form of the session's language) and a text, each with or
/// without double quotes.
/// @return nullopt when the file is missing or holds no such record
std::optional<NewsItem> readNewsItem(const Sesion &s, const QString &file);

} // namespace startup
