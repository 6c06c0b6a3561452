// Draws every image of the program into a directory (rc/img by default).
// Run it after changing a drawing and commit the PNG files it writes.

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>
#include <functional>

namespace {

using Drawing = std::function<void(QPainter &, const QSize &)>;

bool Save(const QString &directory, const QString &name, const QSize &size, const Drawing &draw)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter, size);
    painter.end();
    const QString path = directory + QLatin1Char('/') + name;
    if (!image.save(path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

// A red pennant on a dark pole.
void DrawFlag(QPainter &p, const QSize &size)
{
    const double w = size.width();
    const double h = size.height();
    p.setPen(QPen(QColor(70, 70, 70), w * 0.09, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(w * 0.22, h * 0.1), QPointF(w * 0.22, h * 0.92));
    QPainterPath cloth;
    cloth.moveTo(w * 0.26, h * 0.12);
    cloth.cubicTo(w * 0.45, h * 0.04, w * 0.6, h * 0.2, w * 0.86, h * 0.14);
    cloth.lineTo(w * 0.86, h * 0.52);
    cloth.cubicTo(w * 0.6, h * 0.58, w * 0.45, h * 0.42, w * 0.26, h * 0.5);
    cloth.closeSubpath();
    p.setPen(QPen(QColor(150, 20, 20), w * 0.04));
    p.setBrush(QColor(220, 40, 40));
    p.drawPath(cloth);
}

// A small triangle pointing up (ascending) or down.
Drawing SortArrow(bool up)
{
    return [up](QPainter &p, const QSize &size) {
        const double w = size.width();
        const double h = size.height();
        QPolygonF triangle;
        if (up)
            triangle << QPointF(w * 0.5, h * 0.25) << QPointF(w * 0.85, h * 0.75) << QPointF(w * 0.15, h * 0.75);
        else
            triangle << QPointF(w * 0.15, h * 0.25) << QPointF(w * 0.85, h * 0.25) << QPointF(w * 0.5, h * 0.75);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(60, 90, 150));
        p.drawPolygon(triangle);
    };
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    const QString directory = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("rc/img");
    QDir().mkpath(directory);
    bool ok = true;
    ok &= Save(directory, QStringLiteral("flag.png"), QSize(64, 64), DrawFlag);
    ok &= Save(directory, QStringLiteral("ascending.png"), QSize(16, 16), SortArrow(true));
    ok &= Save(directory, QStringLiteral("descending.png"), QSize(16, 16), SortArrow(false));
    return ok ? 0 : 1;
}
