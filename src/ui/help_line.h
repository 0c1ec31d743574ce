// The line at the foot of a form that tells what happened and what to do next.
#pragma once

#include "store/session.h"

#include <QLabel>

namespace ui
{

/// Screen readers are told of each new text. What does not fit is cut with dots on screen alone and
/// whole in the tool tip. A sign stands before what worked and what did not.
class HelpLine : public QLabel
{
    Q_OBJECT
public:
    explicit HelpLine(QWidget *parent = nullptr);
    void tell(const QString &text);    // a hint
    void success(const QString &text); // it worked
    void faultOf(const QString &text); // it did not
    void clean();

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void put(const QString &text, const QString &kind);
    QString line() const;
    QRect textPlace() const;
};

/// While this lives, long work tells on the line how far it has come.
class LineProgress
{
public:
    LineProgress(Sesion &s, HelpLine *line);
    ~LineProgress();
    LineProgress(const LineProgress &) = delete;
    LineProgress &operator=(const LineProgress &) = delete;

private:
    Sesion &m_s;
    store::Progress m_before;
};

} // namespace ui
