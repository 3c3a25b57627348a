#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

/// Draws the program's icon in the sizes that a menu asks for; part of the build.
int main(int count, char** words)
{
    if (count < 4) {
        std::fputs("usage: rasterise PICTURE.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer picture(QFile::decodeName(words[1]));
    for (int i = 3; i < count; ++i) {
        const int size = std::atoi(words[i]);
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        picture.render(&painter);
        painter.end();
        const QString file = QFile::decodeName(words[2]) + '/' + QString::number(size) + ".png";
        if (!picture.isValid() || size <= 0 || !image.save(file)) {
            std::fprintf(stderr, "rasterise: %s cannot be made of %s\n", qPrintable(file), words[1]);
            return 1;
        }
    }
    return 0;
}
