// SPDX-License-Identifier: GPL-3.0-or-later
// Draws every image of the program into a directory (rc/img by default).
// Run it after changing a drawing and commit the PNG files it writes.

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QVector>

#include <cmath>
#include <cstdio>
#include <functional>

namespace {

// One palette for every image, taken from the table colours of the window.
constexpr QRgb kInk = qRgb(52, 73, 110);          // glyphs and outlines
constexpr QRgb kAccent = qRgb(47, 111, 208);      // the program's blue
constexpr QRgb kAccentLight = qRgb(122, 170, 238);
constexpr QRgb kAlternate = qRgb(241, 246, 253);  // #F1F6FD
constexpr QRgb kPressed = qRgb(176, 198, 236);
constexpr QRgb kDisabled = qRgb(158, 170, 192);
constexpr QRgb kFrame = qRgb(201, 211, 227);

using Drawing = std::function<void(QPainter &, const QSize &)>;

struct Image
{
    QString name;
    QSize size;
    Drawing draw;
};

enum class ButtonState { Normal, Hover, Pressed, Disabled };

QFont Font(int pixelSize, QFont::Weight weight = QFont::Normal)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

bool Save(const QString &directory, const Image &image)
{
    QImage canvas(image.size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    image.draw(painter, image.size);
    painter.end();
    const QString path = directory + QLatin1Char('/') + image.name;
    if (!canvas.save(path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

// ---- Flag and sort arrows ----------------------------------------------

// A red pennant with a soft fold on a slim pole.
void DrawFlag(QPainter &p, const QSize &size)
{
    const double w = size.width();
    const double h = size.height();
    p.setPen(QPen(QColor(kInk), w * 0.07, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(w * 0.2, h * 0.1), QPointF(w * 0.2, h * 0.92));
    QPainterPath cloth;
    cloth.moveTo(w * 0.24, h * 0.12);
    cloth.cubicTo(w * 0.42, h * 0.03, w * 0.6, h * 0.22, w * 0.88, h * 0.13);
    cloth.lineTo(w * 0.88, h * 0.53);
    cloth.cubicTo(w * 0.6, h * 0.62, w * 0.42, h * 0.43, w * 0.24, h * 0.52);
    cloth.closeSubpath();
    QLinearGradient shade(0, 0, w, 0);
    shade.setColorAt(0, QColor(232, 62, 52));
    shade.setColorAt(0.55, QColor(205, 38, 38));
    shade.setColorAt(1, QColor(228, 58, 50));
    p.setPen(QPen(QColor(160, 24, 24), w * 0.03, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(shade);
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
            triangle << QPointF(w * 0.5, h * 0.3) << QPointF(w * 0.82, h * 0.7) << QPointF(w * 0.18, h * 0.7);
        else
            triangle << QPointF(w * 0.18, h * 0.3) << QPointF(w * 0.82, h * 0.3) << QPointF(w * 0.5, h * 0.7);
        p.setPen(QPen(QColor(kInk), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.setBrush(QColor(kInk));
        p.drawPolygon(triangle);
    };
}

// ---- List bar buttons (+ and -) ----------------------------------------

// Hover and pressed states get a rounded face; the normal state lets the
// light blue bar show through.
void DrawButtonFace(QPainter &p, const QRectF &rect, ButtonState state)
{
    if (state != ButtonState::Hover && state != ButtonState::Pressed)
        return;
    const bool pressed = state == ButtonState::Pressed;
    p.setPen(QPen(QColor(pressed ? kAccentLight : kFrame), 1));
    p.setBrush(QColor(pressed ? kPressed : kAlternate));
    p.drawRoundedRect(rect.adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
}

QColor GlyphColour(ButtonState state)
{
    switch (state) {
    case ButtonState::Disabled:
        return QColor(kDisabled);
    case ButtonState::Pressed:
        return QColor(kAccent).darker(130);
    default:
        return QColor(kInk);
    }
}

Drawing ListButton(bool plus, ButtonState state)
{
    return [plus, state](QPainter &p, const QSize &size) {
        const QRectF rect(QPointF(0, 0), size);
        DrawButtonFace(p, rect, state);
        const QPointF centre = rect.center();
        const double arm = 4.5;
        p.setPen(QPen(GlyphColour(state), 2, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(centre - QPointF(arm, 0), centre + QPointF(arm, 0));
        if (plus)
            p.drawLine(centre - QPointF(0, arm), centre + QPointF(0, arm));
    };
}

QVector<Image> ListButtonImages()
{
    const QSize size(28, 22);
    return {
        {QStringLiteral("icon_lb_new_std.png"), size, ListButton(true, ButtonState::Normal)},
        {QStringLiteral("icon_lb_new_pressed.png"), size, ListButton(true, ButtonState::Pressed)},
        {QStringLiteral("icon_lb_delete_std.png"), size, ListButton(false, ButtonState::Normal)},
        {QStringLiteral("icon_lb_delete_disabled.png"), size, ListButton(false, ButtonState::Disabled)},
        {QStringLiteral("icon_lb_delete_hover.png"), size, ListButton(false, ButtonState::Hover)},
        {QStringLiteral("icon_lb_delete_pressed.png"), size, ListButton(false, ButtonState::Pressed)},
    };
}

// ---- Cloud shapes --------------------------------------------------------

// Three puffs on a flat base, scaled to fit `target` and centred in it.
QPainterPath CloudPath(const QRectF &target)
{
    // Winding fill makes the overlapping parts one shape without seams.
    QPainterPath cloud;
    cloud.setFillRule(Qt::WindingFill);
    cloud.addRoundedRect(QRectF(4, 11, 25, 8), 4, 4);
    cloud.addEllipse(QPointF(9.5, 12.5), 5.5, 5.5);
    cloud.addEllipse(QPointF(17, 9), 7, 7);
    cloud.addEllipse(QPointF(24.5, 14), 4.5, 4.5);
    const QRectF bounds = cloud.boundingRect();
    const double scale = std::min(target.width() / bounds.width(), target.height() / bounds.height());
    QTransform fit;
    fit.translate(target.center().x(), target.center().y());
    fit.scale(scale, scale);
    fit.translate(-bounds.center().x(), -bounds.center().y());
    return fit.map(cloud);
}

QLinearGradient SkyGradient(const QRectF &rect)
{
    QLinearGradient sky(rect.topLeft(), rect.bottomLeft());
    sky.setColorAt(0, QColor(kAccentLight));
    sky.setColorAt(1, QColor(kAccent));
    return sky;
}

Drawing CloudOptionsButton(ButtonState state)
{
    return [state](QPainter &p, const QSize &size) {
        DrawButtonFace(p, QRectF(QPointF(0, 0), size), state);
        const QRectF cloudRect(7, 6, 26, 16);
        p.setPen(Qt::NoPen);
        p.setBrush(SkyGradient(cloudRect));
        p.drawPath(CloudPath(cloudRect));
        QPolygonF chevron;
        chevron << QPointF(37, 12.5) << QPointF(40.5, 16) << QPointF(44, 12.5);
        p.setPen(QPen(GlyphColour(state), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.setBrush(Qt::NoBrush);
        p.drawPolyline(chevron);
    };
}

QVector<Image> CloudOptionImages()
{
    const QSize size(50, 28);
    return {
        {QStringLiteral("icon_cloud_options_std.png"), size, CloudOptionsButton(ButtonState::Normal)},
        {QStringLiteral("icon_cloud_options_hover.png"), size, CloudOptionsButton(ButtonState::Hover)},
        {QStringLiteral("icon_cloud_options_pressed.png"), size, CloudOptionsButton(ButtonState::Pressed)},
    };
}

// ---- Warning sign and logos ---------------------------------------------

void DrawWarning(QPainter &p, const QSize &size)
{
    const double w = size.width();
    const double h = size.height();
    QPolygonF triangle;
    triangle << QPointF(w / 2, 1.5) << QPointF(w - 1.2, h - 1.5) << QPointF(1.2, h - 1.5);
    p.setPen(QPen(QColor(kAccent), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(QColor(kAccent));
    p.drawPolygon(triangle);
    p.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(w / 2, h * 0.36), QPointF(w / 2, h * 0.6));
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(w / 2, h * 0.77), 1.1, 1.1);
}

void DrawKelmarunLogo(QPainter &p, const QSize &)
{
    const QRectF cloudRect(4, 10, 62, 40);
    p.setPen(Qt::NoPen);
    p.setBrush(SkyGradient(cloudRect));
    p.drawPath(CloudPath(cloudRect));
    p.setPen(QColor(kInk));
    p.setFont(Font(21, QFont::Bold));
    p.drawText(QPointF(74, 31), QStringLiteral("Kelmarun"));
    QFont cloudFont = Font(15);
    cloudFont.setLetterSpacing(QFont::AbsoluteSpacing, 3.5);
    p.setPen(QColor(kAccent));
    p.setFont(cloudFont);
    p.drawText(QPointF(75, 51), QStringLiteral("CLOUD"));
}

// The maker's mark: a rounded tile with a voice dot and two sound waves.
void DrawTalvoxMark(QPainter &p, const QRectF &tile)
{
    QLinearGradient deep(tile.topLeft(), tile.bottomRight());
    deep.setColorAt(0, QColor(kAccent));
    deep.setColorAt(1, QColor(kInk));
    p.setPen(Qt::NoPen);
    p.setBrush(deep);
    p.drawRoundedRect(tile, tile.width() * 0.22, tile.width() * 0.22);
    const QPointF voice(tile.left() + tile.width() * 0.3, tile.center().y());
    p.setBrush(Qt::white);
    p.drawEllipse(voice, tile.width() * 0.08, tile.width() * 0.08);
    p.setPen(QPen(Qt::white, tile.width() * 0.075, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    for (const double radius : {0.24, 0.42}) {
        const double r = tile.width() * radius;
        p.drawArc(QRectF(voice - QPointF(r, r), QSizeF(2 * r, 2 * r)), -50 * 16, 100 * 16);
    }
}

void DrawTalvoxLogo(QPainter &p, const QSize &size)
{
    const double tile = size.height() - 16;
    DrawTalvoxMark(p, QRectF(8, 8, tile, tile));
    p.setPen(QColor(kInk));
    p.setFont(Font(34, QFont::Bold));
    p.drawText(QPointF(tile + 22, size.height() / 2.0 + 12), QStringLiteral("Talvox"));
}

// ---- Bell curves ---------------------------------------------------------

// The flag dialog maps clicks on the picture to zones by x: below 64, 64 to
// 89, 90 to 116, and from 117 on. The mean sits at pixel column 90 and one
// standard deviation is 26.5 pixels, so the lines a-s, a and a+s fall on
// columns 64, 90 and 117 and each zone's fill matches its click range.
constexpr double kMean = 90.5;
constexpr double kSigma = 26.5;
constexpr double kBaseline = 66;
constexpr double kPeak = 10;
constexpr int kZoneEdges[] = {0, 64, 90, 117};

double CurveY(double x)
{
    const double z = (x - kMean) / kSigma;
    return kBaseline - (kBaseline - kPeak) * std::exp(-z * z / 2);
}

// The curve runs inside the picture's one-pixel frame, from x = 1 to `right`.
QPainterPath CurveArea(double right)
{
    QPainterPath area(QPointF(1, kBaseline));
    for (double x = 1; x <= right; x += 0.5)
        area.lineTo(x, CurveY(x));
    area.lineTo(right, kBaseline);
    area.closeSubpath();
    return area;
}

void FillZones(QPainter &p, int zones, double right)
{
    const QPainterPath area = CurveArea(right);
    for (int zone = 0; zone < 4; ++zone) {
        const double end = zone < 3 ? kZoneEdges[zone + 1] : right;
        QPainterPath slice;
        slice.addRect(QRectF(kZoneEdges[zone], 0, end - kZoneEdges[zone], kBaseline));
        const bool marked = zones & (1 << zone);
        p.setPen(Qt::NoPen);
        p.setBrush(marked ? QBrush(SkyGradient(QRectF(0, kPeak, right, kBaseline - kPeak)))
                          : QBrush(QColor(kAlternate)));
        p.drawPath(area.intersected(slice));
    }
}

void DrawCurveOutline(QPainter &p, double right)
{
    QPainterPath outline(QPointF(1, CurveY(1)));
    for (double x = 1.5; x <= right; x += 0.5)
        outline.lineTo(x, CurveY(x));
    p.setPen(QPen(QColor(kInk), 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawPath(outline);
    p.setPen(QPen(QColor(kInk), 1));
    p.drawLine(QPointF(1, kBaseline + 0.5), QPointF(right, kBaseline + 0.5));
}

void DrawZoneLines(QPainter &p)
{
    const QStringList names = {QStringLiteral("a-s"), QStringLiteral("a"), QStringLiteral("a+s")};
    p.setFont(Font(11));
    for (int line = 0; line < 3; ++line) {
        const double x = kZoneEdges[line + 1] + 0.5;
        QPen pen(QColor(kInk), 1);
        if (line != 1)
            pen.setDashPattern({3, 2});
        p.setPen(pen);
        p.drawLine(QPointF(x, kPeak - 4), QPointF(x, kBaseline + 3));
        p.setPen(QColor(kInk));
        p.drawText(QRectF(x - 20, kBaseline + 5, 40, 16), Qt::AlignHCenter | Qt::AlignTop, names.at(line));
    }
}

Drawing BellCurve(int zones)
{
    return [zones](QPainter &p, const QSize &size) {
        const double width = size.width();
        p.setPen(QPen(QColor(kFrame), 1));
        p.setBrush(Qt::white);
        p.drawRoundedRect(QRectF(0.5, 0.5, width - 1, size.height() - 1), 3, 3);
        FillZones(p, zones, width - 1);
        DrawCurveOutline(p, width - 1);
        DrawZoneLines(p);
    };
}

QVector<Image> BellCurveImages()
{
    QVector<Image> images;
    for (int zones = 0; zones < 16; ++zones)
        images.append({QStringLiteral("bellcurve%1.png").arg(zones), QSize(180, 90), BellCurve(zones)});
    return images;
}

// ---- Program icon ----------------------------------------------------------

// A blue tile holding a sheet of trial rows with a bell curve over them;
// drawn at every size of the icon theme, so that small sizes stay crisp.
void DrawAppIcon(QPainter &p, const QSize &size)
{
    const double s = size.width();
    const QRectF tile(s * 0.04, s * 0.04, s * 0.92, s * 0.92);
    QLinearGradient sky(tile.topLeft(), tile.bottomLeft());
    sky.setColorAt(0, QColor(kAccentLight));
    sky.setColorAt(1, QColor(kAccent));
    p.setPen(Qt::NoPen);
    p.setBrush(sky);
    p.drawRoundedRect(tile, s * 0.2, s * 0.2);
    const QRectF sheet(s * 0.18, s * 0.2, s * 0.64, s * 0.6);
    p.setBrush(Qt::white);
    p.drawRoundedRect(sheet, s * 0.06, s * 0.06);
    p.setPen(QPen(QColor(kFrame), qMax(1.0, s * 0.03)));
    for (const double y : {0.36, 0.5, 0.64})
        p.drawLine(QPointF(s * 0.24, s * y), QPointF(s * 0.76, s * y));
    QPainterPath curve(QPointF(s * 0.22, s * 0.72));
    for (double x = 0.22; x <= 0.781; x += 0.01) {
        const double z = (x - 0.5) / 0.09;
        curve.lineTo(s * x, s * (0.72 - 0.42 * std::exp(-z * z / 2)));
    }
    p.setPen(QPen(QColor(kInk), qMax(1.2, s * 0.055), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(curve);
}

QVector<Image> AppIconImages()
{
    QVector<Image> images;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        images.append({QStringLiteral("zephlane-%1.png").arg(side), QSize(side, side), DrawAppIcon});
    return images;
}

QVector<Image> AllImages()
{
    QVector<Image> images = {
        {QStringLiteral("flag.png"), QSize(64, 64), DrawFlag},
        {QStringLiteral("ascending.png"), QSize(16, 16), SortArrow(true)},
        {QStringLiteral("descending.png"), QSize(16, 16), SortArrow(false)},
        {QStringLiteral("warning_blue_w16.png"), QSize(16, 16), DrawWarning},
        {QStringLiteral("km_cloud.png"), QSize(200, 60), DrawKelmarunLogo},
        {QStringLiteral("talvox.png"), QSize(210, 72), DrawTalvoxLogo},
    };
    images += ListButtonImages();
    images += CloudOptionImages();
    images += BellCurveImages();
    images += AppIconImages();
    return images;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    const QString directory = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("rc/img");
    QDir().mkpath(directory);
    bool ok = true;
    for (const Image &image : AllImages())
        ok &= Save(directory, image);
    return ok ? 0 : 1;
}
