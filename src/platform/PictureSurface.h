#pragma once
// A picture surface: a kept image in pixel coordinates with a back and a fore
// colour, on which the displays and dials draw lines, points and filled boxes.
#include <QColor>
#include <QImage>
#include <QLineF>
#include <QWidget>

namespace platform {

class PictureSurface final : public QWidget {
    Q_OBJECT
public:
    // A surface of width x height pixels, shown `zoom` times larger on screen.
    PictureSurface(int width, int height, int zoom = 1, QWidget* parent = nullptr);

    int ScaleWidth() const { return image_.width(); }
    int ScaleHeight() const { return image_.height(); }
    const QImage& Image() const { return image_; }

    // The kept picture under the drawing, as a picture box's Picture: Cls clears to it.
    void SetPicture(const QImage& picture);
    void SetBackColor(const QColor& c) { back_ = c; }
    void SetForeColor(const QColor& c) { fore_ = c; }
    QColor BackColor() const { return back_; }
    QColor ForeColor() const { return fore_; }
    // Width of lines and points in pixels; wider points are round dots.
    void SetDrawWidth(int w) { drawWidth_ = w < 1 ? 1 : w; }
    int DrawWidth() const { return drawWidth_; }
    // Smooth edges on lines and wide points, for drawings that aren't pixel art.
    void SetAntialiasing(bool on) { smooth_ = on; }

    void Cls();
    void Line(const QLineF& line);
    void PSet(int x, int y);
    void FilledBox(double x1, double y1, double x2, double y2);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage image_;
    QImage picture_;
    QColor back_ = Qt::white;
    QColor fore_ = Qt::black;
    int drawWidth_ = 1;
    bool smooth_ = false;
    int zoom_;
};

} // namespace platform
