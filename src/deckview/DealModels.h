#pragma once
// What the deal window shows in its two grids: the hands, a row for each
// with the cards' pictures and names, and the odds, a row for each card,
// value and group, sortable by any column through a proxy.

#include "deal/Deal.h"
#include "deal/Odds.h"

#include <QAbstractTableModel>
#include <QSize>

namespace deckview {

class HandsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit HandsModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // A new deal of `pile`, whose pictures lie in `folder`.
    void reset(deal::Pile pile, deal::Deal dealt, const QString& folder);
    // Moves on the deal as it stands, then shows it anew.
    bool draw(int hand);
    bool discard(int hand, int position);

    const deal::Pile& pile() const { return m_pile; }
    const deal::Deal& dealt() const { return m_deal; }
    QString imagePath(const QString& name) const;
    // Pictures decoded at `size` device pixels, shown at that over `ratio`.
    void setThumbSize(QSize size, qreal ratio);
    QSize thumbSize() const { return m_thumb; }

private:
    void shown();
    QString cardName(int hand, int position) const;
    deal::Pile m_pile;
    deal::Deal m_deal;
    QString m_folder;
    QSize m_thumb{40, 60};
    qreal m_ratio = 1;
    int m_columns = 0;
};

class OddsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;
    // The raw number of a cell, by which the proxy sorts.
    static constexpr int SortRole = Qt::UserRole;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // The table of `pile` for a hand and k, with the groups chosen so far.
    void compute(const deal::Pile& pile, const QStringList& columns, qint64 hand, qint64 atLeast);
    // The cards of these rows (of this model) as one more group row.
    void addGroup(const std::vector<int>& rows);
    void clearGroups() { m_groups.clear(); }
    const deal::OddsTable& table() const { return m_table; }

private:
    deal::Pile m_pile;
    deal::OddsTable m_table;
    std::vector<std::vector<int>> m_groups; // pile rows of each group
};

} // namespace deckview
