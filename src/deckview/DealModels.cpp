#include "deckview/DealModels.h"

#include "images/Preview.h"

#include <QPixmap>

#include <algorithm>

namespace deckview {

HandsModel::HandsModel(QObject* parent) : QAbstractTableModel(parent) {
    connect(&images::PreviewCache::instance(), &images::PreviewCache::ready, this,
            [this](const QString&, QSize box) {
                if (box == m_thumb && rowCount() > 0 && m_columns > 0)
                    emit dataChanged(index(0, 0), index(rowCount() - 1, m_columns - 1),
                                     {Qt::DecorationRole, Qt::ToolTipRole});
            });
}

int HandsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_deal.hands().size());
}

int HandsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_columns;
}

QString HandsModel::imagePath(const QString& name) const {
    return m_folder + QLatin1Char('/') + name;
}

QString HandsModel::cardName(int hand, int position) const {
    const auto& hands = m_deal.hands();
    if (hand < 0 || hand >= static_cast<int>(hands.size()))
        return {};
    const auto& cards = hands[static_cast<std::size_t>(hand)];
    if (position < 0 || position >= static_cast<int>(cards.size()))
        return {};
    return m_pile.rows[static_cast<std::size_t>(cards[static_cast<std::size_t>(position)])].name;
}

QVariant HandsModel::data(const QModelIndex& index, int role) const {
    const QString name = cardName(index.row(), index.column());
    if (name.isEmpty())
        return {};
    auto& cache = images::PreviewCache::instance();
    switch (role) {
    case Qt::DisplayRole:
        return name;
    case Qt::DecorationRole: {
        const QImage image = cache.request(imagePath(name), m_thumb);
        if (image.isNull())
            return {};
        QPixmap picture = QPixmap::fromImage(image);
        picture.setDevicePixelRatio(m_ratio);
        return picture;
    }
    case Qt::ToolTipRole: {
        const QString error = cache.error(imagePath(name), m_thumb);
        return error.isEmpty() ? name : name + QStringLiteral(": ") + error;
    }
    default:
        return {};
    }
}

QVariant HandsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return section + 1;
    if (section < 0 || section >= rowCount())
        return {};
    return QStringLiteral("Hand %1 (%2)")
        .arg(section + 1)
        .arg(m_deal.hands()[static_cast<std::size_t>(section)].size());
}

void HandsModel::reset(deal::Pile pile, deal::Deal dealt, const QString& folder) {
    beginResetModel();
    m_pile = std::move(pile);
    m_deal = std::move(dealt);
    m_folder = folder;
    m_columns = 0;
    for (const auto& hand : m_deal.hands())
        m_columns = std::max(m_columns, static_cast<int>(hand.size()));
    endResetModel();
}

void HandsModel::shown() {
    int columns = 0;
    for (const auto& hand : m_deal.hands())
        columns = std::max(columns, static_cast<int>(hand.size()));
    // A hand that grows past the others makes a column; the grid is small.
    beginResetModel();
    m_columns = columns;
    endResetModel();
}

bool HandsModel::draw(int hand) {
    const bool drawn = m_deal.draw(hand);
    if (drawn)
        shown();
    return drawn;
}

bool HandsModel::discard(int hand, int position) {
    const bool gone = m_deal.discard(hand, position);
    if (gone)
        shown();
    return gone;
}

void HandsModel::setThumbSize(QSize size, qreal ratio) {
    if (size == m_thumb && ratio == m_ratio)
        return;
    beginResetModel();
    m_thumb = size;
    m_ratio = ratio;
    endResetModel();
}

// ---- odds -------------------------------------------------------------------

int OddsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table.rows.size());
}

int OddsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 5;
}

QVariant OddsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const deal::OddsRow& row = m_table.rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return deal::oddsCells(row).value(index.column());
    if (role == Qt::TextAlignmentRole && index.column() > 0)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role != SortRole)
        return {};
    switch (index.column()) {
    case 0:
        return row.what;
    case 1:
        return static_cast<double>(row.copies);
    case 2:
        return static_cast<double>(row.chance.atLeast);
    case 3:
        return static_cast<double>(row.chance.exactly);
    default:
        return static_cast<double>(row.chance.expected);
    }
}

QVariant OddsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return deal::oddsHeader(m_table).value(section);
}

void OddsModel::compute(const deal::Pile& pile, const QStringList& columns, qint64 hand,
                        qint64 atLeast) {
    beginResetModel();
    m_pile = pile;
    m_table = deal::oddsTable(pile, columns, hand, atLeast);
    for (const std::vector<int>& group : m_groups)
        m_table.rows.push_back(deal::groupRow(m_pile, group, m_table));
    endResetModel();
}

void OddsModel::addGroup(const std::vector<int>& rows) {
    std::vector<int> pileRows;
    for (int r : rows)
        if (r >= 0 && r < rowCount())
            for (int p : m_table.rows[static_cast<std::size_t>(r)].pileRows)
                pileRows.push_back(p);
    if (pileRows.empty())
        return;
    deal::OddsRow group = deal::groupRow(m_pile, pileRows, m_table);
    m_groups.push_back(group.pileRows);
    const int at = rowCount();
    beginInsertRows({}, at, at);
    m_table.rows.push_back(std::move(group));
    endInsertRows();
}

} // namespace deckview
