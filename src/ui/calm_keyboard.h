// A box that comes up by itself must not be answered by somebody who is typing.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

/// As long as it lives, keys reach nobody until a second has gone by without one: the box that has
/// come up meanwhile is there to be read first. What is typed goes on into the box of text that
/// has the focus now. The mouse works at once.
class TecladoEnCalma : public QObject
{
    Q_OBJECT
public:
    TecladoEnCalma();
    ~TecladoEnCalma() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOnTyping(const QKeyEvent &key);

    QPointer<QWidget> m_escrita; // where somebody may be typing
    QElapsedTimer m_desdeLaUltima;
    bool m_calma = false;
    const QEvent *m_propia = nullptr; // a key on its way there
};
