// What a document says on paper.
#pragma once

#include "printing/document.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// The pages of a PDF file as a reader sees them: a line each, blanks squeezed.
inline QStringList PaginasDe(const QString &archivo)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), archivo, QStringLiteral("-")});
    EXPECT_TRUE(p.waitForFinished());
    QStringList paginas = QString::fromUtf8(p.readAllStandardOutput()).split(u'\f');
    paginas.removeLast(); // each page ends with the mark
    for (QString &pagina : paginas) {
        QStringList lineas;
        for (const QString &linea : pagina.split(u'\n'))
            if (const QString t = linea.simplified(); !t.isEmpty())
                lineas << t;
        pagina = lineas.join(u'\n');
    }
    return paginas;
}

inline QStringList PaginasEnPapel(Documento &documento,
                                  const QPageSize &hoja = QPageSize(QPageSize::A4))
{
    const QTemporaryDir carpeta;
    const QString archivo = carpeta.filePath(QStringLiteral("documento.pdf"));
    GuardarPdf(documento, archivo, hoja);
    return PaginasDe(archivo);
}

inline QString TextoEnPapel(Documento &documento, const QPageSize &hoja = QPageSize(QPageSize::A4))
{
    return PaginasEnPapel(documento, hoja).join(u'\n');
}
