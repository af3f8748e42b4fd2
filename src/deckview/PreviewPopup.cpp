// The picture beside a list: the image under the pointer, or of the current
// row while the list has the focus. Pictures are decoded at the size shown, in
// the background; the popup says so while one comes and when one cannot.

#include "deckview/DeckView.h"
#include "images/Preview.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace deckview {

namespace {

// Large enough to read a card: about a playing card's shape at screen size.
constexpr QSize PictureBox{240, 336};

class PreviewPopup : public QWidget {
public:
    // Input passes through to what lies under it: a drag carried over the
    // popup lands on the list below.
    PreviewPopup()
        : QWidget(nullptr,
                  Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput) {
        setObjectName(QStringLiteral("cardPreview"));
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(6, 6, 6, 6);
        m_picture = new QLabel;
        m_picture->setObjectName(QStringLiteral("previewPicture"));
        m_picture->setAlignment(Qt::AlignCenter);
        m_picture->setFixedSize(PictureBox);
        m_picture->setWordWrap(true);
        m_name = new QLabel;
        m_name->setObjectName(QStringLiteral("previewName"));
        m_name->setAlignment(Qt::AlignCenter);
        layout->addWidget(m_picture);
        layout->addWidget(m_name);
        setStyleSheet(QStringLiteral("QWidget#cardPreview { background: palette(base); "
                                     "border: 1px solid palette(mid); }"));
        QObject::connect(&images::PreviewCache::instance(), &images::PreviewCache::ready, this,
                         [this](const QString& path, QSize) {
                             if (path == m_path && isVisible()) {
                                 fill();
                                 adjustSize();
                             }
                         });
    }

    void showFor(QAbstractItemView* view, const QString& path, int rowTop, int namesRight) {
        m_view = view;
        m_path = path;
        fill();
        adjustSize();
        place(view, rowTop, namesRight);
        show();
        raise();
    }

    void hideFor(const QAbstractItemView* view) {
        if (m_view == view)
            hide();
    }

    const QString& path() const { return m_path; }

private:
    QSize box() const {
        return PictureBox * devicePixelRatioF();
    }

    void fill() {
        const QString name = QFileInfo(m_path).fileName();
        m_name->setText(name);
        if (!QFileInfo::exists(m_path)) {
            m_picture->setFixedSize(PictureBox / 2);
            m_picture->setPixmap({});
            m_picture->setText(QStringLiteral("%1 is not in the folder").arg(name));
            return;
        }
        auto& cache = images::PreviewCache::instance();
        const QImage image = cache.request(m_path, box());
        if (!image.isNull()) {
            // A small card is drawn larger, up to three times, so that it reads.
            QSize size = image.size().scaled(box(), Qt::KeepAspectRatio);
            if (size.width() > 3 * image.width())
                size = image.size() * 3;
            QPixmap pixmap = QPixmap::fromImage(
                size == image.size() ? image
                                     : image.scaled(size, Qt::IgnoreAspectRatio,
                                                    Qt::SmoothTransformation));
            pixmap.setDevicePixelRatio(devicePixelRatioF());
            m_picture->setPixmap(pixmap);
            m_picture->setFixedSize(pixmap.deviceIndependentSize().toSize().expandedTo(QSize(120, 60)));
            return;
        }
        m_picture->setFixedSize(PictureBox / 2);
        const QString error = cache.error(m_path, box());
        m_picture->setPixmap({});
        m_picture->setText(error.isEmpty() ? QStringLiteral("...")
                                           : QStringLiteral("Cannot show %1: %2").arg(name, error));
    }

    // Beside the list, never over it: right of it where the screen has room,
    // else left of it; a list too wide for either (the sheet), beside its
    // window; failing that, right of the names; level with the row.
    void place(const QAbstractItemView* view, int rowTop, int namesRight) {
        const QRect list(view->mapToGlobal(QPoint(0, 0)), view->size());
        const QScreen* screen = view->screen();
        const QRect room = screen ? screen->availableGeometry() : QRect(0, 0, 4096, 4096);
        int x = room.left() - 1;
        for (const QRect& beside : {list, view->window()->frameGeometry()}) {
            if (beside.right() + 8 + width() <= room.right()) {
                x = beside.right() + 8;
                break;
            }
            if (beside.left() - 8 - width() >= room.left()) {
                x = beside.left() - 8 - width();
                break;
            }
        }
        if (x < room.left())
            x = std::min(list.left() + namesRight + 8, room.right() - width());
        int y = list.top() + rowTop - height() / 3;
        y = std::clamp(y, room.top(), std::max(room.top(), room.bottom() - height()));
        move(std::max(x, room.left()), y);
    }

    QLabel* m_picture;
    QLabel* m_name;
    QString m_path;
    QPointer<QAbstractItemView> m_view;
};

PreviewPopup& popup() {
    static QPointer<PreviewPopup> one;
    if (!one)
        one = new PreviewPopup;
    return *one;
}

class PreviewWatch : public QObject {
public:
    PreviewWatch(QAbstractItemView* view, std::function<QString(int)> pathOf, int columns)
        : QObject(view), m_view(view), m_pathOf(std::move(pathOf)), m_columns(columns) {
        view->setMouseTracking(true);
        view->viewport()->installEventFilter(this);
        view->installEventFilter(this);
        watchCurrent();
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseMove:
            if (object == m_view->viewport())
                showRow(m_view->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()));
            break;
        case QEvent::Leave:
            // Whatever the pointer goes to next (a drag on its way to the card
            // list among others) wants the room beside the list.
            if (object == m_view->viewport())
                popup().hideFor(m_view);
            break;
        // A press starts a click or a drag, which wants the room beside the list.
        case QEvent::MouseButtonPress:
        case QEvent::FocusOut:
        case QEvent::Hide:
            popup().hideFor(m_view);
            break;
        default:
            break;
        }
        return false;
    }

private:
    // The view's selection model is replaced with its model, so the watch
    // follows whichever one is current.
    void watchCurrent() {
        if (m_view->selectionModel())
            connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
                    [this](const QModelIndex& current) {
                        if (m_view->hasFocus())
                            showRow(current);
                    });
    }

    void showRow(const QModelIndex& index) {
        if (!index.isValid() || (m_columns >= 0 && index.column() >= m_columns)) {
            popup().hideFor(m_view);
            return;
        }
        const QString path = m_pathOf(index.row());
        if (path.isEmpty() || QFileInfo(path).fileName().isEmpty()) {
            popup().hideFor(m_view);
            return;
        }
        const QModelIndex names = index.siblingAtColumn(std::max(0, m_columns - 1));
        popup().showFor(m_view, path, m_view->visualRect(index).top(),
                        m_view->visualRect(names).right());
    }

    QAbstractItemView* m_view;
    std::function<QString(int)> m_pathOf;
    int m_columns; // the columns that name the image, -1 for every one
};

} // namespace

void attachPreview(QAbstractItemView* view, std::function<QString(int row)> pathOf,
                   int columns) {
    if (view)
        new PreviewWatch(view, std::move(pathOf), columns);
}

} // namespace deckview
