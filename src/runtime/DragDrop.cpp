#include "runtime/DragDrop.h"

#include "runtime/Control.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QUrl>
#include <algorithm>

namespace rt {
namespace {

const QString kRowsType = QStringLiteral("application/x-zavik-rows");

// Scroll areas take their drops and presses on the viewport.
QWidget* surfaceOf(QWidget* widget) {
    if (auto* area = qobject_cast<QAbstractScrollArea*>(widget))
        return area->viewport();
    return widget;
}

// A frame in the highlight colour around a control that would take what is
// dragged over it.
class DropMark : public QWidget {
public:
    explicit DropMark(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        hide();
    }
    void showOver(QWidget* target) {
        setGeometry(target->rect());
        raise();
        show();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setPen(QPen(palette().color(QPalette::Highlight), 2));
        p.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

class DropFilter : public QObject {
public:
    DropFilter(Control* control, QWidget* surface, QObject* owner)
        : QObject(owner), m_control(control), m_surface(surface) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove: {
            auto* drag = static_cast<QDragMoveEvent*>(event);
            if (!takes(drag->mimeData()))
                return refuse(drag);
            drag->setDropAction(Qt::CopyAction);
            drag->accept();
            mark(true);
            return true;
        }
        case QEvent::DragLeave:
            mark(false);
            return false;
        case QEvent::Drop: {
            auto* drop = static_cast<QDropEvent*>(event);
            mark(false);
            if (!takes(drop->mimeData()))
                return refuse(drop);
            drop->setDropAction(Qt::CopyAction);
            drop->accept();
            deliver(drop->mimeData());
            return true;
        }
        default:
            return false;
        }
    }

private:
    bool takes(const QMimeData* mime) const {
        if (!mime)
            return false;
        std::vector<int> rows;
        if (m_control->RowsDropped && rowsFromMimeData(mime, rows))
            return true;
        return m_control->FilesDropped && !mime->hasFormat(kRowsType) &&
               !localFiles(mime).isEmpty();
    }
    // Our rows and files go nowhere else; any other drag is the widget's own
    // business (a text box takes dropped text).
    bool refuse(QDropEvent* event) {
        mark(false);
        if (event->mimeData() &&
            (event->mimeData()->hasFormat(kRowsType) || event->mimeData()->hasUrls())) {
            event->ignore();
            return true;
        }
        return false;
    }
    void mark(bool on) {
        if (!m_mark && on)
            m_mark = new DropMark(m_surface);
        if (m_mark && on)
            m_mark->showOver(m_surface);
        else if (m_mark)
            m_mark->hide();
    }
    // The handler runs once the drop is over: the source's drag loop and the
    // file manager are not kept waiting by a message box it may show.
    void deliver(const QMimeData* mime) {
        std::vector<int> rows;
        Control* from = rowsFromMimeData(mime, rows);
        QPointer<QWidget> source = from ? from->widget() : nullptr;
        const QStringList files = from ? QStringList() : localFiles(mime);
        Control* target = m_control;
        QMetaObject::invokeMethod(
            this,
            [target, source, rows, files] {
                if (target->form()->isUnloaded() || !moveFocus(target))
                    return;
                if (files.isEmpty()) {
                    if (Control* still = source ? controlOf(source) : nullptr)
                        target->userDropRows(still, rows);
                } else {
                    target->userDropFiles(files);
                }
            },
            Qt::QueuedConnection);
    }
    Control* m_control;
    QWidget* m_surface;
    DropMark* m_mark = nullptr;
};

// Starts a drag of rows once the pointer has moved far enough with the button
// held, judged on the selection as it stood before the press changed it.
class DragFilter : public QObject {
public:
    DragFilter(Control* control, QAbstractItemView* view, QObject* owner)
        : QObject(owner), m_control(control), m_view(view) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (!m_control->dragRows())
            return false;
        if (event->type() == QEvent::MouseButtonPress) {
            const auto* press = static_cast<QMouseEvent*>(event);
            m_pressRow = press->button() == Qt::LeftButton
                             ? m_view->indexAt(press->position().toPoint()).row()
                             : -1;
            m_pressAt = press->position().toPoint();
            m_selected = selectedRows();
        } else if (event->type() == QEvent::MouseButtonRelease) {
            m_pressRow = -1;
        } else if (event->type() == QEvent::MouseMove && m_pressRow >= 0) {
            const auto* move = static_cast<QMouseEvent*>(event);
            if (!(move->buttons() & Qt::LeftButton) ||
                (move->position().toPoint() - m_pressAt).manhattanLength() <
                    QApplication::startDragDistance())
                return false;
            std::vector<int> rows{m_pressRow};
            if (std::binary_search(m_selected.begin(), m_selected.end(), m_pressRow))
                rows = m_selected;
            m_pressRow = -1;
            auto* drag = new QDrag(m_view);
            drag->setMimeData(rowsMimeData(*m_control, rows));
            drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
            return true;
        }
        return false;
    }

private:
    std::vector<int> selectedRows() const {
        std::vector<int> rows;
        if (m_view->selectionModel())
            for (const QModelIndex& index : m_view->selectionModel()->selectedIndexes())
                rows.push_back(index.row());
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
        return rows;
    }
    Control* m_control;
    QAbstractItemView* m_view;
    int m_pressRow = -1;
    QPoint m_pressAt;
    std::vector<int> m_selected;
};

} // namespace

void installDragAndDrop(Control* control, QObject* owner) {
    QWidget* surface = surfaceOf(control->widget());
    // A widget that takes drops of its own (a text box) keeps them; the
    // filter only adds the program's own rows and files.
    surface->setAcceptDrops(true);
    surface->installEventFilter(new DropFilter(control, surface, owner));
    if (auto* view = qobject_cast<QAbstractItemView*>(control->widget()))
        surface->installEventFilter(new DragFilter(control, view, owner));
}

QMimeData* rowsMimeData(const Control& from, const std::vector<int>& rows) {
    QStringList numbers;
    for (int r : rows)
        numbers << QString::number(r);
    // The process and the control's address keep a drag from another copy of
    // the program, or from a control since unloaded, from passing for ours.
    const QStringList parts{QString::number(QCoreApplication::applicationPid()),
                            QString::number(reinterpret_cast<quintptr>(&from)),
                            from.form()->formName(),
                            from.baseName(),
                            QString::number(from.index()),
                            numbers.join(QLatin1Char(','))};
    auto* mime = new QMimeData;
    mime->setData(kRowsType, parts.join(QLatin1Char('\n')).toUtf8());
    return mime;
}

Control* rowsFromMimeData(const QMimeData* mime, std::vector<int>& rows) {
    rows.clear();
    if (!mime || !mime->hasFormat(kRowsType))
        return nullptr;
    const QStringList parts = QString::fromUtf8(mime->data(kRowsType)).split(QLatin1Char('\n'));
    if (parts.size() != 6 || parts[0] != QString::number(QCoreApplication::applicationPid()))
        return nullptr;
    Control* from = nullptr;
    for (Control* c : controlsByWidget())
        if (QString::number(reinterpret_cast<quintptr>(c)) == parts[1])
            from = c;
    if (!from || from->form()->formName() != parts[2] || from->baseName() != parts[3] ||
        QString::number(from->index()) != parts[4] || from->form()->isUnloaded())
        return nullptr;
    bool ok = false;
    for (const QString& n : parts[5].split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const int row = n.toInt(&ok);
        if (!ok || row < 0)
            return nullptr;
        rows.push_back(row);
    }
    return rows.empty() ? nullptr : from;
}

QStringList localFiles(const QMimeData* mime) {
    QStringList paths;
    if (mime)
        for (const QUrl& url : mime->urls())
            if (url.isLocalFile())
                paths << url.toLocalFile();
    return paths;
}

void Control::setDragRows(bool on) {
    m_dragRows = on;
}

void Control::userDropFiles(const QStringList& paths) {
    if (!FilesDropped)
        return;
    FilesDropped(paths);
    actionEnded();
}

void Control::userDropRows(Control* from, const std::vector<int>& rows) {
    if (!RowsDropped)
        return;
    RowsDropped(from, rows);
    actionEnded();
}

} // namespace rt
