#pragma once
// The deck on the page as a table: a picture, the image's name, the copies and
// one column for each property name. It holds no copy of the deck: every cell
// is read from the page's rows when it is shown, so the table cannot drift
// from what a save would write.

#include <QAbstractTableModel>
#include <QPointer>
#include <QSize>
#include <QStringList>

#include <vector>

class QAbstractItemModel;

namespace deckview {

class DeckSheetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { PictureCol = 0, ImageCol = 1, CopiesCol = 2, FirstPropertyCol = 3 };

    DeckSheetModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    const QStringList& columns() const { return m_columns; }
    // The property name of a column, "" for the first three.
    QString columnName(int col) const;
    // The page's list of rows, watched for rows coming and going.
    void follow(QAbstractItemModel* rows);
    // Everything shown may have changed: the columns are read anew and the
    // cells repainted.
    void refresh();
    // The size pictures are shown at, and the screen's pixels to one of
    // those: pictures are decoded at the screen's own resolution.
    void setThumbSize(QSize size, double scale);
    QSize thumbSize() const { return m_thumb; }
    // Pictures still being decoded; 0 once every row shows its own.
    int picturesPending() const;

private:
    QString imagePath(int row) const;
    // Rows came or went on the page; the table takes them once the event
    // that moved them is over.
    void rowsMoved();
    void takeRows();
    void takePaths() const;
    void prefetch();
    void pictureReady(const QString& path);

    QStringList m_columns;
    mutable std::vector<QString> m_paths; // each row's image file
    mutable bool m_pathsStale = true;
    QPointer<QAbstractItemModel> m_rows;
    QSize decodeBox() const { return m_thumb * m_scale; }
    QSize m_thumb{32, 48};
    double m_scale = 1.0;
    int m_shownRows = 0;
    bool m_dirty = false;
};

} // namespace deckview
