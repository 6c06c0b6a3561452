// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSizeF>
#include <QString>

class QWidget;

// Writes the plot in view to a file through Qwt's renderer: a single plot,
// or a widget of several plots side by side (the histogram's panels), each
// rendered where it stands with the axis titles they share. PNG at a chosen resolution, SVG and PDF as
// vectors; the format follows the file name's suffix.
class PlotExporter
{
public:
    enum class Format { Png, Svg, Pdf };
    static const int kDefaultDpi = 300;

    // False where the suffix is none of "png", "svg", "pdf".
    static bool FormatOf(const QString &fileName, Format *format);
    // The figure's size on screen, in millimetres: what an export is drawn
    // at unless asked otherwise.
    static QSizeF ScreenSize(const QWidget *figure);
    // Writes `figure` at `sizeMm`; a PNG has `dpi` pixels per inch, so
    // that 100 mm at 300 dpi are 1181 pixels. The file is replaced whole
    // or left as it was. False when it cannot be written.
    static bool Write(QWidget *figure, const QString &fileName, const QSizeF &sizeMm, int dpi = kDefaultDpi);
};
