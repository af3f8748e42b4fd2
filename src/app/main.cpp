// The wizard: one window on the folder that holds the program, or, for an
// installed program, on the user's own folder. Started with a .game file (as a
// file manager does), it works in that file's folder and opens that game.

#include "app/Program.h"
#include "pack/AppFolder.h"
#include "runtime/Runtime.h"

#include <QApplication>
#include <QFileInfo>
#include <cstdio>

namespace {

// Without a display Qt aborts with a page of plugin diagnostics; one line
// tells the user more. A platform chosen by name is the user's own business.
bool noDisplay() {
    return qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
           qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

} // namespace

int main(int argc, char** argv) {
    if (noDisplay()) {
        std::fprintf(stderr, "zavik-wizard: no display to open its window on (neither DISPLAY nor "
                             "WAYLAND_DISPLAY is set); start it in a desktop session, or on a "
                             "machine without one try: xvfb-run make run\n");
        return 1;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(rt::programName());
    const QStringList args = QCoreApplication::arguments();
    const QFileInfo game(args.size() > 1 ? args[1] : QString());
    const bool opened =
        game.isFile() && game.suffix().compare(QLatin1String("game"), Qt::CaseInsensitive) == 0;
    rt::setAppPath(opened ? game.absolutePath()
                          : pack::applicationFolder(QCoreApplication::applicationDirPath()));
    rt::installDefaultHooks();
    rt::installInteractiveSupport();
    wizard::registerForms();
    wizard::installStoreHooks();
    wizard::startProgram();
    if (opened)
        wizard::openGame(game.completeBaseName());
    return app.exec();
}
