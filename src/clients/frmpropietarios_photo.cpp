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

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

constexpr int PictureHeight = 120;
constexpr int Enough = 512; // pixels a side that are read of a large photograph

QString localFile(const QMimeData *data)
{
    const QList<QUrl> links = data->urls();
    return links.size() == 1 && links.first().isLocalFile() ? links.first().toLocalFile()
                                                            : QString();
}

} // namespace

PatientPhoto::PatientPhoto(const QString &invitation, QWidget *parent)
    : QLabel(parent), m_invitation(invitation)
{
    setFixedHeight(PictureHeight);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setProperty("clase", u"suave"_s);
    allow(false);
}

void PatientPhoto::allow(bool si)
{
    m_allowed = si;
    setAcceptDrops(si);
    setFocusPolicy(si ? Qt::StrongFocus : Qt::NoFocus);
    setCursor(si ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setToolTip(si ? m_invitation : QString());
    if (m_photo.isNull())
        setText(si ? m_invitation : QString());
}

void PatientPhoto::show(const QString &file)
{
    m_photo = {};
    if (!file.isEmpty() && QFile::exists(file)) {
        QImageReader reader(file);
        const QSize size = reader.size();
        if (size.width() > Enough || size.height() > Enough)
            reader.setScaledSize(size.scaled(Enough, Enough, Qt::KeepAspectRatio));
        m_photo = reader.read();
    }
    if (m_photo.isNull())
        setText(m_allowed ? m_invitation : QString());
    else
        scale();
}

bool PatientPhoto::hasPhoto() const { return !m_photo.isNull(); }

void PatientPhoto::scale()
{
    const qreal ratio = devicePixelRatioF();
    const QSize room =
        (QSizeF(size() - QSize(2 * ui::space::XS, 2 * ui::space::XS)) * ratio).toSize();
    QPixmap picture =
        QPixmap::fromImage(m_photo.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(ratio);
    setPixmap(picture);
}

bool PatientPhoto::event(QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QLabel::event(event);
}

void PatientPhoto::paintEvent(QPaintEvent *event)
{
    const ui::Palette p = ui::paletteInUse();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(p.accent, 2) : QPen(p.border, 1));
    painter.setBrush(p.surface);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    painter.end();
    QLabel::paintEvent(event);
}

void PatientPhoto::keyPressEvent(QKeyEvent *event)
{
    if (!m_allowed)
        return QLabel::keyPressEvent(event);
    if (event->matches(QKeySequence::Paste))
        take(QGuiApplication::clipboard()->mimeData());
    else if (event->key() == Qt::Key_Delete && hasPhoto())
        Q_EMIT removed();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter
             || event->key() == Qt::Key_Space)
        Q_EMIT requested();
    else
        QLabel::keyPressEvent(event);
}

void PatientPhoto::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_allowed && event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT requested();
}

void PatientPhoto::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasImage() || !localFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void PatientPhoto::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    take(event->mimeData());
}

void PatientPhoto::take(const QMimeData *dropped)
{
    if (!dropped)
        return;
    if (const QString file = localFile(dropped); !file.isEmpty())
        Q_EMIT receivedFile(file);
    else if (dropped->hasImage())
        Q_EMIT received(qvariant_cast<QImage>(dropped->imageData()));
}

void PatientPhoto::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (!m_photo.isNull())
        scale();
}
