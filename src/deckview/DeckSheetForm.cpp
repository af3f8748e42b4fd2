#include "deckview/DeckSheetForm.h"

#include "deckview/DeckSheetModel.h"
#include "deckview/DeckView.h"
#include "deckview/ImageIntake.h"
#include "deckview/PageDeck.h"
#include "game/CardEntry.h"
#include "history/History.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"
#include "sheet/PropertyText.h"
#include "wizard/MainForm.h"

#include <QAction>
#include <QHeaderView>
#include <QListWidget>
#include <QScreen>
#include <QTableView>

#include <algorithm>

namespace deckview {

namespace {
constexpr int Margin = 120;
constexpr int ButtonWidth = 1500;
constexpr int ButtonHeight = 375;
} // namespace

const rt::FormSpec& DeckSheetForm::formSpec() {
    using rt::Kind;
    static const rt::FormSpec spec{
        "DeckSheetForm",
        "Deck Sheet",
        10200,
        6300,
        rt::Border::Sizable,
        false,
        {
            {"deckLabel", -1, Kind::Label, "", Margin, 90, 9960, 285, "", rt::ArialBold},
            {"cards", -1, Kind::Table, "", Margin, 450, 9960, 5190, ""},
            {"AddBtn", -1, Kind::CommandButton, "Add cards...", Margin, 5790, ButtonWidth,
             ButtonHeight, ""},
            {"RemoveBtn", -1, Kind::CommandButton, "Remove", 1740, 5790, ButtonWidth, ButtonHeight,
             ""},
            {"ImportBtn", -1, Kind::CommandButton, "Import...", 6960, 5790, ButtonWidth,
             ButtonHeight, ""},
            {"ExportBtn", -1, Kind::CommandButton, "Export...", 8580, 5790, ButtonWidth,
             ButtonHeight, ""},
        }};
    return spec;
}

DeckSheetForm::DeckSheetForm() : rt::Form(formSpec()), m_model(new DeckSheetModel(this)) {
    deckLabel = get<rt::Label>(QStringLiteral("deckLabel"));
    cards = get<rt::Table>(QStringLiteral("cards"));
    AddBtn = get<rt::CommandButton>(QStringLiteral("AddBtn"));
    RemoveBtn = get<rt::CommandButton>(QStringLiteral("RemoveBtn"));
    ImportBtn = get<rt::CommandButton>(QStringLiteral("ImportBtn"));
    ExportBtn = get<rt::CommandButton>(QStringLiteral("ExportBtn"));
    cards->CellEdit = [this](int row, int col, const QString& text) {
        cards_CellEdit(row, col, text);
    };
    AddBtn->Click = [this] { AddBtn_Click(); };
    RemoveBtn->Click = [this] { RemoveBtn_Click(); };
    ImportBtn->Click = [] { importCards(); };
    ExportBtn->Click = [] { exportCards(); };
    cards->FilesDropped = [](const QStringList& paths) { addCardsFromFiles(paths); };
    cards->RowsDropped = [](rt::Control* from, const std::vector<int>& rows) {
        addCardsFromRows(from, rows);
    };
    // The wizard's undo reaches the deck from here too: the sheet is where
    // most of a deck's edits are made.
    const auto key = [this](const QList<QKeySequence>& keys, bool (*run)()) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WindowShortcut);
        connect(action, &QAction::triggered, this, [run] { run(); });
        addAction(action);
    };
    key({QKeySequence(Qt::CTRL | Qt::Key_Z)}, &history::undo);
    key({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)},
        &history::redo);
    cards->setModel(m_model);
    if (QTableView* view = cards->view()) {
        view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        view->horizontalHeader()->setStretchLastSection(false);
        attachPreview(view, [](int row) { return cardImagePath(row); }, DeckSheetModel::CopiesCol);
    }
}

void DeckSheetForm::Form_Load() {
    MainForm* main = mainForm();
    if (main)
        if (auto* list = qobject_cast<QListWidget*>(main->commonList->widget()))
            m_model->follow(list->model());
    follow();
    layoutControls();
    if (QTableView* view = cards->view()) {
        m_model->setThumbSize(m_model->thumbSize(), view->devicePixelRatioF());
        view->setColumnWidth(DeckSheetModel::PictureCol, m_model->thumbSize().width() + 12);
        view->setColumnWidth(DeckSheetModel::ImageCol, view->fontMetrics().averageCharWidth() * 18);
        view->setColumnWidth(DeckSheetModel::CopiesCol, view->fontMetrics().averageCharWidth() * 8);
        // The first cell to type in, set before the table takes the focus, so
        // that coming up shows no preview the user did not ask for.
        if (m_model->rowCount() > 0)
            view->selectionModel()->setCurrentIndex(
                m_model->index(0, DeckSheetModel::CopiesCol), QItemSelectionModel::NoUpdate);
    }
}

void DeckSheetForm::placeBeside(const QWidget* main) {
    const QScreen* screen = main->screen();
    if (!screen)
        return;
    const QRect room = screen->availableGeometry();
    const QRect wizard = main->frameGeometry();
    const QSize size = frameGeometry().size();
    QPoint at(wizard.right() + 8, wizard.top());
    if (at.x() + size.width() > room.right())
        at.setX(wizard.left() - size.width() - 8);
    // No room on either side: against the screen's right edge, which leaves
    // the wizard's image list, where drags start, in view.
    if (at.x() < room.left())
        at.setX(std::max(room.left(), room.right() - size.width()));
    at.setY(std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() - size.height())));
    move(at);
}

void DeckSheetForm::follow() {
    m_model->refresh();
    const bool open = deckOnPage();
    if (open) {
        const MainForm* main = mainForm();
        deckLabel->setCaption(deckTitle() + QStringLiteral("  -  ") + main->commLabel->Caption());
    } else {
        deckLabel->setCaption(QStringLiteral("No deck is open: the sheet shows the deck of the "
                                             "Decks Detail page."));
    }
    for (rt::CommandButton* b : {AddBtn, RemoveBtn, ImportBtn, ExportBtn})
        b->widget()->setEnabled(open);
    if (QTableView* view = cards->view()) {
        const int picture = m_model->thumbSize().height() + 6;
        view->verticalHeader()->setDefaultSectionSize(
            std::max(picture, view->fontMetrics().height() + 8));
    }
}

std::vector<int> DeckSheetForm::targetRows(int row) const {
    std::vector<int> rows = cards->selectedRows();
    if (std::find(rows.begin(), rows.end(), row) == rows.end())
        return {row};
    return rows;
}

void DeckSheetForm::cards_CellEdit(int row, int col, const QString& text) {
    if (!deckOnPage() || row < 0 || row >= rowCount())
        return;
    const std::vector<int> rows = targetRows(row);
    const QString what =
        col == DeckSheetModel::CopiesCol ? QStringLiteral("copies") : m_model->columnName(col);
    // Named only once the edit is taken: a refusal changes nothing to undo.
    const QString step =
        rows.size() == 1
            ? QStringLiteral("Edit %1 of %2").arg(what, readCardEntry(rowEntry(rows.front())).name)
            : QStringLiteral("Edit %1 of %2 cards").arg(what).arg(rows.size());
    if (col == DeckSheetModel::CopiesCol) {
        history::nameNextStep(step);
        for (int r : rows) {
            const QString entry = sheet::entryWithCopies(rowEntry(r), text);
            if (entry != rowEntry(r))
                setRowEntry(r, entry);
        }
        recount();
        follow();
        return;
    }
    const QString name = m_model->columnName(col);
    if (name.isEmpty())
        return;
    // Every row is checked before any changes, so a refusal leaves them all.
    std::vector<QString> texts;
    texts.reserve(rows.size());
    const QHash<QString, QString> values{{name, text}};
    for (int r : rows) {
        // A card that shows the value already keeps its text as it is.
        if (sheet::valueOf(rowProps(r), name) == text.trimmed()) {
            texts.push_back(rowProps(r));
            continue;
        }
        const sheet::PropsEdit edit = sheet::setValues(rowProps(r), m_model->columns(), values);
        if (!edit.ok) {
            rt::MsgBox(edit.message, 48);
            follow();
            return;
        }
        texts.push_back(edit.props);
    }
    history::nameNextStep(step);
    for (size_t i = 0; i < rows.size(); ++i)
        setRowProps(rows[i], texts[i]);
    follow();
}

void DeckSheetForm::AddBtn_Click() {
    if (!deckOnPage())
        return;
    addCardsFromFiles(rt::ShowOpenMany(imageFilter()));
}

void DeckSheetForm::RemoveBtn_Click() {
    if (!deckOnPage())
        return;
    std::vector<int> rows = cards->selectedRows();
    if (rows.empty() && cards->currentRow() >= 0)
        rows.push_back(cards->currentRow());
    if (rows.empty())
        return;
    removeRows(std::move(rows));
    recount();
    follow();
}

void DeckSheetForm::resizeEvent(QResizeEvent* event) {
    rt::Form::resizeEvent(event);
    layoutControls();
}

// The table takes what the window gives; the buttons keep to its lower corners.
void DeckSheetForm::layoutControls() {
    if (!cards)
        return;
    const int w = std::max(ScaleWidth(), 6600);
    const int h = std::max(ScaleHeight(), 2400);
    const int buttonsTop = h - ButtonHeight - Margin;
    deckLabel->setWidth(w - 2 * Margin);
    cards->setWidth(w - 2 * Margin);
    cards->setHeight(buttonsTop - 450 - Margin);
    AddBtn->setTop(buttonsTop);
    RemoveBtn->setTop(buttonsTop);
    ImportBtn->setTop(buttonsTop);
    ExportBtn->setTop(buttonsTop);
    ExportBtn->setLeft(w - Margin - ButtonWidth);
    ImportBtn->setLeft(w - 2 * Margin - 2 * ButtonWidth);
}

} // namespace deckview
