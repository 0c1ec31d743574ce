// What a document says on paper.
#pragma once

#include "printing/document.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// The text of a saved document as a reader of PDF files sees it, a line each, blanks squeezed.
/// KELVARA_PDF names a folder that keeps the files, to look at.
inline QString TextoEnPapel(Documento &documento, const QPageSize &hoja = QPageSize(QPageSize::A4))
{
    const QTemporaryDir carpeta;
    const QString guardar = qEnvironmentVariable("KELVARA_PDF");
    const QString archivo = (guardar.isEmpty() ? carpeta.path() : guardar) + u'/'
                            + documento.Titulo().replace(u'/', u'-') + u'-' + hoja.name().left(2)
                            + QStringLiteral(".pdf");
    GuardarPdf(documento, archivo, hoja);
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), archivo, QStringLiteral("-")});
    EXPECT_TRUE(p.waitForFinished());
    QStringList lineas;
    for (const QString &linea : QString::fromUtf8(p.readAllStandardOutput()).split(u'\n'))
        if (const QString t = linea.simplified(); !t.isEmpty())
            lineas << t;
    return lineas.join(u'\n');
}
