// The line at the foot of a form that tells what happened and what to do next.
#pragma once

#include <QLabel>

/// Screen readers are told of each new text. What does not fit is cut with dots on screen alone and
/// whole in the tool tip. A sign stands before what worked and what did not.
class LineaDeAyuda : public QLabel
{
    Q_OBJECT
public:
    explicit LineaDeAyuda(QWidget *parent = nullptr);
    void Decir(const QString &texto); // a hint
    void Logro(const QString &texto); // it worked
    void Fallo(const QString &texto); // it did not
    void Limpiar();

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void put(const QString &texto, const QString &clase);
    QString line() const;
    QRect textPlace() const;
};
