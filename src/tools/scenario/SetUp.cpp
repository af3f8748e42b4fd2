// Setting up the application folder: the directories, files and pictures a
// scenario puts there, and what it takes away.

#include "tools/scenario/Runner.h"

#include "tools/imagegen/ImageFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace scenario {
namespace {

// Images made by `image` are one plain colour; a mid green stands out in a shot.
constexpr QRgb kImageColour = qRgb(0, 160, 80);

} // namespace

QString Runner::appFile(const QString& relative) const {
    return m_appPath + QLatin1Char('/') + relative;
}

void Runner::setUp(const Statement& s) {
    const QString path = appFile(s.path);
    switch (s.op) {
    case Op::Mkdir:
        if (!QDir().mkpath(path))
            fail(s, QStringLiteral("cannot make the directory %1").arg(s.path));
        return;
    case Op::Write: {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(s.value.bytes) != s.value.bytes.size())
            fail(s, QStringLiteral("cannot write %1: %2").arg(s.path, file.errorString()));
        return;
    }
    case Op::Image: {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QString why;
        if (!writeImageFile(path, s.width, s.height, kImageColour, &why)) {
            fail(s, QStringLiteral("cannot make the image %1: %2").arg(s.path, why));
            return;
        }
        // Scenarios rely on these files being pictures the program can open.
        const QImage back(path);
        if (back.size() != QSize(s.width, s.height))
            fail(s, QStringLiteral("expected %1 to read back as a %2 x %3 image, found %4 x %5")
                        .arg(s.path)
                        .arg(s.width)
                        .arg(s.height)
                        .arg(back.width())
                        .arg(back.height()));
        return;
    }
    case Op::Files:
    case Op::Images: {
        // The first run of # takes the number, zero-padded to the run's length.
        const qsizetype at = s.path.indexOf(QLatin1Char('#'));
        qsizetype width = 0;
        while (at + width < s.path.size() && s.path[at + width] == QLatin1Char('#'))
            ++width;
        for (int n = s.first; n <= s.last; ++n) {
            Statement one = s;
            one.op = s.op == Op::Files ? Op::Write : Op::Image;
            one.path = QString(s.path).replace(
                at, width, QStringLiteral("%1").arg(n, int(width), 10, QLatin1Char('0')));
            setUp(one);
            if (m_failed)
                return;
        }
        return;
    }
    case Op::Remove: {
        const QFileInfo info(path);
        if (!info.exists() && !info.isSymLink()) {
            fail(s, QStringLiteral("cannot remove %1: it does not exist").arg(s.path));
            return;
        }
        const bool ok =
            info.isDir() && !info.isSymLink() ? QDir().rmdir(path) : QFile::remove(path);
        if (!ok)
            fail(s, QStringLiteral("cannot remove %1").arg(s.path));
        return;
    }
    case Op::Chmod:
        if (::chmod(QFile::encodeName(path).constData(), static_cast<mode_t>(s.mode)) != 0)
            fail(s, QStringLiteral("cannot chmod %1: %2")
                        .arg(s.path, QString::fromLocal8Bit(std::strerror(errno))));
        return;
    default:
        return;
    }
}

} // namespace scenario
