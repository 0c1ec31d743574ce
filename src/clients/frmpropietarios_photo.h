// The picture of a patient: shown, and taken by a click, by dropping or by pasting.
#pragma once

#include <QImage>
#include <QLabel>

namespace clients
{

class PatientPhoto : public QLabel
{
    Q_OBJECT
public:
    explicit PatientPhoto(const QString &invitation, QWidget *parent = nullptr);

    /// Shows the picture of a file, or the invitation where there is none.
    void show(const QString &file);
    bool hasPhoto() const;
    /// Whether a new picture is taken now.
    void allow(bool si);

Q_SIGNALS:
    void requested(); // click, ENTER or blank
    void received(const QImage &image);
    void receivedFile(const QString &file);
    void removed(); // the Delete key

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void take(const QMimeData *data);
    void scale();

    QString m_invitation;
    QImage m_photo;
    bool m_allowed = false;
};

} // namespace clients
