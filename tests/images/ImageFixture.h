#pragma once
// Image files made on the spot in a scratch folder.

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class ImageFolder : public ::testing::Test {
protected:
    QTemporaryDir temp;

    QString path(const QString& name) const { return temp.filePath(name); }

    // A gradient, so that a lossy re-encoding or a wrong pixel shows.
    static QImage picture(int w, int h, bool withAlpha = false) {
        QImage img(w, h, withAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                img.setPixel(x, y,
                             qRgba(x * 255 / w, y * 255 / h, 90, withAlpha && x < w / 2 ? 0 : 255));
        return img;
    }

    QString save(const QString& name, const QImage& img, const char* format, int quality = -1) {
        const QString p = path(name);
        EXPECT_TRUE(img.save(p, format, quality)) << name;
        return p;
    }

    QString write(const QString& name, const QByteArray& bytes) {
        QFile f(path(name));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size()) << name;
        return f.fileName();
    }

    static QByteArray bytesOf(const QString& p) {
        QFile f(p);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // A BMP of 14 + 40 bytes that claims a picture of w x h, 24 bits a pixel.
    static QByteArray bmpHeaderOnly(qint32 w, qint32 h) {
        QByteArray b(54, '\0');
        auto put32 = [&](int at, quint32 v) {
            for (int i = 0; i < 4; ++i)
                b[at + i] = char((v >> (8 * i)) & 0xFF);
        };
        b[0] = 'B';
        b[1] = 'M';
        put32(2, 54 + quint32(w) * 3 * quint32(h));
        put32(10, 54);
        put32(14, 40);
        put32(18, quint32(w));
        put32(22, quint32(h));
        b[26] = 1;
        b[28] = 24;
        return b;
    }
};
