#include "images/Preview.h"


#include "images/ImageCheck.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <limits>

#include <sys/stat.h>

namespace images {

namespace {

constexpr qint64 kDefaultBudget = qint64(48) * 1024 * 1024;
// Errors are a few words each; past this many the oldest matter to nobody.
constexpr qsizetype kMaxErrors = 4096;

QString keyOf(const QString& path, QSize box) {
    const QFileInfo info(path);
    return QStringLiteral("%1|%2|%3|%4x%5")
        .arg(path)
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(box.width())
        .arg(box.height());
}

} // namespace

QImage decodeScaled(const QString& path, QSize box, QString* error) {
    const auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return QImage();
    };
    if (error)
        error->clear();
    if (box.isEmpty())
        return fail(QStringLiteral("no room to show it"));
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return fail(QStringLiteral("missing"));
    if (!S_ISREG(st.st_mode))
        return fail(QStringLiteral("not a file"));
    QImageReader reader(path);
    const QByteArray format = contentFormat(reader);
    if (format.isEmpty())
        return fail(QStringLiteral("not an image"));
    QFile file(path);
    const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(64) : QByteArray();
    const QSize size = headerSize(reader, format, head);
    if (size.width() > kMaxSide || size.height() > kMaxSide)
        return fail(sizeRefusal(size));
    QSize target;
    if (size.isValid()) {
        target = size.scaled(box, Qt::KeepAspectRatio).boundedTo(size);
        target = target.expandedTo(QSize(1, 1));
        if (target != size)
            reader.setScaledSize(target); // lets the JPEG decoder skip detail it would throw away
    }
    QImage image = reader.read();
    if (image.isNull()) {
        // Qt's allocation limit counts what the decoder allocates, which the
        // scaled size makes smaller for JPEG; other kinds need the whole picture.
        const QString tooLarge = sizeRefusal(size);
        return fail(!tooLarge.isEmpty()
                        ? tooLarge
                        : QStringLiteral("damaged or unreadable (%1)").arg(reader.errorString()));
    }
    // A header may promise another size than the frames hold, and a reader
    // may not scale at all: what comes back is made to fit whatever it is.
    if (image.width() > box.width() || image.height() > box.height())
        image = image.scaled(image.size().scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)),
                             Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (image.isNull())
        return fail(QStringLiteral("damaged or unreadable"));
    return image;
}

PreviewCache::PreviewCache() {
    pool_.setMaxThreadCount(2);
    images_.setMaxCost(kDefaultBudget);
}

PreviewCache::~PreviewCache() {
    for (const Pending& p : std::as_const(pending_))
        p.state->store(Dropped);
    pool_.waitForDone();
}

PreviewCache& PreviewCache::instance() {
    static PreviewCache cache;
    return cache;
}

QImage PreviewCache::request(const QString& path, QSize box) {
    const QString key = keyOf(path, box);
    if (const QImage* image = images_.object(key))
        return *image;
    if (errors_.contains(key) || pending_.contains(key))
        return {};
    dropSuperseded(path);
    auto state = std::make_shared<std::atomic<int>>(Queued);
    pending_.insert(key, Pending{path, state});
    sequence_ = sequence_ == std::numeric_limits<int>::max() ? 0 : sequence_ + 1;
    pool_.start(
        [this, key, path, box, state] {
        int expected = Queued;
        if (!state->compare_exchange_strong(expected, Running))
            return; // superseded while it waited
        QString why;
        const QImage image = decodeScaled(path, box, &why);
        QMetaObject::invokeMethod(
            this, [=, this] { finished(key, path, box, image, why, state); }, Qt::QueuedConnection);
        },
        sequence_);
    return {};
}

// A newer box for a path means the older ones are no longer wanted; only
// those that no thread has taken yet can still be dropped.
void PreviewCache::dropSuperseded(const QString& path) {
    for (auto it = pending_.begin(); it != pending_.end();) {
        int expected = Queued;
        if (it->path == path && it->state->compare_exchange_strong(expected, Dropped))
            it = pending_.erase(it);
        else
            ++it;
    }
}

void PreviewCache::finished(const QString& key, const QString& path, QSize box, const QImage& image,
                            const QString& error, const std::shared_ptr<std::atomic<int>>& state) {
    const auto it = pending_.constFind(key);
    if (it == pending_.cend() || it->state != state)
        return; // cleared meanwhile
    pending_.erase(it);
    if (!error.isEmpty()) {
        if (errors_.size() >= kMaxErrors)
            errors_.clear();
        errors_.insert(key, error);
    } else {
        images_.insert(key, new QImage(image), image.sizeInBytes());
    }
    emit ready(path, box);
}

QString PreviewCache::error(const QString& path, QSize box) const {
    return errors_.value(keyOf(path, box));
}

qint64 PreviewCache::costBytes() const {
    return images_.totalCost();
}

void PreviewCache::setBudget(qint64 bytes) {
    images_.setMaxCost(bytes);
}

void PreviewCache::clear() {
    for (const Pending& p : std::as_const(pending_)) {
        int expected = Queued;
        p.state->compare_exchange_strong(expected, Dropped);
    }
    pending_.clear();
    images_.clear();
    errors_.clear();
}

void PreviewCache::waitIdle() {
    pool_.waitForDone();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

} // namespace images
