// Documents that are text with tables: letters and reports.
#pragma once

#include "printing/document.h"

#include <QImage>
#include <QTextDocument>
#include <memory>

/// A page-broken HTML text. Heads of tables (thead) are repeated on each page; a foot shows the
/// title and "page x of y".
class DocumentoHtml : public Documento
{
public:
    /// @param pie text of the foot, "%1" the page, "%2" all pages; "" for no foot
    DocumentoHtml(QString titulo, const QString &html, QString pie,
                  QPageLayout::Orientation orientacion = QPageLayout::Portrait);

    /// A picture at the top of the first page: over the full width, or as wide as a third of the
    /// page's height allows.
    void PonerCabecera(QImage imagen);

    QString Titulo() const override { return m_titulo; }
    QPageLayout::Orientation Orientacion() const override { return m_orientacion; }
    int Componer(QPaintDevice &dispositivo, QSizeF area) override;
    void Dibujar(QPainter &pintor, int pagina) override;

private:
    QString m_titulo;
    QString m_html;
    QString m_pie;
    QPageLayout::Orientation m_orientacion;
    QImage m_cabecera;
    std::unique_ptr<QTextDocument> m_texto;
    QSizeF m_pagina; // of the text, in device pixels
    double m_porMm = 1;
    int m_paginas = 0;
};
