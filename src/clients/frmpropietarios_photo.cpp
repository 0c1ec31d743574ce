#include "clients/frmpropietarios_photo.h"

#include "ui/pictures.h"
#include "ui/theme.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

constexpr int pictureHeight = 120;
constexpr int enough = 512; // pixels a side that are read of a large photograph

QString localFile(const QMimeData *datos)
{
    const QList<QUrl> links = datos->urls();
    return links.size() == 1 && links.first().isLocalFile() ? links.first().toLocalFile()
                                                            : QString();
}

} // namespace

FotoDeMascota::FotoDeMascota(const QString &invitacion, QWidget *parent)
    : QLabel(parent), m_invitacion(invitacion)
{
    setFixedHeight(pictureHeight);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setProperty("clase", u"suave"_s);
    Permitir(false);
}

void FotoDeMascota::Permitir(bool si)
{
    m_permitida = si;
    setAcceptDrops(si);
    setFocusPolicy(si ? Qt::StrongFocus : Qt::NoFocus);
    setCursor(si ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setToolTip(si ? m_invitacion : QString());
    if (m_foto.isNull())
        setText(si ? m_invitacion : QString());
}

void FotoDeMascota::Mostrar(const QString &archivo)
{
    m_foto = {};
    if (!archivo.isEmpty() && QFile::exists(archivo)) {
        QImageReader reader(archivo);
        const QSize size = reader.size();
        if (size.width() > enough || size.height() > enough)
            reader.setScaledSize(size.scaled(enough, enough, Qt::KeepAspectRatio));
        m_foto = reader.read();
    }
    if (m_foto.isNull())
        setText(m_permitida ? m_invitacion : QString());
    else
        scale();
}

bool FotoDeMascota::HayFoto() const { return !m_foto.isNull(); }

void FotoDeMascota::scale()
{
    const qreal ratio = devicePixelRatioF();
    const QSize room = (QSizeF(size() - QSize(2 * Espacio::XS, 2 * Espacio::XS)) * ratio).toSize();
    QPixmap picture =
        QPixmap::fromImage(m_foto.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(ratio);
    setPixmap(picture);
}

bool FotoDeMascota::event(QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QLabel::event(event);
}

void FotoDeMascota::paintEvent(QPaintEvent *event)
{
    const Paleta p = PaletaEnUso();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(p.acento, 2) : QPen(p.borde, 1));
    painter.setBrush(p.superficie);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    painter.end();
    QLabel::paintEvent(event);
}

void FotoDeMascota::keyPressEvent(QKeyEvent *event)
{
    if (!m_permitida)
        return QLabel::keyPressEvent(event);
    if (event->matches(QKeySequence::Paste))
        take(QGuiApplication::clipboard()->mimeData());
    else if (event->key() == Qt::Key_Delete && HayFoto())
        Q_EMIT quitada();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter
             || event->key() == Qt::Key_Space)
        Q_EMIT pedida();
    else
        QLabel::keyPressEvent(event);
}

void FotoDeMascota::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_permitida && event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT pedida();
}

void FotoDeMascota::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasImage() || !localFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void FotoDeMascota::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    take(event->mimeData());
}

void FotoDeMascota::take(const QMimeData *datos)
{
    if (!datos)
        return;
    if (const QString file = localFile(datos); !file.isEmpty())
        Q_EMIT archivoRecibido(file);
    else if (datos->hasImage())
        Q_EMIT recibida(qvariant_cast<QImage>(datos->imageData()));
}

void FotoDeMascota::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (!m_foto.isNull())
        scale();
}
