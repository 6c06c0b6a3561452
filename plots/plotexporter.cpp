// SPDX-License-Identifier: GPL-3.0-or-later
#include "plotexporter.h"

#include "axistitle.h"

#include <qwt_plot.h>
#include <qwt_plot_renderer.h>

#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace {

const double kMillimetresPerInch = 25.4;

QSize PixelSize(const QSizeF &sizeMm, int dpi)
{
    return (sizeMm / kMillimetresPerInch * dpi).toSize();
}

// The figure itself where it is a plot, or the plots it holds.
QList<QwtPlot *> PlotsOf(QWidget *figure)
{
    if (auto *plot = qobject_cast<QwtPlot *>(figure))
        return {plot};
    QList<QwtPlot *> plots;
    for (QwtPlot *plot : figure->findChildren<QwtPlot *>()) {
        if (plot->isVisibleTo(figure))
            plots.append(plot);
    }
    return plots;
}

// Where a part of the figure stands in it, on screen.
QRectF PlaceOf(const QWidget *part, const QWidget *figure)
{
    return QRectF(part == figure ? QPointF(0, 0) : QPointF(part->mapTo(figure, QPoint(0, 0))), part->size());
}

// Qwt lays each plot out at its size on screen and scales it by the
// device's resolution over the screen's, so fonts and lines keep their
// proportions at any resolution. The titles that plots share are drawn at
// their size on screen and scaled the same way.
void Render(QWidget *figure, QPainter &painter, const QRectF &target)
{
    painter.fillRect(target, Qt::white);
    const double scaleX = target.width() / figure->width();
    const double scaleY = target.height() / figure->height();
    QwtPlotRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    for (QwtPlot *plot : PlotsOf(figure)) {
        const QRectF at = PlaceOf(plot, figure);
        renderer.render(plot, &painter,
                        QRectF(target.x() + at.x() * scaleX, target.y() + at.y() * scaleY, at.width() * scaleX,
                               at.height() * scaleY));
    }
    painter.save();
    painter.translate(target.topLeft());
    painter.scale(scaleX, scaleY);
    for (const AxisTitle *title : figure->findChildren<AxisTitle *>()) {
        if (title->isVisibleTo(figure))
            title->Draw(&painter, PlaceOf(title, figure));
    }
    painter.restore();
}

bool WritePng(QWidget *figure, QSaveFile &file, const QSizeF &sizeMm, int dpi)
{
    QImage image(PixelSize(sizeMm, dpi), QImage::Format_ARGB32);
    const int dotsPerMetre = qRound(dpi / kMillimetresPerInch * 1000);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    {
        QPainter painter(&image);
        Render(figure, painter, QRectF(image.rect()));
    }
    return image.save(&file, "PNG");
}

bool WriteSvg(QWidget *figure, QSaveFile &file, const QSizeF &sizeMm, int dpi)
{
    const QSize size = PixelSize(sizeMm, dpi);
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
    generator.setResolution(dpi);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    QPainter painter;
    if (!painter.begin(&generator))
        return false;
    Render(figure, painter, QRectF(QPointF(0, 0), size));
    return painter.end();
}

bool WritePdf(QWidget *figure, QSaveFile &file, const QSizeF &sizeMm, int dpi)
{
    QPdfWriter writer(&file);
    writer.setPageSize(QPageSize(sizeMm, QPageSize::Millimeter));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setResolution(dpi);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    Render(figure, painter, QRectF(0, 0, writer.width(), writer.height()));
    return painter.end();
}

} // namespace

bool PlotExporter::FormatOf(const QString &fileName, Format *format)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (suffix == QLatin1String("png"))
        *format = Format::Png;
    else if (suffix == QLatin1String("svg"))
        *format = Format::Svg;
    else if (suffix == QLatin1String("pdf"))
        *format = Format::Pdf;
    else
        return false;
    return true;
}

QSizeF PlotExporter::ScreenSize(const QWidget *figure)
{
    return QSizeF(figure->width() * kMillimetresPerInch / figure->logicalDpiX(),
                  figure->height() * kMillimetresPerInch / figure->logicalDpiY());
}

bool PlotExporter::Write(QWidget *figure, const QString &fileName, const QSizeF &sizeMm, int dpi)
{
    Format format;
    if (!FormatOf(fileName, &format) || sizeMm.isEmpty() || dpi <= 0)
        return false;
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    bool written = false;
    switch (format) {
    case Format::Png:
        written = WritePng(figure, file, sizeMm, dpi);
        break;
    case Format::Svg:
        written = WriteSvg(figure, file, sizeMm, dpi);
        break;
    case Format::Pdf:
        written = WritePdf(figure, file, sizeMm, dpi);
        break;
    }
    return written && file.commit();
}
