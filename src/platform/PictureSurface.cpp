#include "platform/PictureSurface.h"

#include <QPainter>

#include <cmath>

namespace platform {

PictureSurface::PictureSurface(int width, int height, int zoom, QWidget* parent)
    : QWidget(parent), image_(width, height, QImage::Format_ARGB32_Premultiplied), zoom_(zoom)
{
    setProperty("pictureSurface", true);
    image_.fill(back_);
    setFixedSize(sizeHint());
}

QSize PictureSurface::sizeHint() const { return image_.size() * zoom_; }

void PictureSurface::SetPicture(const QImage& picture)
{
    picture_ = picture;
    Cls();
}

void PictureSurface::Cls()
{
    image_.fill(back_);
    if (!picture_.isNull()) {
        QPainter p(&image_);
        p.drawImage(0, 0, picture_);
    }
    update();
}

void PictureSurface::Line(const QLineF& line)
{
    QPainter p(&image_);
    p.setRenderHint(QPainter::Antialiasing, smooth_);
    p.setPen(QPen(fore_, drawWidth_ > 1 ? drawWidth_ : 0, Qt::SolidLine, Qt::RoundCap));
    if (smooth_) {
        // Through the pixels' centres.
        p.drawLine(line.translated(0.5, 0.5));
        update();
        return;
    }
    // Pixel coordinates: a line from pixel to pixel, both ends included.
    const QPoint a(static_cast<int>(std::lround(line.x1())), static_cast<int>(std::lround(line.y1())));
    const QPoint b(static_cast<int>(std::lround(line.x2())), static_cast<int>(std::lround(line.y2())));
    if (a == b)
        p.drawPoint(a);
    else
        p.drawLine(a, b);
    update();
}

void PictureSurface::PSet(int x, int y)
{
    if (drawWidth_ > 1) {
        QPainter p(&image_);
        p.setRenderHint(QPainter::Antialiasing, smooth_);
        p.setPen(Qt::NoPen);
        p.setBrush(fore_);
        const double d = drawWidth_;
        p.drawEllipse(QRectF(x + 0.5 - d / 2, y + 0.5 - d / 2, d, d));
    } else if (image_.rect().contains(x, y))
        image_.setPixelColor(x, y, fore_);
    update();
}

void PictureSurface::FilledBox(double x1, double y1, double x2, double y2)
{
    const int left = static_cast<int>(std::lround(std::min(x1, x2)));
    const int right = static_cast<int>(std::lround(std::max(x1, x2)));
    const int top = static_cast<int>(std::lround(std::min(y1, y2)));
    const int bottom = static_cast<int>(std::lround(std::max(y1, y2)));
    QPainter p(&image_);
    p.fillRect(QRect(QPoint(left, top), QPoint(right, bottom)), fore_);
    update();
}

void PictureSurface::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    p.drawImage(rect(), image_);
}

} // namespace platform
