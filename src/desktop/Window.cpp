// The main form's window: a menu bar above the pages, a status bar below them.
// Each entry presses the button it stands for; the features that come later
// hang their own menus here.

#include "desktop/AboutForm.h"
#include "desktop/Desktop.h"
#include "desktop/UnpackForm.h"
#include "desktop/UnsavedMark.h"
#include "desktop/Zoom.h"

#include "deckview/DeckView.h"
#include "history/History.h"
#include "runtime/Controls.h"
#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

namespace desktop {
namespace {

QAction* entry(QMenu* menu, const QString& text, const QList<QKeySequence>& keys, const char* name,
               std::function<void()> run) {
    QAction* action = menu->addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    // Shortcuts work wherever the focus is in the window, not only on the bar.
    action->setShortcutContext(Qt::WindowShortcut);
    QObject::connect(action, &QAction::triggered, menu, [run = std::move(run)] { run(); });
    return action;
}

// The status line keeps its name and text for the program; the bar shows it
// whole as far as the window is wide, and whole on hover.
QStatusBar* statusBar(MainForm* form) {
    auto* bar = new QStatusBar;
    bar->setObjectName(QStringLiteral("statusBar"));
    // Its room is kept while it says nothing, so the window does not jump.
    bar->setMinimumHeight(QFontMetrics(bar->font()).height() + 8);
    if (auto* label = qobject_cast<QLabel*>(form->statusLine->widget())) {
        label->setWordWrap(false);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setMinimumWidth(0);
        bar->addWidget(label, 1);
        label->show();
    }
    return bar;
}

// The entries of the latest window; a new game makes a new one.
QPointer<QAction> g_undo;
QPointer<QAction> g_redo;

QString menuText(const QString& verb, const QString& step) {
    QString name = step;
    name.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return step.isEmpty() ? verb : verb + QLatin1Char(' ') + name;
}

// Texts and states follow the deck at every action's end, so that a disabled
// entry never swallows its key while there is a step to take.
void refreshEditEntries() {
    if (g_undo) {
        g_undo->setText(menuText(QStringLiteral("&Undo"), history::undoName()));
        g_undo->setEnabled(history::canUndo());
    }
    if (g_redo) {
        g_redo->setText(menuText(QStringLiteral("&Redo"), history::redoName()));
        g_redo->setEnabled(history::canRedo());
    }
}

QMenu* editMenu(QMenuBar* bar) {
    QMenu* edit = bar->addMenu(QStringLiteral("&Edit"));
    g_undo = entry(edit, QStringLiteral("&Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)}, "undo",
                   [] { history::undo(); });
    g_redo =
        entry(edit, QStringLiteral("&Redo"),
              {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)},
              "redo", [] { history::redo(); });
    QObject::connect(edit, &QMenu::aboutToShow, edit, [] { refreshEditEntries(); });
    refreshEditEntries();
    return edit;
}

} // namespace

void registerDesktopForms() {
    rt::registerFormSpec(&AboutForm::formSpec());
    rt::registerForm(QString::fromLatin1(AboutForm::Name), [] { return new AboutForm; });
    rt::registerFormSpec(&UnpackForm::formSpec());
    rt::registerForm(QString::fromLatin1(UnpackForm::Name), [] { return new UnpackForm; });
    deckview::registerForms();
    history::install();
    static bool hooked = false;
    if (!hooked) {
        hooked = true;
        rt::addActionEndHook(refreshEditEntries);
    }
}

void dress(MainForm* form) {
    auto* bar = new QMenuBar;
    bar->setObjectName(QStringLiteral("menuBar"));
    QPointer<MainForm> f = form;

    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    entry(file, QStringLiteral("&New game"), {QKeySequence::New}, "newGame", [] { newGame(); });
    entry(file, QStringLiteral("&Open..."), {QKeySequence::Open}, "openGame",
          [f] { press(f, "Command10"); });
    entry(file, QStringLiteral("&Save"), {QKeySequence::Save}, "saveGame",
          [f] { press(f, "Command2"); });
    entry(file, QStringLiteral("&Check game"), {QKeySequence(Qt::Key_F7)}, "checkGame",
          [f] { press(f, "CheckGameBtn"); });
    file->addSeparator();
    entry(file, QStringLiteral("&Pack game..."), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P)},
          "packGame", [] { packGame(); });
    entry(file, QStringLiteral("&Unpack game..."), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U)},
          "unpackGame", [] { unpackGame(); });
    file->addSeparator();
    entry(file, QStringLiteral("&Quit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)}, "quit", [f] {
        if (f)
            f->close();
    });

    QMenu* edit = editMenu(bar);

    QMenu* go = bar->addMenu(QStringLiteral("&Go"));
    entry(go, QStringLiteral("&Back"), {QKeySequence(Qt::ALT | Qt::Key_Left)}, "goBack",
          [f] { press(f, "PrevStep"); });
    entry(go, QStringLiteral("&Forward"), {QKeySequence(Qt::ALT | Qt::Key_Right)}, "goForward",
          [f] { press(f, "NextStep"); });
    entry(go, QStringLiteral("&Index"), {QKeySequence(Qt::CTRL | Qt::Key_I)}, "goIndex",
          [f] { press(f, "TreeBtn"); });

    QMenu* deck = bar->addMenu(QStringLiteral("&Deck"));
    entry(deck, QStringLiteral("Deck &sheet"), {QKeySequence(Qt::CTRL | Qt::Key_D)}, "deckSheet",
          [] { deckview::showSheet(); });
    entry(deck, QStringLiteral("Try the &deal..."), {QKeySequence(Qt::CTRL | Qt::Key_T)}, "tryDeal",
          [] { deckview::showDeal(); });
    entry(deck, QStringLiteral("&Add images..."), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I)},
          "addImages", [] { deckview::addImages(); });
    deck->addSeparator();
    QAction* importEntry = entry(deck, QStringLiteral("&Import cards..."), {}, "importCards",
                                 [] { deckview::importCards(); });
    QAction* exportEntry = entry(deck, QStringLiteral("&Export cards..."), {}, "exportCards",
                                 [] { deckview::exportCards(); });
    // The spreadsheet works on the deck on the page, so it waits for one.
    QObject::connect(deck, &QMenu::aboutToShow, deck, [importEntry, exportEntry] {
        importEntry->setEnabled(deckview::deckOpen());
        exportEntry->setEnabled(deckview::deckOpen());
    });

    auto* fit = new ZoomFit(form);
    form->installEventFilter(fit);
    QMenu* view = bar->addMenu(QStringLiteral("&View"));
    entry(view, QStringLiteral("Zoom &in"),
          {QKeySequence(QKeySequence::ZoomIn), QKeySequence(Qt::CTRL | Qt::Key_Equal)}, "zoomIn",
          [f] { zoomStep(f, +1); });
    entry(view, QStringLiteral("Zoom &out"), {QKeySequence(QKeySequence::ZoomOut)}, "zoomOut",
          [f] { zoomStep(f, -1); });
    entry(view, QStringLiteral("&Actual size"), {QKeySequence(Qt::CTRL | Qt::Key_0)}, "zoomActual",
          [f] { zoomStep(f, 0); });
    view->addSeparator();
    QAction* fitEntry =
        entry(view, QStringLiteral("&Fill a maximised window"), {}, "zoomFit", [] {});
    fitEntry->setCheckable(true);
    fitEntry->setChecked(fit->fit);
    QObject::connect(fitEntry, &QAction::toggled, fit, [fit](bool on) { fit->fit = on; });

    QMenu* help = bar->addMenu(QStringLiteral("&Help"));
    entry(help, QStringLiteral("Help &notes"), {QKeySequence(Qt::Key_F1)}, "helpNotes",
          [f] { press(f, "HelpBtn"); });
    entry(help, QStringLiteral("&About Zavik Wizard"), {}, "about", [] { showAbout(); });

    // The form holds the entries too, so their keys work wherever its focus is.
    for (QMenu* menu : {file, edit, go, deck, view, help})
        form->addActions(menu->actions());
    form->setBars(bar, statusBar(form));
    deckview::attach(form);
    qApp->installEventFilter(new UnsavedMark(form));
}

} // namespace desktop
