// The picture of a patient: shown, and taken by a click, by dropping or by pasting.
#pragma once

#include <QImage>
#include <QLabel>

class FotoDeMascota : public QLabel
{
    Q_OBJECT
public:
    explicit FotoDeMascota(const QString &invitacion, QWidget *parent = nullptr);

    /// Shows the picture of a file, or the invitation where there is none.
    void Mostrar(const QString &archivo);
    bool HayFoto() const;
    /// Whether a new picture is taken now.
    void Permitir(bool si);

Q_SIGNALS:
    void pedida(); // click, ENTER or blank
    void recibida(const QImage &imagen);
    void archivoRecibido(const QString &archivo);
    void quitada(); // the Delete key

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void take(const QMimeData *datos);
    void scale();

    QString m_invitacion;
    QImage m_foto;
    bool m_permitida = false;
};
