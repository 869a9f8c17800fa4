// Renders an SVG icon into a square PNG at build time, for launchers that read no SVG.
// Usage: velto-icon-render SOURCE.svg SIZE OUTPUT.png
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    bool isNumber = false;
    const int size = arguments.value(2).toInt(&isNumber);
    if (arguments.size() != 4 || !isNumber || size <= 0) {
        std::fputs("usage: velto-icon-render SOURCE.svg SIZE OUTPUT.png\n", stderr);
        return EXIT_FAILURE;
    }
    QSvgRenderer renderer(arguments.at(1));
    if (!renderer.isValid()) {
        std::fprintf(stderr, "%s is no SVG image\n", qPrintable(arguments.at(1)));
        return EXIT_FAILURE;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(arguments.at(3), "PNG")) {
        std::fprintf(stderr, "%s could not be written\n", qPrintable(arguments.at(3)));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
