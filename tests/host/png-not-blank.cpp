// Exits 0 when every PNG named holds a picture with more than a handful of colours.
#include <QGuiApplication>
#include <QImage>
#include <QSet>

#include <cstdio>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    for (int i = 1; i < argc; ++i) {
        const QImage picture(QString::fromLocal8Bit(argv[i]));
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); y += 3) {
            for (int x = 0; x < picture.width(); x += 3) {
                colours.insert(picture.pixel(x, y));
            }
        }
        if (picture.isNull() || colours.size() < 4) {
            std::fprintf(stderr, "%s: blank or unreadable\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
