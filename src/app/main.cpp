// The wizard: one window on the folder that holds the program.

#include "runtime/Runtime.h"
#include "wizard/Program.h"

#include <QApplication>

int main(int argc, char** argv) {
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
