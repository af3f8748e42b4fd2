#pragma once
// Pictures shown small: decoded at the size they are shown, kept for a while.

#include <QCache>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <memory>

namespace images {

// Decodes `path` to fit inside `box` (device pixels), keeping the aspect, never larger than the
// picture itself, with scaled decoding: a JPEG is decoded at a reduced size, not whole and then
// shrunk. Null image and *error set ("missing", "not an image", "too large", ...) when it cannot.
QImage decodeScaled(const QString& path, QSize box, QString* error);

// Decoded pictures kept in memory, bounded in bytes (default 48 MB), decoded in the background on
// a thread pool of its own (at most 2 threads), delivered on the GUI thread.
class PreviewCache : public QObject {
    Q_OBJECT
public:
    PreviewCache();
    ~PreviewCache() override;

    static PreviewCache& instance();
    // The picture from the cache when it is there (keyed by path, file size, modification time and
    // box); otherwise a null image, and a decode is queued (once per key); ready() follows.
    // Requests for the same path with a newer box supersede queued older ones, and the newest
    // request is decoded first (the user moved on). A key whose decode failed is not queued again.
    QImage request(const QString& path, QSize box);
    // The error of the last decode of that key, "" when none or not decoded yet.
    QString error(const QString& path, QSize box) const;
    qint64 costBytes() const;
    void setBudget(qint64 bytes);
    void clear();
    // Waits for queued decodes and delivers them (tests, benches).
    void waitIdle();

signals:
    void ready(const QString& path, QSize box);

private:
    // A queued decode: Queued until a thread takes it, unless superseded first.
    enum JobState : int { Queued, Running, Dropped };
    struct Pending {
        QString path;
        std::shared_ptr<std::atomic<int>> state;
    };

    void finished(const QString& key, const QString& path, QSize box, const QImage& image,
                  const QString& error, const std::shared_ptr<std::atomic<int>>& state);
    void dropSuperseded(const QString& path);

    QThreadPool pool_;
    int sequence_ = 0; // the newest request decodes first: the user looks at it now
    QCache<QString, QImage> images_;
    QHash<QString, QString> errors_;
    QHash<QString, Pending> pending_;
};

} // namespace images
