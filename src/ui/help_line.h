// The line at the foot of a form that tells what happened and what to do next.
#pragma once

#include <QLabel>

/// Screen readers are told of each new text. Long texts are cut with dots and whole in the tool tip.
class LineaDeAyuda : public QLabel
{
    Q_OBJECT
public:
    explicit LineaDeAyuda(QWidget *parent = nullptr);
    void Decir(const QString &texto);  // a hint
    void Logro(const QString &texto);  // it worked
    void Fallo(const QString &texto);  // it did not
    void Limpiar();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void show(const QString &texto, const char *clase);
    QString m_texto;
};
