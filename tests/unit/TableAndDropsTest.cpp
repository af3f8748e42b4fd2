// The table's keys and selection, drops of files and of rows, and the question
// and file dialog seams, on a small form of their own.

#include "runtime/DragDrop.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"

#include <QApplication>
#include <QHeaderView>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <gtest/gtest.h>
#include <memory>

using namespace rt;

namespace {

const FormSpec kGridSpec = [] {
    FormSpec spec{"GridTestForm", "Grid", 9000, 6000, Border::Sizable, false, {}};
    spec.controls = {{"Grid", -1, Kind::Table, "", 0, 0, 6000, 3000, ""},
                     {"Left", -1, Kind::ListBox, "", 0, 3200, 2000, 2000, "", 0, 0, "l0|l1|l2"},
                     {"Right", -1, Kind::ListBox, "", 3000, 3200, 2000, 2000, "", 0, 0, "r0"}};
    return spec;
}();

struct Edit {
    int row, col;
    QString text;
    bool operator==(const Edit&) const = default;
};

class TableTest : public ::testing::Test {
protected:
    void SetUp() override {
        model.setHorizontalHeaderLabels({"A", "B", "C"});
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c)
                model.setItem(r, c, new QStandardItem(QStringLiteral("%1%2").arg(r).arg(c)));
        model.item(0, 2)->setEditable(false);
        grid = form->get<Table>("Grid");
        grid->setModel(&model);
        grid->CellEdit = [this](int r, int c, const QString& t) { edits.push_back({r, c, t}); };
        form->show();
        QApplication::setActiveWindow(form.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        grid->view()->setFocus();
    }
    void TearDown() override { hooks() = {}; }
    static QWidget* focused() { return QApplication::focusWidget(); }

    QStandardItemModel model;
    std::unique_ptr<Form> form = std::make_unique<Form>(kGridSpec);
    Table* grid = nullptr;
    std::vector<Edit> edits;
};

TEST_F(TableTest, TypingEditsTheCellAndEnterTabAndEscEndTheEditAsASpreadsheetDoes) {
    struct Case {
        const char* what;
        int row, col;
        QString typed;
        Qt::Key end;
        Qt::KeyboardModifiers mods;
        std::vector<Edit> edits;
        int toRow, toCol;
    } cases[] = {
        {"Enter commits, moves down", 0, 0, "xy", Qt::Key_Return, {}, {{0, 0, "xy"}}, 1, 0},
        {"Tab commits, moves right", 0, 1, "z", Qt::Key_Tab, {}, {{0, 1, "z"}}, 0, 2},
        {"Tab wraps to the next row", 1, 2, "w", Qt::Key_Tab, {}, {{1, 2, "w"}}, 2, 0},
        {"Shift+Tab moves left",
         1,
         1,
         "v",
         Qt::Key_Backtab,
         Qt::ShiftModifier,
         {{1, 1, "v"}},
         1,
         0},
        {"Shift+Tab wraps back", 2, 0, "", Qt::Key_Backtab, Qt::ShiftModifier, {}, 1, 2},
        {"Esc drops the edit", 1, 0, "q", Qt::Key_Escape, {}, {}, 1, 0},
        {"Enter alone moves down", 1, 1, "", Qt::Key_Return, {}, {}, 2, 1},
        {"Enter on the last row stays", 2, 1, "", Qt::Key_Return, {}, {}, 2, 1},
        {"Tab at the last cell stays", 2, 2, "", Qt::Key_Tab, {}, {}, 2, 2},
        {"the same text is no edit", 2, 2, "22", Qt::Key_Return, {}, {}, 2, 2},
        {"a read-only cell takes no typing", 0, 2, "k", Qt::Key_Return, {}, {}, 1, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        edits.clear();
        grid->setCurrentCell(c.row, c.col);
        for (const QChar ch : c.typed)
            QTest::keyClick(focused(), ch.toLatin1());
        QTest::keyClick(focused(), c.end, c.mods);
        EXPECT_EQ(edits, c.edits);
        EXPECT_EQ(grid->currentRow(), c.toRow);
        EXPECT_EQ(grid->currentCol(), c.toCol);
        EXPECT_EQ(focused(), grid->view()) << "no editor left open";
    }
    EXPECT_EQ(grid->Cell(0, 0), "00") << "the table never writes the model itself";

    // The owner writes what it accepts; userEditCell is Enter's path.
    grid->CellEdit = [this](int r, int c, const QString& t) {
        if (t != "bad")
            model.item(r, c)->setText(t);
    };
    grid->setCurrentCell(1, 1);
    grid->userEditCell(1, 1, "bad");
    EXPECT_EQ(grid->Cell(1, 1), "11");
    grid->userEditCell(2, 1, "good");
    EXPECT_EQ(grid->Cell(2, 1), "good");
    EXPECT_EQ(grid->currentRow(), 2);
    EXPECT_EQ(grid->Header(1), "B");
    EXPECT_EQ(grid->Header(3), "");
    EXPECT_EQ(grid->Cell(5, 0), "");
}

TEST_F(TableTest, RowsAreSelectedByHeaderClicksPicksAndCode) {
    int clicks = 0;
    grid->Click = [&] { ++clicks; };
    QHeaderView* rows = grid->view()->verticalHeader();
    grid->setSelected(2, true);
    // As the mouse sends it: to the window.
    QTest::mouseClick(form->windowHandle(), Qt::LeftButton, {},
                      rows->viewport()->mapTo(form.get(), QPoint(rows->width() / 2, 2)));
    EXPECT_EQ(grid->selectedRows(), std::vector<int>{0}) << "a header click selects its row alone";
    EXPECT_EQ(clicks, 1);

    grid->userPick(1);
    EXPECT_EQ(grid->selectedRows(), std::vector<int>{1});
    EXPECT_EQ(grid->currentRow(), 1);
    EXPECT_EQ(clicks, 2);
    grid->setSelected(2, true);
    EXPECT_TRUE(grid->Selected(2));
    grid->setSelected(1, false);
    EXPECT_EQ(grid->selectedRows(), std::vector<int>{2});
    EXPECT_FALSE(grid->Selected(7));
    grid->setSelected(7, true); // outside the grid: nothing
    EXPECT_EQ(grid->Rows(), 3);
}

TEST_F(TableTest, RowsAndHeadersGrowWithTheZoom) {
    QTableView* view = grid->view();
    const int row = view->rowHeight(0), col = view->columnWidth(0);
    const int header = view->horizontalHeader()->sizeHint().height();
    form->setZoom(2.0);
    EXPECT_GT(view->rowHeight(0), row * 3 / 2);
    EXPECT_GT(view->columnWidth(0), col * 3 / 2);
    EXPECT_GT(view->horizontalHeader()->sizeHint().height(), header * 3 / 2);
    form->setZoom(1.0);
    EXPECT_NEAR(view->rowHeight(0), row, 1);
}

// A drop as the window system delivers it: enter, then the drop itself.
bool drop(QWidget* target, QMimeData* mime) {
    const QPoint at = target->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, mime, Qt::LeftButton, {});
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent dropped(QPointF(at), Qt::CopyAction | Qt::MoveAction, mime, Qt::LeftButton, {});
    QApplication::sendEvent(target, &dropped);
    QApplication::processEvents(); // the handler runs once the drop is over
    return dropped.isAccepted();
}

TEST_F(TableTest, FilesAndRowsAreTakenOnlyWhereAHandlerIsAndEndTheAction) {
    auto* left = form->get<ListBox>("Left");
    auto* right = form->get<ListBox>("Right");
    QWidget* rightSurface = qobject_cast<QListWidget*>(right->widget())->viewport();
    // The hook stays for the whole run, so it counts into a static.
    static int actionEnds = 0;
    addActionEndHook([] { ++actionEnds; });
    actionEnds = 0;

    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/tmp/a.bmp"), QUrl("https://example.org/b.bmp"),
                   QUrl::fromLocalFile("/tmp/c d.png")});
    EXPECT_FALSE(drop(rightSurface, &files)) << "no handler yet";
    QStringList got;
    right->FilesDropped = [&](const QStringList& paths) {
        got = paths;
        EXPECT_EQ(focusedControl(), right) << "the drop moves the focus first";
    };
    EXPECT_TRUE(drop(rightSurface, &files));
    EXPECT_EQ(got, (QStringList{"/tmp/a.bmp", "/tmp/c d.png"}));
    EXPECT_GT(actionEnds, 0);

    std::unique_ptr<QMimeData> rows(rowsMimeData(*left, {0, 2}));
    EXPECT_FALSE(drop(rightSurface, rows.get())) << "files taken, rows not";
    Control* from = nullptr;
    std::vector<int> carried;
    right->RowsDropped = [&](Control* source, const std::vector<int>& r) {
        from = source;
        carried = r;
    };
    EXPECT_TRUE(drop(rightSurface, rows.get()));
    EXPECT_EQ(from, left);
    EXPECT_EQ(carried, (std::vector<int>{0, 2}));

    // Rows of another copy of the program, or broken, pass for nothing.
    QMimeData forged;
    QByteArray data = rows->data("application/x-zavik-rows");
    forged.setData("application/x-zavik-rows", "1\n" + data.mid(data.indexOf('\n') + 1));
    std::vector<int> none;
    EXPECT_EQ(rowsFromMimeData(&forged, none), nullptr);
    forged.setData("application/x-zavik-rows", "garbage");
    EXPECT_EQ(rowsFromMimeData(&forged, none), nullptr);
    EXPECT_FALSE(drop(rightSurface, &forged));
}

TEST(Questions, AskAndTheFileDialogsGoThroughTheirHooks) {
    hooks() = {};
    const QStringList buttons{"Replace", "Keep both", "Cancel"};
    EXPECT_EQ(Ask("Exists", buttons), "Cancel") << "nobody to answer: closed";
    hooks().ask = [](const QString&, const QStringList&) { return QString("Nonsense"); };
    EXPECT_EQ(Ask("Exists", buttons), "Cancel");
    QString asked;
    hooks().ask = [&](const QString& text, const QStringList&) {
        asked = text;
        return QString("Keep both");
    };
    EXPECT_EQ(Ask("Exists", buttons), "Keep both");
    EXPECT_EQ(asked, "Exists");

    static int pending = 0;
    addActionEndHook([] { ++pending; });
    pending = 0;
    hooks().showSave = [](const QString& filter, const QString& name) { return filter + name; };
    hooks().showOpenMany = [](const QString& filter) { return QStringList{filter, filter}; };
    EXPECT_EQ(ShowSave("CSV file (*.csv)|*.csv", "deck.csv"), "CSV file (*.csv)|*.csvdeck.csv");
    EXPECT_EQ(ShowOpenMany("x"), (QStringList{"x", "x"}));
    EXPECT_EQ(pending, 2) << "pending work goes out before a dialog waits";

    // The program's own box: Esc is the last button, a click its own.
    installDefaultHooks();
    auto answer = [](std::function<void(QMessageBox*)> user) {
        QTimer::singleShot(0, [user] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                user(box);
        });
    };
    answer([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
    EXPECT_EQ(Ask("Exists", buttons), "Cancel");
    answer([](QMessageBox* box) {
        for (QAbstractButton* b : box->buttons())
            if (b->text() == "Keep both")
                b->click();
    });
    EXPECT_EQ(Ask("Exists", buttons), "Keep both");
    hooks() = {};
}

} // namespace
