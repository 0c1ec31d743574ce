// The status line at the foot of a form: what happened and what to do next.
#pragma once

#include "store/session.h"

#include <QLabel>

namespace ui
{

/// Each new text is announced to screen readers. Text that does not fit is elided, with the whole
/// in the tool tip. Successes and failures are marked with a sign.
class HelpLine : public QLabel
{
    Q_OBJECT
public:
    /// Starts out empty.
    explicit HelpLine(QWidget *parent = nullptr);
    /// Shows a hint.
    void tell(const QString &text);
    /// Reports that something worked.
    void success(const QString &text);
    /// Reports that something failed.
    void faultOf(const QString &text);
    /// Empties the line.
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
