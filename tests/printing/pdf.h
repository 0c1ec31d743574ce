// The text of a printed document.
#pragma once

#include "printing/document.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace printing;

/// The text of each page of a PDF file, as one line with spaces simplified. Uses pdftotext.
inline QStringList pagesOf(const QString &file)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    EXPECT_TRUE(p.waitForFinished());
    QStringList pages = QString::fromUtf8(p.readAllStandardOutput()).split(u'\f');
    pages.removeLast(); // every page ends with a form feed
    for (QString &page : pages) {
        QStringList lines;
        for (const QString &line : page.split(u'\n'))
            if (const QString t = line.simplified(); !t.isEmpty())
                lines << t;
        page = lines.join(u'\n');
    }
    return pages;
}

inline QStringList pagesInPaper(Documento &document,
                                const QPageSize &sheet = QPageSize(QPageSize::A4))
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("documento.pdf"));
    savePdf(document, file, sheet);
    return pagesOf(file);
}

inline QString textInPaper(Documento &document, const QPageSize &sheet = QPageSize(QPageSize::A4))
{
    return pagesInPaper(document, sheet).join(u'\n');
}
