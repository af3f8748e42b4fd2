#include "deckview/DeckSheetModel.h"

#include "deckview/PageDeck.h"
#include "game/CardEntry.h"
#include "images/Preview.h"
#include "sheet/PropertyText.h"

#include <QPainter>
#include <QPixmap>

namespace deckview {

DeckSheetModel::DeckSheetModel(QObject* parent) : QAbstractTableModel(parent) {
    connect(&images::PreviewCache::instance(), &images::PreviewCache::ready, this,
            [this](const QString& path, QSize box) {
                if (box == decodeBox())
                    pictureReady(path);
            });
}

int DeckSheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shownRows;
}

int DeckSheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : FirstPropertyCol + static_cast<int>(m_columns.size());
}

QString DeckSheetModel::columnName(int col) const {
    return col >= FirstPropertyCol && col - FirstPropertyCol < m_columns.size()
               ? m_columns.at(col - FirstPropertyCol)
               : QString();
}

QString DeckSheetModel::imagePath(int row) const {
    if (m_pathsStale)
        takePaths();
    return row >= 0 && row < static_cast<int>(m_paths.size()) ? m_paths[static_cast<size_t>(row)]
                                                              : QString();
}

// The rows' image files, read once an action rather than at each picture.
void DeckSheetModel::takePaths() const {
    m_pathsStale = false;
    const QString dir = imageDir() + QLatin1Char('/');
    m_paths.clear();
    m_paths.reserve(static_cast<size_t>(m_shownRows));
    for (int row = 0; row < m_shownRows; ++row)
        m_paths.push_back(dir + readCardEntry(rowEntry(row)).name);
}

// Every row's picture is asked for at once, the last row first: the newest
// request decodes first, so the rows at the top of the sheet come first.
void DeckSheetModel::prefetch() {
    if (m_pathsStale)
        takePaths();
    auto& cache = images::PreviewCache::instance();
    for (auto it = m_paths.rbegin(); it != m_paths.rend(); ++it)
        cache.request(*it, decodeBox());
}

QVariant DeckSheetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || m_dirty || index.row() >= deckview::rowCount())
        return {};
    const int row = index.row();
    const int col = index.column();
    if (col == PictureCol) {
        if (role == Qt::DecorationRole) {
            const QImage image =
                images::PreviewCache::instance().request(imagePath(row), decodeBox());
            if (!image.isNull()) {
                QPixmap pixmap = QPixmap::fromImage(image);
                pixmap.setDevicePixelRatio(m_scale);
                return pixmap;
            }
        }
        if (role == Qt::ToolTipRole) {
            const QString error = images::PreviewCache::instance().error(imagePath(row), decodeBox());
            return error.isEmpty() ? QVariant() : QVariant(error);
        }
        if (role == Qt::SizeHintRole)
            return m_thumb + QSize(6, 4);
        return {};
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return {};
    const QString entry = rowEntry(row);
    if (col == ImageCol)
        return readCardEntry(entry).name;
    if (col == CopiesCol)
        return QString::number(readCardEntry(entry).count);
    return sheet::valueOf(rowProps(row), columnName(col));
}

QVariant DeckSheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    switch (section) {
    case PictureCol:
        return QStringLiteral("Picture");
    case ImageCol:
        return QStringLiteral("Image");
    case CopiesCol:
        return QStringLiteral("Copies");
    default:
        return columnName(section);
    }
}

Qt::ItemFlags DeckSheetModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() >= CopiesCol && deckOnPage())
        f |= Qt::ItemIsEditable;
    return f;
}

void DeckSheetModel::follow(QAbstractItemModel* rows) {
    if (m_rows)
        disconnect(m_rows, nullptr, this, nullptr);
    m_rows = rows;
    if (rows) {
        // A load adds its rows one by one: the table takes them in one reset
        // when the user's action is over, not one by one.
        connect(rows, &QAbstractItemModel::rowsInserted, this, [this] { rowsMoved(); });
        connect(rows, &QAbstractItemModel::rowsRemoved, this, [this] { rowsMoved(); });
        connect(rows, &QAbstractItemModel::modelReset, this, [this] { rowsMoved(); });
        connect(rows, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& a, const QModelIndex& b) {
                    if (m_dirty || a.row() >= m_shownRows)
                        return;
                    m_pathsStale = true;
                    emit dataChanged(index(a.row(), 0),
                                     index(std::min(b.row(), m_shownRows - 1), columnCount() - 1));
                });
    }
    m_dirty = true;
    refresh();
}

void DeckSheetModel::rowsMoved() {
    if (m_dirty)
        return;
    m_dirty = true;
    QMetaObject::invokeMethod(this, [this] { takeRows(); }, Qt::QueuedConnection);
}

void DeckSheetModel::takeRows() {
    if (!m_dirty)
        return;
    beginResetModel();
    m_shownRows = deckview::rowCount();
    m_dirty = false;
    takePaths();
    endResetModel();
    prefetch();
}

void DeckSheetModel::refresh() {
    const QStringList columns = deckColumns();
    if (columns != m_columns) {
        beginResetModel();
        m_columns = columns;
        m_shownRows = deckview::rowCount();
        m_dirty = false;
        takePaths();
        endResetModel();
        prefetch();
        return;
    }
    if (!m_dirty)
        m_pathsStale = true; // an entry may have changed in place
    takeRows();
    if (m_shownRows > 0)
        emit dataChanged(index(0, 0), index(m_shownRows - 1, columnCount() - 1));
}

void DeckSheetModel::setThumbSize(QSize size, double scale) {
    if (size == m_thumb && scale == m_scale)
        return;
    m_thumb = size;
    m_scale = scale > 0 ? scale : 1.0;
    prefetch();
    if (m_shownRows > 0)
        emit dataChanged(index(0, PictureCol), index(m_shownRows - 1, PictureCol));
}

int DeckSheetModel::picturesPending() const {
    int pending = 0;
    auto& cache = images::PreviewCache::instance();
    for (int row = 0; row < m_shownRows; ++row) {
        const QString path = imagePath(row);
        if (cache.request(path, decodeBox()).isNull() && cache.error(path, decodeBox()).isEmpty())
            ++pending;
    }
    return pending;
}

void DeckSheetModel::pictureReady(const QString& path) {
    for (int row = 0; row < m_shownRows; ++row)
        if (imagePath(row) == path)
            emit dataChanged(index(row, PictureCol), index(row, PictureCol),
                             {Qt::DecorationRole, Qt::ToolTipRole});
}

} // namespace deckview
