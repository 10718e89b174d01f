// Renders an SVG as a square PNG of the given size: the launcher icons of the package.
// Usage: render-icon <in.svg> <size> <out.png>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    if (argc != 4) {
        std::fputs("usage: render-icon <in.svg> <size> <out.png>\n", stderr);
        return 2;
    }
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    const int size = QByteArray(argv[2]).toInt();
    if (!svg.isValid() || size <= 0)
        return 1;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    svg.render(&p);
    p.end();
    return image.save(QString::fromLocal8Bit(argv[3]), "PNG") ? 0 : 1;
}
