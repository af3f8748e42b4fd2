// The wizard: one window on the folder that holds the program.

#include "runtime/Runtime.h"
#include "app/Program.h"

#include <QApplication>
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
    rt::setAppPath(QCoreApplication::applicationDirPath());
    rt::installDefaultHooks();
    rt::installInteractiveSupport();
    wizard::registerForms();
    wizard::installStoreHooks();
    wizard::startProgram();
    return app.exec();
}
