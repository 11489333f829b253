// Draws the pane's images with the drawing port (painted by the Qt front's canvas) and writes
// each as a TIFF of two pictures, 1x and 2x, with straight alpha: what the pane's image decoder
// reads back.
//   vexto-draw-images FOLDER
#include "qt/QtCanvas.hpp"
#include "toolkit/Canvas.hpp"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <tiffio.h>
#include <vector>

using namespace vexto;

namespace {

struct Drawing {
    const char* name;
    Size size; // in points
    std::function<void(Canvas&)> draw;
};

// A bar of the given half-width from one point to another, as a closed polygon.
BezierPath bar(Point from, Point to, double halfWidth)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    const double nx = -dy / length * halfWidth;
    const double ny = dx / length * halfWidth;
    return BezierPath::polygon({{from.x + nx, from.y + ny},
                                {to.x + nx, to.y + ny},
                                {to.x - nx, to.y - ny},
                                {from.x - nx, from.y - ny}});
}

void deleteButton(Canvas& canvas, float grey)
{
    canvas.fill(BezierPath::oval(Rect(1, 1, 12, 12)), Color::calibratedWhite(grey, 1));
    const Color white = Color::whiteColor();
    canvas.fill(bar({4.4, 4.4}, {9.6, 9.6}, 0.85), white);
    canvas.fill(bar({4.4, 9.6}, {9.6, 4.4}, 0.85), white);
}

const std::vector<Drawing> drawings = {
    // A right-pointing arrow, drawn as a silhouette in the colour of the text it follows.
    {"KRLinkArrow.tiff", Size{11, 11},
     [](Canvas& canvas) {
         canvas.fill(
             BezierPath::polygon({{1, 4}, {6, 4}, {6, 1}, {10.5, 5.5}, {6, 10}, {6, 7}, {1, 7}}),
             Color::calibratedWhite(0, 1));
     }},
    // The hot-key fields' clear button, enabled and disabled.
    {"KRHotKeyDeleteOn.tiff", Size{14, 14},
     [](Canvas& canvas) {
         deleteButton(canvas, 0.5f);
     }},
    {"KRHotKeyDeleteOff.tiff", Size{14, 14},
     [](Canvas& canvas) {
         deleteButton(canvas, 0.8f);
     }},
    // A layout of the person's own: a page with a folded corner and the bars of a panel.
    {"KRVXUserLayout.tiff", Size{16, 16},
     [](Canvas& canvas) {
         canvas.fill(
             BezierPath::polygon({{2.5, 0.5}, {13.5, 0.5}, {13.5, 11.5}, {9.5, 15.5}, {2.5, 15.5}}),
             Color::calibratedWhite(0.45f, 1));
         canvas.fill(
             BezierPath::polygon({{3.5, 1.5}, {12.5, 1.5}, {12.5, 11}, {9, 14.5}, {3.5, 14.5}}),
             Color::whiteColor());
         canvas.fill(BezierPath::polygon({{9, 14.5}, {9, 11}, {12.5, 11}}),
                     Color::calibratedWhite(0.75f, 1));
         canvas.fillRect(Rect(5, 8, 5.5, 1.5), Color::calibratedRGB(0.16f, 0.45f, 0.9f, 1));
         canvas.fillRect(Rect(5, 5.5, 5.5, 1.2), Color::calibratedWhite(0.6f, 1));
         canvas.fillRect(Rect(5, 3, 4, 1.2), Color::calibratedWhite(0.6f, 1));
     }},
    // The product's small icon, for the presets that ship with it: windows stacked on blue.
    {"KRVXSmallIcon.tiff", Size{16, 16},
     [](Canvas& canvas) {
         const BezierPath tile = BezierPath::roundedRect(Rect(1, 1, 14, 14), 3.5, 3.5);
         canvas.saveGraphicsState();
         canvas.clip(tile);
         canvas.drawLinearGradient(Gradient(Color::calibratedRGB(0.35f, 0.62f, 1, 1),
                                            Color::calibratedRGB(0.1f, 0.3f, 0.8f, 1)),
                                   Rect(1, 1, 14, 14), 270);
         canvas.restoreGraphicsState();
         canvas.fill(BezierPath::roundedRect(Rect(5.5, 6.5, 7, 5), 1, 1),
                     Color::calibratedWhite(1, 0.55f));
         canvas.fill(BezierPath::roundedRect(Rect(3.5, 4, 7, 5), 1, 1), Color::whiteColor());
     }},
    // The program's icon, for the desktop entry and the window: the panel with its selection
    // over a blue tile.
    {"Vexto.png", Size{256, 256},
     [](Canvas& canvas) {
         const Gradient tile(Color::calibratedRGB(0.25f, 0.56f, 0.98f, 1),
                             Color::calibratedRGB(0.05f, 0.27f, 0.70f, 1));
         canvas.saveGraphicsState();
         canvas.clip(BezierPath::roundedRect(Rect(16, 16, 224, 224), 52, 52));
         canvas.drawLinearGradient(tile, Rect(16, 16, 224, 224), 270);
         canvas.restoreGraphicsState();
         canvas.fill(BezierPath::roundedRect(Rect(40, 84, 176, 88), 22, 22),
                     Color::calibratedWhite(0, 0.55f));
         canvas.fill(BezierPath::roundedRect(Rect(92, 94, 68, 68), 14, 14),
                     Color::calibratedWhite(1, 0.95f));
         canvas.fill(BezierPath::roundedRect(Rect(98, 100, 56, 56), 10, 10),
                     Color::calibratedRGB(0.0f, 0.36f, 0.85f, 1));
         for (const double x : {52.0, 170.0}) {
             canvas.fill(BezierPath::roundedRect(Rect(x, 106, 34, 44), 8, 8),
                         Color::calibratedWhite(1, 0.8f));
         }
         canvas.fill(BezierPath::roundedRect(Rect(108, 110, 36, 36), 8, 8),
                     Color::calibratedWhite(1, 1));
     }},
};

// Straight-alpha RGBA of the drawing at the scale.
QImage render(const Drawing& drawing, int scale)
{
    QImage image(int(drawing.size.width) * scale, int(drawing.size.height) * scale,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.scale(scale, scale);
        QtCanvas canvas(painter, drawing.size.height);
        drawing.draw(canvas);
    }
    return image.convertToFormat(QImage::Format_RGBA8888);
}

bool writeTiff(const std::string& path, const std::vector<QImage>& pictures)
{
    TIFF* tiff = TIFFOpen(path.c_str(), "w");
    if (tiff == nullptr) {
        return false;
    }
    bool written = true;
    for (const QImage& picture : pictures) {
        const std::uint16_t extra[] = {EXTRASAMPLE_UNASSALPHA};
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, std::uint32_t(picture.width()));
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, std::uint32_t(picture.height()));
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 4);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, extra);
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        for (int y = 0; y < picture.height(); ++y) {
            written =
                written && TIFFWriteScanline(tiff, const_cast<uchar*>(picture.constScanLine(y)),
                                             std::uint32_t(y), 0) == 1;
        }
        written = written && TIFFWriteDirectory(tiff) == 1;
    }
    TIFFClose(tiff);
    return written;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: vexto-draw-images FOLDER\n", stderr);
        return 2;
    }
    for (const Drawing& drawing : drawings) {
        const std::string path = std::string(argv[1]) + "/" + drawing.name;
        const bool png = path.ends_with(".png");
        if (png ? !render(drawing, 1).save(QString::fromStdString(path))
                : !writeTiff(path, {render(drawing, 1), render(drawing, 2)})) {
            std::fprintf(stderr, "vexto-draw-images: cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
